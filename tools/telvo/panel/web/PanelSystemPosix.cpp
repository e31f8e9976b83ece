#include "PanelSystem.h"

#include <array>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace telvo
{

const bool kReusesAddress = true;

BrowserStart::BrowserStart(const std::string& url)
{
    std::string program = "xdg-open";
    std::string address = url;
    const std::array<char*, 3> arguments{program.data(), address.data(), nullptr};
    pid_t process = 0;
    mHasFailed =
        posix_spawnp(&process, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0;
    mProcess = mHasFailed ? 0 : process;
}

bool BrowserStart::hasFailed()
{
    int status = 0;
    const auto process = static_cast<pid_t>(mProcess);
    if (process != 0 && waitpid(process, &status, WNOHANG) == process) {
        mHasFailed = status != 0;
        mProcess = 0;
    }
    return mHasFailed;
}

} // namespace telvo
