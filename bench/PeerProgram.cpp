#include "PeerProgram.h"

#include "Require.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

[[noreturn]] void become(const std::vector<std::string>& command, int output)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    std::vector<char*> words;
    words.reserve(command.size() + 1);
    for (const std::string& word : command) {
        words.push_back(const_cast<char*>(word.c_str())); // as execvp's signature demands
    }
    words.push_back(nullptr);
    execvp(words[0], words.data());
    _exit(127);
}

} // namespace

PeerProgram::PeerProgram(const std::vector<std::string>& command)
{
    std::array<char, 32> name{"/tmp/bench-peer-XXXXXX"};
    const int output = mkostemp(name.data(), O_CLOEXEC);
    require(output >= 0, "making a file");
    mOutput = name.data();
    mProcess = fork();
    if (mProcess == 0) {
        become(command, output);
    }
    close(output);
    require(mProcess > 0, "starting a process");
}

PeerProgram::~PeerProgram()
{
    if (mProcess > 0) {
        kill(mProcess, SIGKILL);
        waitpid(mProcess, nullptr, 0);
    }
    std::filesystem::remove(mOutput);
}

bool PeerProgram::isInstalled(const std::string& name)
{
    // NOLINTNEXTLINE(concurrency-mt-unsafe): no thread of ours changes the environment
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access(std::filesystem::path(folder).append(name).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

double PeerProgram::cpuSeconds() const
{
    double sum = 0;
    const std::string tasks = "/proc/" + std::to_string(mProcess) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks)) {
        double nanoseconds = 0;
        std::ifstream(task.path() / "schedstat") >> nanoseconds;
        sum += nanoseconds;
    }
    return sum * 1e-9;
}

std::string PeerProgram::finish()
{
    waitpid(mProcess, nullptr, 0);
    mProcess = 0;
    std::ostringstream text;
    text << std::ifstream(mOutput).rdbuf();
    return text.str();
}
