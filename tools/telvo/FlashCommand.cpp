#include "CameraChoice.h"
#include "CameraSession.h"
#include "Commands.h"
#include "RecordingEnd.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <iostream>
#include <memory>

namespace telvo
{

namespace
{

void requireFlashCard(const CameraSession& camera)
{
    std::uint8_t available = 0;
    if (expIsFlashCardAvailable(&available, camera.id()) != 0 || available == 0) {
        throw Failure("the camera has no flash card");
    }
}

bool isCopying(const CameraSession& camera)
{
    std::uint8_t writing = 0;
    return expIsStateFlashWrite(&writing, camera.id()) == 0 && writing != 0;
}

void runStart(const CameraOptions& options)
{
    const CameraSession camera(chooseCamera(options));
    camera.requireNoRecording();
    requireFlashCard(camera);
    if (expStartWriteToFlash(camera.id()) != 0 || !isCopying(camera)) {
        camera.fail("the camera does not start the copy; has it recorded anything?");
    }
    followFlashCopy(camera);
    std::cout << "the recording is on the flash card\n";
}

void runStop(const CameraOptions& options)
{
    const CameraSession camera(chooseCamera(options), {}, FlashCopy::IsTheTask);
    requireFlashCard(camera);
    const bool wasCopying = isCopying(camera);
    expStopWriteToFlash(camera.id());
    camera.requireLink();
    if (isCopying(camera)) {
        throw Failure("the camera goes on copying");
    }
    std::cout << (wasCopying ? "the copy to the flash card was ended\n" : "nothing was copied\n");
}

} // namespace

void addFlashCommand(CLI::App& app)
{
    CLI::App* const command =
        app.add_subcommand("flash", "Copy the recording to the camera's flash card");
    command->require_subcommand(1);
    const auto options = std::make_shared<CameraOptions>();

    CLI::App* const start = command->add_subcommand("start", "Copy, and wait for the end");
    addCameraOptions(*start, *options);
    start->footer("Ctrl-C leaves the camera to copy by itself; 'telvo state' then shows when it "
                  "is done.");
    start->callback([options] { runStart(*options); });

    CLI::App* const stop = command->add_subcommand("stop", "End a copy");
    addCameraOptions(*stop, *options);
    stop->callback([options] { runStop(*options); });
}

} // namespace telvo
