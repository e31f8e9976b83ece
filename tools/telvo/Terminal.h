/// The little that the tool asks of the system's terminal; one source per system.
#ifndef TELVO_TOOLS_TELVO_TERMINAL_H
#define TELVO_TOOLS_TELVO_TERMINAL_H

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace telvo
{

/// Whether somebody watches this stream.
bool isTerminal(std::FILE* stream);

struct TerminalSize {
    std::uint32_t columns;
    std::uint32_t rows;
};

/// Of the terminal at standard output; 80 x 24 where it does not tell.
TerminalSize terminalSize();

/// From now on the terminal shows what is written as UTF-8.
void showUtf8();

/// From now on standard output carries bytes exactly as written, line ends too.
void makeOutputBinary();

/// The signals by which a user, a terminal that closes or the system asks a program to end.
std::span<const int> endingSignals();

/// From now on writing to a pipe that nobody reads is an error of the write, and no more.
void ignoreBrokenPipes();

/// What comes on standard input: bytes; none of them if nothing came within the wait; no value at
/// its end. (On Windows the wait has no limit.)
std::optional<std::string> readInput(std::chrono::milliseconds wait);

/// Writes to standard error; may be called by a signal handler.
void writeFromSignal(std::string_view text);

} // namespace telvo

#endif
