#include "LineMistake.h"

#include "ToolError.h"

#include <CLI/CLI.hpp>

namespace telvo
{

namespace
{

/// The command that the line reaches as far as it is understood: the tool itself, or one below it.
const CLI::App& reached(const CLI::App& command)
{
    const auto below = command.get_subcommands();
    return below.empty() ? command : reached(*below.front());
}

bool hasCommands(const CLI::App& command)
{
    return !command.get_subcommands([](const CLI::App*) { return true; }).empty();
}

/// "telvo settings save"
std::string lineOf(const CLI::App& command)
{
    const CLI::App* const above = command.get_parent();
    return (above == nullptr ? "" : lineOf(*above) + " ") + command.get_name();
}

std::string helpOf(const CLI::App& command)
{
    return "; '" + lineOf(command) + " --help' ";
}

/// What a word is that belongs to nothing.
std::string unknown(const std::string& word, const CLI::App& command)
{
    if (word.starts_with('-')) {
        return "there is no option " + word + helpOf(command) + "has all";
    }
    if (!hasCommands(command)) {
        return "'" + word + "' is not expected" + helpOf(command) + "has all";
    }
    const bool isTool = command.get_parent() == nullptr;
    return "there is no command '" + (isTool ? "" : command.get_name() + " ") + word + "'" +
           helpOf(command) + "lists them";
}

} // namespace

std::string mistakeOf(const CLI::App& tool, const CLI::ParseError& error)
{
    const CLI::App& command = reached(tool);
    // A misspelled option is told before what is missing without it.
    const std::vector<std::string> left = tool.remaining(true);
    return left.empty() ? error.what() + helpOf(command) + "has all"
                        : unknown(left.front(), command);
}

void requireCommand(const CLI::App& tool)
{
    const CLI::App& command = reached(tool);
    if (hasCommands(command)) {
        throw UsageError("no command given" + helpOf(command) + "lists them");
    }
}

} // namespace telvo
