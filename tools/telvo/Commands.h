/// The tool's subcommands. Each adds itself to the command line; given there, it runs and throws
/// Failure or UsageError if it cannot do what it should.
#ifndef TELVO_TOOLS_TELVO_COMMANDS_H
#define TELVO_TOOLS_TELVO_COMMANDS_H

#include "Command.h"

namespace telvo
{

void addDiscoverCommand(const Command& app);
void addInfoCommand(const Command& app);
void addStateCommand(const Command& app);
void addGetCommand(const Command& app);
void addSetCommand(const Command& app);
void addSettingsCommand(const Command& app);
void addUserSetCommand(const Command& app);
void addNameCommand(const Command& app);
void addForceIpCommand(const Command& app);
void addBrowseCommand(const Command& app);
void addLiveCommand(const Command& app);
void addRecordCommand(const Command& app);
void addStopCommand(const Command& app);
void addReviewCommand(const Command& app);
void addFlashCommand(const Command& app);
void addDownloadCommand(const Command& app);
void addPanelCommand(const Command& app);
void addSerialCommand(const Command& app);
void addLogCommand(const Command& app);
void addDoctorCommand(const Command& app);
void addCompletionCommand(const Command& app);
void addManCommand(const Command& app);
void addShellCommand(const Command& app);

} // namespace telvo

#endif
