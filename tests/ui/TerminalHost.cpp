#include "TerminalHost.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace
{

constexpr std::chrono::seconds kLimit{60};
constexpr winsize kSize{.ws_row = 30, .ws_col = 100, .ws_xpixel = 0, .ws_ypixel = 0};

bool within(std::chrono::seconds limit, const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
    }
    return true;
}

std::string firstWord(const std::string& line)
{
    return line.substr(0, line.find(' '));
}

/// In the child: becomes the program. Only calls that are safe after a fork.
[[noreturn]] void become(char* const* arguments, TerminalHost::Place place)
{
    if (place == TerminalHost::Place::Background && fork() == 0) {
        setpgid(0, 0);
    } else if (place == TerminalHost::Place::Background) {
        int status = 0;
        wait(&status);
        _exit(WEXITSTATUS(status));
    } else if (place == TerminalHost::Place::NoTerminal && fork() == 0) {
        setsid();
    } else if (place == TerminalHost::Place::NoTerminal) {
        int status = 0;
        wait(&status);
        _exit(WEXITSTATUS(status));
    }
    execv(arguments[0], arguments);
    _exit(127);
}

} // namespace

TerminalHost::TerminalHost(std::vector<std::string> arguments, Place place)
{
    std::string program = DIALOG_HOST;
    std::vector<char*> pointers{program.data()};
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    mProcess = forkpty(&mTerminal, nullptr, nullptr, &kSize);
    if (mProcess < 0) {
        throw std::runtime_error("no pseudo-terminal");
    }
    if (mProcess == 0) {
        become(pointers.data(), place);
    }
}

TerminalHost::~TerminalHost()
{
    close(mTerminal); // hangs up on whoever is still there
    if (!mHasEnded) {
        kill(mProcess, SIGKILL);
        waitpid(mProcess, nullptr, 0);
    }
}

void TerminalHost::press(const std::string& keys)
{
    mOutput.clear();
    if (write(mTerminal, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size())) {
        throw std::runtime_error("the terminal takes no keys");
    }
}

bool TerminalHost::shows(const std::string& text)
{
    return within(kLimit, [&] {
        readSome();
        return mOutput.find(text) != std::string::npos;
    });
}

bool TerminalHost::highlights(const std::string& text)
{
    return within(kLimit, [&] {
        readSome();
        return !highlighted().empty() && highlighted().starts_with(text);
    });
}

bool TerminalHost::goDownTo(const std::string& text)
{
    constexpr int kMostLines = 300;
    if (!highlights("")) {
        return false;
    }
    for (int line = 0; line < kMostLines && !highlighted().starts_with(text); ++line) {
        const std::string before = firstWord(highlighted()); // the value may change by itself
        press(kDown);
        const bool moved = within(kLimit, [&] {
            readSome();
            return !highlighted().empty() && firstWord(highlighted()) != before;
        });
        if (!moved) {
            return false;
        }
    }
    return within(kLimit, [&] {
        readSome();
        return highlighted().starts_with(text) && highlighted().find("...") == std::string::npos;
    });
}

int TerminalHost::exitCode()
{
    const bool ended = within(kLimit, [&] {
        readSome();
        return mHasEnded || waitpid(mProcess, &mStatus, WNOHANG) == mProcess;
    });
    mHasEnded = mHasEnded || ended;
    return ended && WIFEXITED(mStatus) ? WEXITSTATUS(mStatus) : -1;
}

bool TerminalHost::isTerminalRestored() const
{
    termios mode{};
    constexpr tcflag_t kUsual = ECHO | ICANON | ISIG;
    return tcgetattr(mTerminal, &mode) == 0 && (mode.c_lflag & kUsual) == kUsual;
}

void TerminalHost::readSome()
{
    pollfd source{.fd = mTerminal, .events = POLLIN, .revents = 0};
    if (poll(&source, 1, 20) <= 0) {
        return;
    }
    std::array<char, 4096> bytes{};
    const ssize_t count = read(mTerminal, bytes.data(), bytes.size());
    if (count > 0) {
        mOutput.append(bytes.data(), static_cast<std::size_t>(count));
    }
}

/// Of the last complete line that is highlighted.
std::string TerminalHost::highlighted() const
{
    const std::size_t end = mOutput.rfind("\x1B[0m");
    const std::size_t begin = mOutput.rfind("\x1B[7m", end);
    if (end == std::string::npos || begin == std::string::npos) {
        return {};
    }
    const std::size_t text = mOutput.find_first_not_of(' ', begin + 4);
    return mOutput.substr(text, mOutput.find("\x1B[0m", begin) - text);
}
