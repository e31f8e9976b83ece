#include "Terminal.h"

#include <windows.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <io.h>

namespace telvo
{

bool isTerminal(std::FILE* stream)
{
    return _isatty(_fileno(stream)) != 0;
}

TerminalSize terminalSize()
{
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) == 0) {
        return {80, 24};
    }
    return {static_cast<std::uint32_t>(info.srWindow.Right - info.srWindow.Left + 1),
            static_cast<std::uint32_t>(info.srWindow.Bottom - info.srWindow.Top + 1)};
}

void showUtf8()
{
    SetConsoleOutputCP(CP_UTF8);
}

void makeOutputBinary()
{
    _setmode(_fileno(stdout), _O_BINARY);
}

std::span<const int> endingSignals()
{
    // The last comes from Ctrl-Break and from a console window that is closed.
    static constexpr std::array kSignals{SIGINT, SIGTERM, SIGBREAK};
    return kSignals;
}

void ignoreBrokenPipes() {} // they are an error of the write here, and no more

std::optional<std::string> readInput(std::chrono::milliseconds /*wait*/)
{
    std::array<char, 4096> bytes{};
    const int size = _read(_fileno(stdin), bytes.data(), static_cast<unsigned>(bytes.size()));
    return size > 0 ? std::optional(std::string(bytes.data(), static_cast<std::size_t>(size)))
                    : std::nullopt;
}

void writeFromSignal(std::string_view text)
{
    _write(_fileno(stderr), text.data(), static_cast<unsigned>(text.size()));
}

} // namespace telvo
