#include "CameraChoice.h"
#include "CancelFlag.h"
#include "CaptureOptions.h"
#include "Commands.h"
#include "OptionRange.h"
#include "ProgressBar.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <limits>
#include <memory>
#include <string>
#include <thread>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kPoll{20};
constexpr std::chrono::milliseconds kFlashPoll{500};

constexpr std::int32_t kStoppedToFlash = 2;
constexpr std::int32_t kStoppedToStandby = 3;

struct Options {
    CameraOptions camera;
    CaptureOptions capture;
    std::uint32_t frames = 0;
};

void requireRoom(const CameraSession& camera, std::uint32_t frames)
{
    std::uint32_t room = 0;
    if (expGetMaxFramesPerSequence(&room, camera.id()) == 0 && frames > room) {
        throw Failure("the camera's memory takes only " + std::to_string(room) +
                      " frames of this size");
    }
}

/// What the camera says, or what its preview shows if that is ahead: a preview may lose frames, and
/// a camera may count only once it has stopped.
std::uint32_t recordedSoFar(const CameraSession& camera)
{
    std::uint32_t counted = 0;
    expGetNumberOfAllRecordedFrames(&counted, camera.id());
    const auto shown = static_cast<std::uint32_t>(expGetCurrentNumberOfImages(camera.id()));
    return std::max(counted, shown);
}

/// Until the frames are there, the camera has ended by itself, or Ctrl-C.
void waitForFrames(const CameraSession& camera, std::uint32_t frames)
{
    const CancelFlag cancel;
    ProgressBar progress = terminalProgress("record", frames);
    for (;;) {
        const std::uint32_t recorded = recordedSoFar(camera);
        progress.show(recorded);
        std::uint8_t idle = 0;
        expIsStateIdle(&idle, camera.id());
        camera.requireLink();
        if (recorded >= frames || idle != 0 || cancel.isSet()) {
            return;
        }
        std::this_thread::sleep_for(kPoll);
    }
}

void waitForFlash(const CameraSession& camera)
{
    std::cout << "copying the recording to the flash card" << std::endl;
    const CancelFlag cancel;
    std::uint8_t writing = 1;
    while (writing != 0 && !cancel.isSet()) {
        std::this_thread::sleep_for(kFlashPoll);
        camera.requireLink();
        expIsStateFlashWrite(&writing, camera.id());
    }
}

void stopRecording(const CameraSession& camera)
{
    std::int32_t result = expStopRecordMode(camera.id());
    if (result == kStoppedToFlash) {
        waitForFlash(camera);
        result = expStopRecordMode(camera.id());
    }
    if (result == kStoppedToStandby) {
        std::cout << "the camera stays in record standby\n";
    }
    camera.requireLink();
}

void runRecord(const Options& options)
{
    const std::vector<Assignment> settings = options.capture.assignments();
    const CameraSession camera(chooseCamera(options.camera), settings);
    camera.requireNoRecording();
    camera.apply(settings);
    requireRoom(camera, options.frames);

    if (expStartRecordMode(camera.id()) != 0) {
        camera.requireLink();
        throw Failure("cannot start recording ('telvo log' shows why)");
    }
    waitForFrames(camera, options.frames);
    stopRecording(camera);

    std::uint32_t frames = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    expGetNumberOfAllRecordedFrames(&frames, camera.id());
    expGetLastRecordDimensions(&width, &height, camera.id());
    std::cout << "recorded " << frames << " frames of " << width << 'x' << height
              << " in the camera's memory\n";
}

} // namespace

void addRecordCommand(CLI::App& app)
{
    CLI::App* const command = app.add_subcommand("record", "Record into a camera's memory");
    const auto options = std::make_shared<Options>();
    addCameraOptions(*command, options->camera);
    command->add_option("--frames", options->frames, "Frames to record, at least")
        ->required()
        ->type_name("N")
        ->check(inRange(1, std::numeric_limits<std::uint32_t>::max()));
    options->capture.addTo(*command, {"width", "height", "frame-rate", "exposure"});
    command->footer(
        "Recording stops once the frames are taken, so that a few more may be recorded. "
        "Ctrl-C\nstops it earlier. 'telvo download' reads the recording.");
    command->callback([options] { runRecord(*options); });
}

} // namespace telvo
