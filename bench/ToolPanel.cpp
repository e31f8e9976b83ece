#include "ToolPanel.h"

#include "Require.h"

#include <array>
#include <csignal>
#include <ctime>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

std::string readLine(int descriptor)
{
    std::string line;
    char letter = 0;
    while (read(descriptor, &letter, 1) == 1 && letter != '\n') {
        line += letter;
    }
    return line;
}

} // namespace

ToolPanel::ToolPanel(const std::string& camera)
{
    std::array<int, 2> ends{};
    require(pipe(ends.data()) == 0, "making a pipe");
    mProcess = fork();
    if (mProcess == 0) {
        dup2(ends[1], STDOUT_FILENO);
        execl(TELVO_TOOL_PROGRAM, "telvo", "panel", "--port", "0", "--camera", camera.c_str(),
              nullptr);
        _exit(1);
    }
    close(ends[1]);
    mOutput = ends[0];
    const std::string line = readLine(mOutput);
    const std::size_t colon = line.rfind(':');
    require(colon != std::string::npos, "starting the panel");
    mPort = static_cast<std::uint16_t>(std::stoul(line.substr(colon + 1)));
}

ToolPanel::~ToolPanel()
{
    kill(mProcess, SIGTERM);
    waitpid(mProcess, nullptr, 0);
    close(mOutput);
}

double ToolPanel::cpuSeconds() const
{
    clockid_t clock = 0;
    require(clock_getcpuclockid(mProcess, &clock) == 0, "finding the panel's clock");
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}
