/// The commands of the tool and their options, for what is made of its help.
#ifndef TELVO_TOOLS_TELVO_COMMANDTREE_H
#define TELVO_TOOLS_TELVO_COMMANDTREE_H

#include "Command.h"

#include <string>
#include <vector>

namespace telvo
{

struct OptionHelp {
    std::string name; // "--frames"; of an argument: "FILE"
    std::string type; // "N"; empty for a flag
    std::string text;
    bool isArgument = false;
};

struct CommandHelp {
    std::string name; // "settings save"; empty: the tool itself
    std::string text;
    std::string footer;
    std::vector<OptionHelp> options;
};

/// The tool, then each of its commands, those within others too.
std::vector<CommandHelp> allCommands(const Command& tool);

} // namespace telvo

#endif
