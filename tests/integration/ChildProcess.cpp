#include "ChildProcess.h"

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

pid_t spawn(const std::vector<std::string>& command, int output)
{
    std::vector<char*> arguments;
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t child = 0;
    EXPECT_EQ(posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ), 0)
        << command.front();
    posix_spawn_file_actions_destroy(&actions);
    return child;
}

std::string readAll(int descriptor)
{
    std::string text;
    std::array<char, 4096> piece{};
    for (ssize_t size = 0; (size = read(descriptor, piece.data(), piece.size())) > 0;) {
        text.append(piece.data(), static_cast<std::size_t>(size));
    }
    return text;
}

} // namespace

ChildResult runChild(const std::vector<std::string>& command)
{
    std::array<int, 2> output{};
    EXPECT_EQ(pipe2(output.data(), O_CLOEXEC), 0);
    const pid_t child = spawn(command, output[1]);
    close(output[1]);
    ChildResult result{.output = readAll(output[0])};
    close(output[0]);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return result;
}
