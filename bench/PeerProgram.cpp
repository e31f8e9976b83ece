#include "PeerProgram.h"

#include "Require.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace
{

std::string madeFile()
{
    std::array<char, 32> name{"/tmp/bench-peer-XXXXXX"};
    const int file = mkostemp(name.data(), O_CLOEXEC);
    require(file >= 0, "making a file");
    close(file);
    return name.data();
}

} // namespace

PeerProgram::PeerProgram(const std::vector<std::string>& command)
    : mOutput(madeFile()), mProgram(command, mOutput)
{
    require(mProgram.id() > 0, "starting a process");
}

PeerProgram::~PeerProgram()
{
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
    const std::string tasks = "/proc/" + std::to_string(mProgram.id()) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks)) {
        double nanoseconds = 0;
        std::ifstream(task.path() / "schedstat") >> nanoseconds;
        sum += nanoseconds;
    }
    return sum * 1e-9;
}

std::string PeerProgram::finish()
{
    mProgram.wait();
    std::ostringstream text;
    text << std::ifstream(mOutput).rdbuf();
    return text.str();
}
