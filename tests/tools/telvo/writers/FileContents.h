#ifndef TELVO_TESTS_TOOLS_TELVO_WRITERS_FILECONTENTS_H
#define TELVO_TESTS_TOOLS_TELVO_WRITERS_FILECONTENTS_H

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

inline std::string contents(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

#endif
