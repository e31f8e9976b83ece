#include "CameraChoice.h"
#include "Commands.h"
#include "StateReport.h"
#include "TextTable.h"

#include <iostream>
#include <memory>
#include <vector>

namespace telvo
{

namespace
{

struct StateOptions {
    CamerasOptions cameras;
    bool json = false;
};

void runState(const StateOptions& options)
{
    Json all = Json::array();
    std::string text;
    for (const CameraAddress& camera : chooseCameras(options.cameras)) {
        Facts facts = stateOf(lookAt(camera));
        facts.insert(facts.begin(), Fact{"camera", "camera", camera.ip});
        all.push_back(jsonOf(facts));
        text += (text.empty() ? "" : "\n") + formatTable(rowsOf(facts));
    }
    if (options.json) {
        printJson(all);
    } else {
        std::cout << text;
    }
}

} // namespace

void addStateCommand(const Command& app)
{
    const Command command = app.add("state", "Print what a camera is doing and who controls it");
    const auto options = std::make_shared<StateOptions>();
    addCamerasOptions(command, options->cameras);
    addJsonOption(command, options->json);
    command.footer("It changes nothing in the camera, and disturbs nobody who works with it.");
    command.onRun([options] { runState(*options); });
}

} // namespace telvo
