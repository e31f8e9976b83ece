/// What is wrong with a command line, in a line that says what to do next.
#ifndef TELVO_TOOLS_TELVO_LINEMISTAKE_H
#define TELVO_TOOLS_TELVO_LINEMISTAKE_H

#include <string>

namespace CLI
{
class App;
class ParseError;
} // namespace CLI

namespace telvo
{

/// @param tool  after it has thrown the error
std::string mistakeOf(const CLI::App& tool, const CLI::ParseError& error);

/// Throws UsageError if a line without an error ends before a command that does something.
void requireCommand(const CLI::App& tool);

} // namespace telvo

#endif
