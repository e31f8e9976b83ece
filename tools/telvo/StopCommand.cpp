#include "CameraChoice.h"
#include "Commands.h"
#include "EachCamera.h"
#include "RecordingEnd.h"

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace telvo
{

namespace
{

std::string stop(const CameraAddress& address)
{
    const CameraSession camera(address);
    if (!camera.isRecording()) {
        return "was not recording";
    }
    endRecording(camera);
    return "recording ended, " + recordedText(camera);
}

void runStop(const CamerasOptions& options)
{
    const std::vector<CameraAddress> cameras = chooseCameras(options);
    const auto texts = forEach<std::string>(
        cameras, [](std::size_t, const CameraAddress& address) { return stop(address); });
    for (std::size_t i = 0; i < cameras.size(); ++i) {
        std::cout << cameras[i].ip << ": " << texts[i] << '\n';
    }
}

} // namespace

void addStopCommand(const Command& app)
{
    const Command command = app.add("stop", "End what a camera is doing");
    const auto options = std::make_shared<CamerasOptions>();
    addCamerasOptions(command, *options);
    command.footer("Ends a recording that another program has left running, and record standby.");
    command.onRun([options] { runStop(*options); });
}

} // namespace telvo
