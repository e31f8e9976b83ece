/// Names of files as the command line and our own files have them.
#ifndef TELVO_TOOLS_TELVO_WRITERS_UTF8PATH_H
#define TELVO_TOOLS_TELVO_WRITERS_UTF8PATH_H

#include <filesystem>
#include <string>
#include <string_view>

namespace telvo
{

/// What path::string() gave, as a path again. A path that is made of the text as it is would, on
/// Windows, have a letter of its own for each byte.
inline std::filesystem::path utf8Path(std::string_view text)
{
    return {std::u8string(text.begin(), text.end())};
}

} // namespace telvo

#endif
