#include "Terminal.h"

#include <array>
#include <csignal>
#include <unistd.h>

namespace telvo
{

bool isTerminal(std::FILE* stream)
{
    return isatty(fileno(stream)) == 1;
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

void writeFromSignal(std::string_view text)
{
    // Nothing is to be done about a terminal that is gone.
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

} // namespace telvo
