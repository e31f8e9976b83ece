#include "CommandTree.h"

#include <CLI/CLI.hpp>

namespace telvo
{

namespace
{

OptionHelp helpOf(const CLI::Option& option)
{
    const bool isArgument = option.get_positional();
    return {.name = isArgument ? option.get_name(true) : "--" + option.get_lnames().front(),
            .type = option.get_type_size() == 0 ? "" : option.get_type_name(),
            .text = option.get_description(),
            .isArgument = isArgument};
}

CommandHelp helpOf(const CLI::App& command, const std::string& name)
{
    CommandHelp help{.name = name,
                     .text = command.get_description(),
                     .footer = command.get_footer(),
                     .options = {}};
    for (const CLI::Option* const option : command.get_options()) {
        if (option->get_positional() || !option->get_lnames().empty()) {
            help.options.push_back(helpOf(*option));
        }
    }
    return help;
}

void add(const CLI::App& command, const std::string& name, std::vector<CommandHelp>& all)
{
    all.push_back(helpOf(command, name));
    for (const CLI::App* const below : command.get_subcommands(nullptr)) {
        add(*below, name + (name.empty() ? "" : " ") + below->get_name(), all);
    }
}

} // namespace

std::vector<CommandHelp> allCommands(const Command& tool)
{
    std::vector<CommandHelp> all;
    add(tool.app(), "", all);
    return all;
}

} // namespace telvo
