#include "CameraChoice.h"
#include "CameraSession.h"
#include "Commands.h"
#include "Json.h"
#include "RecordingEnd.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <iostream>
#include <memory>

namespace telvo
{

namespace
{

struct FlashOptions {
    CameraOptions camera;
    bool json = false;
};

/// One fact, as a member of JSON or as a text.
void report(const FlashOptions& options, const CameraSession& camera, const char* key, bool value,
            const char* text)
{
    if (options.json) {
        printJson({{"camera", camera.address().ip}, {key, value}});
    } else {
        std::cout << text << '\n';
    }
}

void requireFlashCard(const CameraSession& camera)
{
    std::uint8_t available = 0;
    if (expIsFlashCardAvailable(&available, camera.id()) != 0 || available == 0) {
        throw Failure("the camera has no flash card; put one in, or download the recording");
    }
}

void runStart(const FlashOptions& options)
{
    const CameraSession camera(chooseCamera(options.camera));
    camera.requireNoRecording();
    requireFlashCard(camera);
    if (expStartWriteToFlash(camera.id()) != 0 || !isCopying(camera)) {
        camera.fail("the camera does not start the copy; has it recorded anything?");
    }
    followFlashCopy(camera);
    report(options, camera, "copied", true, "the recording is on the flash card");
}

void runStop(const FlashOptions& options)
{
    const CameraSession camera(chooseCamera(options.camera), {}, FlashCopy::IsTheTask);
    requireFlashCard(camera);
    const bool wasCopying = isCopying(camera);
    expStopWriteToFlash(camera.id());
    camera.requireLink();
    if (isCopying(camera)) {
        throw Failure("the camera goes on copying; wait for its end ('telvo state') or try again");
    }
    report(options, camera, "wasCopying", wasCopying,
           wasCopying ? "the copy to the flash card was ended" : "nothing was copied");
}

} // namespace

void addFlashCommand(const Command& app)
{
    const Command command = app.add("flash", "Copy the recording to the camera's flash card");
    command.needsCommand();
    const auto options = std::make_shared<FlashOptions>();

    const Command start = command.add("start", "Copy, and wait for the end");
    addCameraOptions(start, options->camera);
    addJsonOption(start, options->json);
    start.footer("Ctrl-C leaves the camera to copy by itself; 'telvo state' then shows when it "
                 "is done.");
    start.onRun([options] { runStart(*options); });

    const Command stop = command.add("stop", "End a copy");
    addCameraOptions(stop, options->camera);
    addJsonOption(stop, options->json);
    stop.onRun([options] { runStop(*options); });
}

} // namespace telvo
