#include "Tool.h"

#include "CancelFlag.h"
#include "Commands.h"
#include "Terminal.h"
#include "ToolError.h"

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
    addDiscoverCommand(app);
    addInfoCommand(app);
    addStateCommand(app);
    addGetCommand(app);
    addSetCommand(app);
    addLiveCommand(app);
    addRecordCommand(app);
    addStopCommand(app);
    addReviewCommand(app);
    addDownloadCommand(app);
    addLogCommand(app);
}

/// What was printed may still be on its way to a full disk, or to a reader that is gone.
void requireOutput()
{
    if (!std::cout.flush()) {
        throw Failure("cannot write the output; is its disk full, or its reader gone?");
    }
}

void runCommand(CLI::App& app, int argc, const char* const* argv)
{
    app.parse(argc, argv); // runs the command
    if (app.get_subcommands().empty()) {
        throw UsageError("no command given; 'telvo --help' lists them");
    }
    requireOutput();
}

} // namespace

int runTool(int argc, const char* const* argv)
{
    ignoreBrokenPipes();
    const CancelFlag cancel;
    CLI::App app("Controls GigE Vision high-speed cameras.", "telvo");
    try {
        addCommands(app);
        runCommand(app, argc, argv);
        return kExitSuccess;
    } catch (const CLI::Success& helpOrVersion) {
        return app.exit(helpOrVersion);
    } catch (const CLI::ParseError& error) {
        return report(error.what(), kExitUsage);
    } catch (const UsageError& error) {
        return report(error.what(), kExitUsage);
    } catch (const std::exception& error) {
        return report(error.what(), kExitFailure);
    }
}

} // namespace telvo
