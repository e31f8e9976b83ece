#include "CommandTree.h"
#include "Commands.h"
#include "Setting.h"

#include <iostream>
#include <string>
#include <vector>

namespace telvo
{

namespace
{

/// The words that may follow a command: those below it and its options.
std::string wordsAfter(const CommandHelp& command, const std::vector<CommandHelp>& all)
{
    const std::string prefix = command.name.empty() ? "" : command.name + ' ';
    std::string words;
    for (const CommandHelp& other : all) {
        const std::string rest =
            other.name.starts_with(prefix) ? other.name.substr(prefix.size()) : "";
        if (!rest.empty() && rest.find(' ') == std::string::npos) {
            words += rest + ' ';
        }
    }
    for (const OptionHelp& option : command.options) {
        words += option.isArgument ? "" : option.name + ' ';
    }
    return words;
}

std::string settingNames(const std::string& end)
{
    std::string names;
    for (const Setting& setting : allSettings()) {
        names += std::string(setting.name) + end + ' ';
    }
    return names;
}

std::string caseOf(const CommandHelp& command, const std::vector<CommandHelp>& all)
{
    std::string words = wordsAfter(command, all);
    if (command.name == "get") {
        words += settingNames("");
    } else if (command.name == "set") {
        words += settingNames("=");
    }
    return "    '" + command.name + "') words='" + words + "' ;;\n";
}

void printCompletion(const Command& tool)
{
    const std::vector<CommandHelp> all = allCommands(tool);
    std::cout << "# bash completion of telvo: source this, or install it as\n"
                 "# /usr/share/bash-completion/completions/telvo\n"
                 "_telvo()\n"
                 "{\n"
                 "  local word=${COMP_WORDS[COMP_CWORD]} command= words= i\n"
                 "  for ((i = 1; i < COMP_CWORD; ++i)); do\n"
                 "    case \"$command${command:+ }${COMP_WORDS[i]}\" in\n";
    for (const CommandHelp& command : all) {
        if (!command.name.empty()) {
            std::cout << "    '" << command.name << "') command='" << command.name << "' ;;\n";
        }
    }
    std::cout << "    esac\n"
                 "  done\n"
                 "  case $command in\n";
    for (const CommandHelp& command : all) {
        std::cout << caseOf(command, all);
    }
    std::cout << "  esac\n"
                 "  mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\")\n"
                 "  [[ ${COMPREPLY-} != *= ]] || compopt -o nospace\n"
                 "}\n"
                 "complete -o default -F _telvo telvo\n";
}

} // namespace

void addCompletionCommand(const Command& app)
{
    const Command command =
        app.add("completion", "Print what makes bash complete this tool's commands");
    command.footer("source <(telvo completion)");
    command.onRun([app] { printCompletion(app); });
}

} // namespace telvo
