#include "PanelSystem.h"

#include <array>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace telvo
{

const bool kReusesAddress = true;

std::function<bool()> openBrowser(const std::string& url)
{
    std::string program = "xdg-open";
    std::string address = url;
    const std::array<char*, 3> arguments{program.data(), address.data(), nullptr};
    pid_t process = 0;
    if (posix_spawnp(&process, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0) {
        return [] { return true; };
    }
    return [process, status = 0]() mutable {
        waitpid(process, &status, WNOHANG); // sets the status once, when the process has ended
        return status != 0;
    };
}

} // namespace telvo
