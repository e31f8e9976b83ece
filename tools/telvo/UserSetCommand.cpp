#include "CameraChoice.h"
#include "CameraSession.h"
#include "Commands.h"
#include "StateReport.h"
#include "TextTable.h"
#include "ToolError.h"
#include "UserSetLoad.h"

#include "TelvoDll.h"

#include <iostream>
#include <memory>

namespace telvo
{

namespace
{

struct UserSetOptions {
    CameraOptions camera;
    std::string set = "UserSet1";
    bool json = false;
};

void runShow(const UserSetOptions& options)
{
    const CameraAddress camera = chooseCamera(options.camera);
    const Facts facts = userSetsOf(lookAt(camera));
    if (options.json) {
        printJson(jsonOf(facts));
    } else {
        std::cout << formatTable(rowsOf(facts));
    }
}

void runSave(const UserSetOptions& options)
{
    const CameraSession camera(chooseCamera(options.camera));
    camera.requireNoRecording();
    if (expSaveUserSet(camera.id()) != 0) {
        camera.fail("the camera does not save its user set ('telvo log' shows why)");
    }
    if (options.json) {
        printJson({{"camera", camera.address().ip}, {"saved", true}});
    } else {
        std::cout << "the present settings are those after the next power-on\n";
    }
}

void runLoad(const UserSetOptions& options)
{
    const CameraAddress camera = chooseCamera(options.camera);
    loadUserSet(camera, options.set);
    if (options.json) {
        printJson({{"camera", camera.ip}, {"loaded", options.set}});
    } else {
        std::cout << "the settings are those of the user set " << options.set << '\n';
    }
}

} // namespace

void addUserSetCommand(const Command& app)
{
    const Command command = app.add("userset", "The settings that a camera has after power-on");
    command.needsCommand();
    const auto options = std::make_shared<UserSetOptions>();

    const Command show = command.add("show", "Print which user set is in use");
    addCameraOptions(show, options->camera);
    addJsonOption(show, options->json);
    show.onRun([options] { runShow(*options); });

    const Command save = command.add("save", "Keep the present settings over power-off");
    addCameraOptions(save, options->camera);
    addJsonOption(save, options->json);
    save.onRun([options] { runSave(*options); });

    const Command load = command.add("load", "Go back to the settings of a user set");
    load.option("set", options->set, "UserSet1: those saved; Default: the camera's own")
        .type("SET")
        .showDefault();
    addCameraOptions(load, options->camera);
    addJsonOption(load, options->json);
    load.footer("What is saved stays as it is; 'telvo userset save' keeps what was loaded.");
    load.onRun([options] { runLoad(*options); });
}

} // namespace telvo
