#include "CameraChoice.h"
#include "CameraSession.h"
#include "Commands.h"
#include "Json.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <iostream>
#include <memory>
#include <string>

namespace telvo
{

namespace
{

struct NameOptions {
    CameraOptions camera;
    std::string name;
    bool json = false;
};

void runName(const NameOptions& options)
{
    const CameraAddress address = chooseCamera(options.camera);
    {
        const CameraSession camera(address);
        expSetUserDefinedName(options.name.c_str(), camera.id());
    }
    // The name reaches the camera when it is disconnected.
    const std::string taken = lookAt(address).text("DeviceUserID").value_or("");
    if (taken != options.name) {
        throw Failure("the camera is called '" + taken + "'; it takes 15 characters at most");
    }
    if (options.json) {
        printJson({{"camera", address.ip}, {"name", taken}});
    } else {
        std::cout << address.ip << " is now called '" << taken << "'\n";
    }
}

} // namespace

void addNameCommand(const Command& app)
{
    const Command command = app.add("name", "Give a camera a name");
    const auto options = std::make_shared<NameOptions>();
    addCameraOptions(command, options->camera);
    command.option("name", options->name, "The new name, 15 characters at most").required();
    addJsonOption(command, options->json);
    command.onRun([options] { runName(*options); });
}

} // namespace telvo
