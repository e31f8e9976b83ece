/// The little that the tool asks of the system's terminal; one source per system.
#ifndef TELVO_TOOLS_TELVO_TERMINAL_H
#define TELVO_TOOLS_TELVO_TERMINAL_H

#include <cstdio>

namespace telvo
{

/// Whether somebody watches this stream.
bool isTerminal(std::FILE* stream);

/// From now on the terminal shows what is written as UTF-8.
void showUtf8();

/// From now on standard output carries bytes exactly as written, line ends too.
void makeOutputBinary();

} // namespace telvo

#endif
