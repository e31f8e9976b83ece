#include "PanelSystem.h"

#include <array>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace telvo
{

const bool kReusesAddress = true;

bool openBrowser(const std::string& url)
{
    // It returns as soon as a browser has the address.
    std::string program = "xdg-open";
    std::string address = url;
    const std::array<char*, 3> arguments{program.data(), address.data(), nullptr};
    pid_t process = -1;
    int status = -1;
    return posix_spawnp(&process, program.c_str(), nullptr, nullptr, arguments.data(), environ) ==
               0 &&
           waitpid(process, &status, 0) == process && status == 0;
}

} // namespace telvo
