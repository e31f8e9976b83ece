#include "CameraChoice.h"
#include "Commands.h"
#include "RecordingEnd.h"

#include <iostream>
#include <memory>

namespace telvo
{

namespace
{

void runStop(const CamerasOptions& options)
{
    for (const CameraAddress& address : chooseCameras(options)) {
        const CameraSession camera(address);
        const bool wasRecording = camera.isRecording();
        if (wasRecording) {
            endRecording(camera);
        }
        std::cout << address.ip << ": "
                  << (wasRecording ? "recording ended, " + recordedText(camera)
                                   : "was not recording")
                  << '\n';
    }
}

} // namespace

void addStopCommand(CLI::App& app)
{
    CLI::App* const command = app.add_subcommand("stop", "End what a camera is doing");
    const auto options = std::make_shared<CamerasOptions>();
    addCamerasOptions(*command, *options);
    command->footer("Ends a recording that another program has left running, and record standby.");
    command->callback([options] { runStop(*options); });
}

} // namespace telvo
