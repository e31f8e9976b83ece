#include "CameraChoice.h"
#include "CameraSession.h"
#include "Commands.h"
#include "Terminal.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <memory>

namespace telvo
{

namespace
{

struct BrowseOptions {
    CameraOptions camera;
    bool stream = false;
};

void runBrowse(const BrowseOptions& options)
{
    if (!isTerminal(stdin) || !isTerminal(stdout)) {
        throw Failure("browse needs a terminal; 'telvo get' prints the settings");
    }
    const CameraSession camera(chooseCamera(options.camera));
    if (options.stream) {
        expShowStreamParams(camera.id());
    } else {
        expShowGEVParams(camera.id());
    }
    camera.requireLink();
}

} // namespace

void addBrowseCommand(const Command& app)
{
    const Command command = app.add("browse", "Look at all of a camera's features and change them");
    const auto options = std::make_shared<BrowseOptions>();
    addCameraOptions(command, options->camera);
    command.flag("--stream", options->stream, "The stream's parameters in place of them");
    command.onRun([options] { runBrowse(*options); });
}

} // namespace telvo
