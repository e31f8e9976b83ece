#include "CameraChoice.h"
#include "CancelFlag.h"
#include "CaptureOptions.h"
#include "Commands.h"
#include "OptionRange.h"
#include "ProgressBar.h"
#include "RecordingEnd.h"
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
    const RecordingEnd end = endRecording(camera);
    if (end.inStandby) {
        std::cout << "the camera stays in record standby\n";
    }
    std::cout << "recorded " << recordedText(camera) << '\n';
    if (recordedSoFar(camera) < options.frames) {
        throw Failure("fewer frames than asked for");
    }
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
