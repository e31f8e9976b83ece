#include "Program.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

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

Program::Program(const std::vector<std::string>& command) : mProcess(fork())
{
    if (mProcess == 0) {
        std::vector<char*> words;
        for (const std::string& word : command) {
            words.push_back(const_cast<char*>(word.c_str())); // as execvp's signature demands
        }
        words.push_back(nullptr);
        execvp(words[0], words.data());
        _exit(127);
    }
}

Program::~Program()
{
    end();
}

void Program::end()
{
    if (mProcess > 0) {
        kill(mProcess, SIGTERM);
        waitpid(mProcess, nullptr, 0);
        mProcess = 0;
    }
}
