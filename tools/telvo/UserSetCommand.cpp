#include "CameraChoice.h"
#include "CameraSession.h"
#include "Commands.h"
#include "StateReport.h"
#include "TextTable.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <iostream>
#include <memory>

namespace telvo
{

namespace
{

struct Options {
    CameraOptions camera;
    bool json = false;
};

void runShow(const Options& options)
{
    const CameraAddress camera = chooseCamera(options.camera);
    const Facts facts = userSetsOf(lookAt(camera));
    if (options.json) {
        printJson(jsonOf(facts));
    } else {
        std::cout << formatTable(rowsOf(facts));
    }
}

void runSave(const CameraOptions& options)
{
    const CameraSession camera(chooseCamera(options));
    camera.requireNoRecording();
    if (expSaveUserSet(camera.id()) != 0) {
        camera.fail("the camera does not save its user set ('telvo log' shows why)");
    }
    std::cout << "the present settings are those after the next power-on\n";
}

} // namespace

void addUserSetCommand(const Command& app)
{
    const Command command = app.add("userset", "The settings that a camera has after power-on");
    command.needsCommand();
    const auto options = std::make_shared<Options>();

    const Command show = command.add("show", "Print which user set is in use");
    addCameraOptions(show, options->camera);
    addJsonOption(show, options->json);
    show.onRun([options] { runShow(*options); });

    const Command save = command.add("save", "Keep the present settings over power-off");
    addCameraOptions(save, options->camera);
    save.onRun([options] { runSave(options->camera); });
}

} // namespace telvo
