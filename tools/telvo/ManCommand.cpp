#include "CommandTree.h"
#include "Commands.h"
#include "ToolError.h"

#include <algorithm>
#include <cctype>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace telvo
{

namespace
{

/// A text as troff takes it: nothing in it is a request, and hyphens stay what they are.
std::string escaped(const std::string& text)
{
    std::string result;
    bool atLineStart = true;
    for (const char character : text) {
        if (atLineStart && (character == '.' || character == '\'')) {
            result += "\\&";
        }
        if (character == '\\') {
            result += "\\e";
        } else if (character == '-') {
            result += "\\-";
        } else {
            result += character;
        }
        atLineStart = character == '\n';
    }
    return result;
}

std::string inCapitals(std::string text)
{
    std::ranges::transform(text, text.begin(),
                           [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

/// "telvo-settings-save"
std::string pageOf(const std::string& command)
{
    std::string page = "telvo" + (command.empty() ? "" : '-' + command);
    std::ranges::replace(page, ' ', '-');
    return page;
}

void printOptions(const CommandHelp& command)
{
    std::cout << ".SH OPTIONS\n";
    for (const OptionHelp& option : command.options) {
        std::cout << ".TP\n\\fB" << escaped(option.name) << "\\fR";
        if (!option.isArgument && !option.type.empty()) {
            std::cout << " \\fI" << escaped(option.type) << "\\fR";
        }
        std::cout << '\n' << escaped(option.text) << '\n';
    }
}

/// Those right below the tool itself.
void printCommands(const std::vector<CommandHelp>& all)
{
    std::cout << ".SH COMMANDS\n";
    for (const CommandHelp& command : all) {
        if (!command.name.empty()) {
            std::cout << ".TP\n\\fB" << escaped(command.name) << "\\fR\n"
                      << escaped(command.text) << '\n';
        }
    }
}

void printPage(const CommandHelp& command, const std::vector<CommandHelp>& all)
{
    const std::string page = pageOf(command.name);
    std::cout << ".TH " << escaped(inCapitals(page)) << " 1 \"\" \"telvo " TELVO_VERSION "\"\n"
              << ".SH NAME\n"
              << escaped(page) << " \\- " << escaped(command.text) << "\n.SH SYNOPSIS\n\\fBtelvo "
              << escaped(command.name) << "\\fR" << (command.name.empty() ? " \\fICOMMAND\\fR" : "")
              << " [\\fIOPTIONS\\fR]";
    for (const OptionHelp& option : command.options) {
        std::cout << (option.isArgument ? " \\fI" + escaped(inCapitals(option.name)) + "\\fR" : "");
    }
    std::cout << '\n';
    if (command.name.empty()) {
        printCommands(all);
    }
    printOptions(command);
    if (!command.footer.empty()) {
        std::cout << ".SH NOTES\n.nf\n" << escaped(command.footer) << "\n.fi\n";
    }
}

void printMan(const Command& tool, const std::vector<std::string>& words)
{
    std::string name;
    for (const std::string& word : words) {
        name += (name.empty() ? "" : " ") + word;
    }
    const std::vector<CommandHelp> all = allCommands(tool);
    const auto command = std::ranges::find(all, name, &CommandHelp::name);
    if (command == all.end()) {
        throw UsageError("there is no command '" + name + "'; 'telvo --help' lists them");
    }
    printPage(*command, all);
}

} // namespace

void addManCommand(const Command& app)
{
    const Command command = app.add("man", "Print the manual page of the tool or of a command");
    const auto words = std::make_shared<std::vector<std::string>>();
    command.option("command", *words, "The command; none: the tool itself");
    command.footer("telvo man record | man -l -");
    command.onRun([app, words] { printMan(app, *words); });
}

} // namespace telvo
