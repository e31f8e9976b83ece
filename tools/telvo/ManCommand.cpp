#include "CommandTree.h"
#include "Commands.h"
#include "OutputFile.h"
#include "ToolError.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>
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

void printOptions(std::ostream& out, const CommandHelp& command)
{
    out << ".SH OPTIONS\n";
    for (const OptionHelp& option : command.options) {
        out << ".TP\n\\fB" << escaped(option.name) << "\\fR";
        if (!option.isArgument && !option.type.empty()) {
            out << " \\fI" << escaped(option.type) << "\\fR";
        }
        out << '\n' << escaped(option.text) << '\n';
    }
}

/// Those right below the tool itself.
void printCommands(std::ostream& out, const std::vector<CommandHelp>& all)
{
    out << ".SH COMMANDS\n";
    for (const CommandHelp& command : all) {
        if (!command.name.empty()) {
            out << ".TP\n\\fB" << escaped(command.name) << "\\fR\n"
                << escaped(command.text) << '\n';
        }
    }
}

void printPage(std::ostream& out, const CommandHelp& command, const std::vector<CommandHelp>& all)
{
    const std::string page = pageOf(command.name);
    out << ".TH " << escaped(inCapitals(page)) << " 1 \"\" \"telvo " TELVO_VERSION "\"\n"
        << ".SH NAME\n"
        << escaped(page) << " \\- " << escaped(command.text) << "\n.SH SYNOPSIS\n\\fBtelvo "
        << escaped(command.name) << "\\fR" << (command.name.empty() ? " \\fICOMMAND\\fR" : "")
        << " [\\fIOPTIONS\\fR]";
    for (const OptionHelp& option : command.options) {
        out << (option.isArgument ? " \\fI" + escaped(inCapitals(option.name)) + "\\fR" : "");
    }
    out << '\n';
    if (command.name.empty()) {
        printCommands(out, all);
    }
    printOptions(out, command);
    if (!command.footer.empty()) {
        out << ".SH NOTES\n.nf\n" << escaped(command.footer) << "\n.fi\n";
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
    printPage(std::cout, *command, all);
}

/// As packages have them: telvo.1, telvo-record.1 and so on.
void writeAll(const Command& tool, const std::filesystem::path& folder)
{
    makeFolder(folder);
    const std::vector<CommandHelp> all = allCommands(tool);
    for (const CommandHelp& command : all) {
        std::ostringstream page;
        printPage(page, command, all);
        const std::string text = page.str();
        OutputFile file(folder / (pageOf(command.name) + ".1"), IfThere::Replace);
        file.write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        file.commit();
    }
}

struct ManOptions {
    std::vector<std::string> words;
    std::filesystem::path folder;
};

} // namespace

void addManCommand(const Command& app)
{
    const Command command = app.add("man", "Print the manual page of the tool or of a command");
    const auto options = std::make_shared<ManOptions>();
    command.option("command", options->words, "The command; none: the tool itself");
    command.option("--folder", options->folder, "Write the pages of all commands there instead")
        .type("FOLDER");
    command.footer("telvo man record | man -l -");
    command.onRun([app, options] {
        if (options->folder.empty()) {
            printMan(app, options->words);
        } else {
            writeAll(app, options->folder);
        }
    });
}

} // namespace telvo
