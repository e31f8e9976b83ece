#include "Terminal.h"

#include <array>
#include <csignal>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace telvo
{

bool isTerminal(std::FILE* stream)
{
    return isatty(fileno(stream)) == 1;
}

TerminalSize terminalSize()
{
    winsize size{};
    const bool tells = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
    return tells ? TerminalSize{size.ws_col, size.ws_row} : TerminalSize{80, 24};
}

void showUtf8() {} // terminals here show UTF-8 as they are

void makeOutputBinary() {} // a stream is always binary here

std::span<const int> endingSignals()
{
    static constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};
    return kSignals;
}

void ignoreBrokenPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}

std::optional<std::string> readInput(std::chrono::milliseconds wait)
{
    pollfd input{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    if (poll(&input, 1, static_cast<int>(wait.count())) <= 0) {
        return "";
    }
    std::array<char, 4096> bytes{};
    const ssize_t size = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    return size > 0 ? std::optional(std::string(bytes.data(), static_cast<std::size_t>(size)))
                    : std::nullopt;
}

void writeFromSignal(std::string_view text)
{
    // Nothing is to be done about a terminal that is gone.
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
}

} // namespace telvo
