#include "ProgramOutput.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

namespace
{

std::string quoted(const std::vector<std::string>& command)
{
    std::string line;
    for (const std::string& word : command) {
        line += "'" + word + "' ";
    }
    return line;
}

} // namespace

std::string outputOf(const std::vector<std::string>& command)
{
    const std::string line = "timeout 60 " + quoted(command) + "2>&1";
    FILE* const pipe = popen(line.c_str(), "r");
    EXPECT_NE(pipe, nullptr);
    if (pipe == nullptr) {
        return {};
    }
    std::string output;
    std::array<char, 4096> piece{};
    while (fgets(piece.data(), piece.size(), pipe) != nullptr) {
        output += piece.data();
    }
    pclose(pipe);
    return output;
}

long numberAfter(const std::string& output, const std::string& name)
{
    const std::size_t start = output.find(name);
    if (start == std::string::npos) {
        return -1;
    }
    const std::size_t equals = output.find('=', start);
    return equals == std::string::npos ? -1 : std::strtol(&output[equals + 1], nullptr, 10);
}
