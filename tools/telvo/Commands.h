/// The tool's subcommands. Each adds itself to the command line; given there, it runs and throws
/// Failure or UsageError if it cannot do what it should.
#ifndef TELVO_TOOLS_TELVO_COMMANDS_H
#define TELVO_TOOLS_TELVO_COMMANDS_H

#include <CLI/CLI.hpp>

namespace telvo
{

void addDiscoverCommand(CLI::App& app);
void addInfoCommand(CLI::App& app);
void addStateCommand(CLI::App& app);
void addGetCommand(CLI::App& app);
void addSetCommand(CLI::App& app);
void addSettingsCommand(CLI::App& app);
void addUserSetCommand(CLI::App& app);
void addNameCommand(CLI::App& app);
void addForceIpCommand(CLI::App& app);
void addBrowseCommand(CLI::App& app);
void addLiveCommand(CLI::App& app);
void addRecordCommand(CLI::App& app);
void addStopCommand(CLI::App& app);
void addReviewCommand(CLI::App& app);
void addFlashCommand(CLI::App& app);
void addDownloadCommand(CLI::App& app);
void addSerialCommand(CLI::App& app);
void addLogCommand(CLI::App& app);
void addDoctorCommand(CLI::App& app);
void addCompletionCommand(CLI::App& app);
void addManCommand(CLI::App& app);
void addShellCommand(CLI::App& app);

} // namespace telvo

#endif
