#include "ToolProcess.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace
{

/// Whether a process catches or ignores a signal, or has ended.
bool expects(pid_t process, int number)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    std::string name;
    std::string value;
    std::uint64_t signals = 0;
    while (status >> name && std::getline(status, value)) {
        if (name == "State:" && value.find('Z') != std::string::npos) {
            return true;
        }
        if (name == "SigCgt:" || name == "SigIgn:") {
            signals |= std::stoull(value, nullptr, 16);
        }
    }
    return name.empty() || (signals >> (number - 1) & 1U) != 0;
}

struct Pipe {
    int readEnd = -1;
    int writeEnd = -1;

    Pipe()
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
        readEnd = ends[0];
        writeEnd = ends[1];
    }
};

void readAll(int descriptor, std::string& text, std::mutex& lock)
{
    std::array<char, 4096> piece{};
    for (ssize_t size = 0; (size = read(descriptor, piece.data(), piece.size())) > 0;) {
        const std::lock_guard guard(lock);
        text.append(piece.data(), static_cast<std::size_t>(size));
    }
    close(descriptor);
}

pid_t spawn(const std::vector<std::string>& command, int input, int output, int errors)
{
    std::vector<char*> argv;
    for (const std::string& argument : command) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
    pid_t process = -1;
    EXPECT_EQ(posix_spawnp(&process, argv[0], &actions, nullptr, argv.data(), environ), 0)
        << command.front();
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

std::vector<std::string> toolCommand(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), TELVO_TOOL_PROGRAM);
    return arguments;
}

} // namespace

ToolProcess::ToolProcess(std::vector<std::string> arguments,
                         const std::optional<std::string>& input)
    : ToolProcess(Program{toolCommand(std::move(arguments))}, input)
{
}

ToolProcess::ToolProcess(const Program& program, const std::optional<std::string>& input)
{
    const Pipe in;
    const Pipe out;
    const Pipe err;
    mProcess = spawn(program.command, in.readEnd, out.writeEnd, err.writeEnd);
    close(in.readEnd);
    close(out.writeEnd);
    close(err.writeEnd);
    mInput = in.writeEnd;
    if (input) {
        type(*input);
        close(std::exchange(mInput, -1));
    }
    mReaders.emplace_back(
        [this, descriptor = out.readEnd] { readAll(descriptor, mOutput, mLock); });
    mReaders.emplace_back(
        [this, descriptor = err.readEnd] { readAll(descriptor, mErrors, mLock); });
}

ToolProcess::~ToolProcess()
{
    if (!mEnded) {
        signal(SIGKILL);
        waitpid(mProcess, &mStatus, 0);
    }
    if (mInput != -1) {
        close(mInput);
    }
}

void ToolProcess::type(const std::string& text) const
{
    EXPECT_EQ(write(mInput, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

void ToolProcess::signal(int number) const
{
    const bool isTheSystems = number == SIGKILL || number == SIGSTOP || number == SIGCONT;
    // Before its first lines of code have run, a program has not said what it does with others.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!isTheSystems && !expects(mProcess, number) &&
           std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    kill(mProcess, number);
}

bool ToolProcess::endsWithin(std::chrono::milliseconds time)
{
    const auto deadline = std::chrono::steady_clock::now() + time;
    while (!mEnded && std::chrono::steady_clock::now() < deadline) {
        mEnded = waitpid(mProcess, &mStatus, WNOHANG) == mProcess;
        if (!mEnded) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }
    return mEnded;
}

std::string ToolProcess::awaitLine(const std::string& beginning)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (std::chrono::steady_clock::now() < deadline) {
        {
            const std::lock_guard guard(mLock);
            const std::size_t begin = ('\n' + mOutput).find('\n' + beginning);
            const std::size_t end = mOutput.find('\n', std::min(begin, mOutput.size()));
            if (end != std::string::npos) {
                return mOutput.substr(begin, end - begin);
            }
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    ADD_FAILURE() << "the tool does not print '" << beginning << "'";
    return {};
}

ToolOutcome ToolProcess::wait()
{
    if (!endsWithin(std::chrono::seconds(30))) {
        ADD_FAILURE() << "the tool does not end";
        signal(SIGKILL);
        waitpid(mProcess, &mStatus, 0);
        mEnded = true;
    }
    mReaders.clear(); // joins them
    const int status = WIFEXITED(mStatus) ? WEXITSTATUS(mStatus) : -WTERMSIG(mStatus);
    return {.exitStatus = status, .output = mOutput, .errors = mErrors};
}

ToolOutcome runTool(const std::vector<std::string>& arguments, const std::string& input)
{
    return ToolProcess(arguments, input).wait();
}

ToolOutcome runProgram(const std::vector<std::string>& command)
{
    return ToolProcess(ToolProcess::Program{command}).wait();
}

std::string toolLine(const std::vector<std::string>& arguments)
{
    std::string line;
    for (const std::string& word : toolCommand(arguments)) {
        line += "'" + word + "' ";
    }
    return line;
}
