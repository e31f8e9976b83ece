#include "CameraChoice.h"
#include "CameraSession.h"
#include "CancelFlag.h"
#include "Commands.h"
#include "LineInput.h"
#include "Terminal.h"
#include "Tool.h"
#include "ToolError.h"

#include <iostream>
#include <memory>
#include <string>
#include <string_view>

namespace telvo
{

namespace
{

/// Null: there is no command on the line.
std::string commandOn(const std::string& line)
{
    const std::size_t first = line.find_first_not_of(" \t\r");
    return first == std::string::npos || line[first] == '#' ? "" : line.substr(first);
}

bool endsShell(std::string_view command)
{
    return command == "exit" || command == "quit";
}

void runShell(const CameraOptions& options)
{
    const KeptCameras kept;
    const UsualCamera usual(options);
    const CancelFlag cancel;
    const bool isWatched = isTerminal(stdin);
    LineInput input;
    while (const auto line = input.next(isWatched ? "telvo> " : "")) {
        const std::string command = commandOn(*line);
        if (endsShell(command)) {
            return;
        }
        const int exitStatus = command.empty() ? kExitSuccess : runToolLine(command);
        cancel.check();
        if (exitStatus != kExitSuccess && !isWatched) {
            throw ExitStatus(exitStatus); // a script is not to go on; the reason was told
        }
    }
    cancel.check();
}

} // namespace

void addShellCommand(const Command& app)
{
    const Command command =
        app.add("shell", "Read commands line by line, with the cameras kept connected");
    const auto options = std::make_shared<CameraOptions>();
    addCameraOptions(command, *options);
    command.footer(
        "The options are those of each command that does not give its own. A camera is connected "
        "once,\nwhich takes more than a second, and stays so until the shell ends: with exit, the "
        "end of its\ninput or Ctrl-C. Lines that begin with # are left out. Commands that come "
        "from a file or a\npipe end at the first that fails, with its exit status.");
    command.onRun([options] { runShell(*options); });
}

} // namespace telvo
