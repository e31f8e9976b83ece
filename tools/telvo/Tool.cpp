#include "Tool.h"

#include "CancelFlag.h"
#include "Commands.h"
#include "LineMistake.h"
#include "Terminal.h"
#include "ToolError.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <string>

namespace telvo
{

namespace
{

int report(const std::string& message, int exitStatus)
{
    std::cerr << "telvo: " << message << '\n';
    return exitStatus;
}

void addCommands(CLI::App& app)
{
    app.require_subcommand(0, 1); // none is reported below, in our words
    app.set_version_flag("--version", "telvo " TELVO_VERSION);
    app.footer("'telvo COMMAND --help' says all about a command.\n"
               "Exit status: 0 done, 1 failed or less than asked, 2 the command line is wrong.");
    for (const auto add :
         {addDiscoverCommand, addInfoCommand,     addStateCommand,   addGetCommand,
          addSetCommand,      addSettingsCommand, addUserSetCommand, addNameCommand,
          addForceIpCommand,  addBrowseCommand,   addLiveCommand,    addRecordCommand,
          addStopCommand,     addFlashCommand,    addReviewCommand,  addDownloadCommand,
          addPanelCommand,    addSerialCommand,   addDoctorCommand,  addLogCommand}) {
        add(Command(app));
    }
}

/// What was printed may still be on its way to a full disk, or to a reader that is gone.
void requireOutput()
{
    if (!std::cout.flush()) {
        throw Failure("cannot write the output; is its disk full, or its reader gone?");
    }
}

/// Runs what parsing runs, and turns every error into a line and an exit status.
template <typename Parse>
int runCommand(CLI::App& app, const Parse& parse)
{
    try {
        parse(); // runs the command
        requireCommand(app);
        requireOutput();
        return kExitSuccess;
    } catch (const CLI::Success& helpOrVersion) {
        return app.exit(helpOrVersion);
    } catch (const CLI::ParseError& error) {
        return report(mistakeOf(app, error), kExitUsage);
    } catch (const UsageError& error) {
        return report(error.what(), kExitUsage);
    } catch (const ExitStatus& status) {
        return status.value;
    } catch (const std::exception& error) {
        return report(error.what(), kExitFailure);
    }
}

} // namespace

int runTool(int argc, const char* const* argv)
{
    ignoreBrokenPipes();
    const CancelFlag cancel;
    CLI::App app("Controls GigE Vision high-speed cameras.", "telvo");
    return runCommand(app, [&] {
        addCommands(app);
        addShellCommand(Command(app));
        addCompletionCommand(Command(app));
        addManCommand(Command(app));
        app.parse(argc, argv);
    });
}

int runToolLine(const std::string& line)
{
    CLI::App app("Controls GigE Vision high-speed cameras.", "telvo");
    return runCommand(app, [&] {
        addCommands(app);
        app.parse(line);
    });
}

} // namespace telvo
