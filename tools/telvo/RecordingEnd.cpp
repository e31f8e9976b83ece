#include "RecordingEnd.h"

#include "CancelFlag.h"
#include "StatusLine.h"

#include "TelvoDll.h"

#include <chrono>
#include <iostream>
#include <string>
#include <thread>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kFlashPoll{50};

constexpr std::int32_t kStoppedToFlash = 2;
constexpr std::int32_t kStoppedToStandby = 3;

} // namespace

std::optional<RecordingEnd> stopRecording(const CameraSession& camera)
{
    const Waiting waiting("the camera to end the recording");
    const std::int32_t result = expStopRecordMode(camera.id());
    camera.requireLink();
    return result == kStoppedToFlash
               ? std::nullopt
               : std::optional(RecordingEnd{.inStandby = result == kStoppedToStandby});
}

bool isCopying(const CameraSession& camera)
{
    std::uint8_t writing = 0;
    return expIsStateFlashWrite(&writing, camera.id()) == 0 && writing != 0;
}

void followFlashCopy(const CameraSession& camera)
{
    std::cerr << "telvo: the camera copies the recording to its flash card; Ctrl-C lets it go on "
                 "by itself\n";
    const CancelFlag cancel;
    StatusLine status;
    const auto start = std::chrono::steady_clock::now();
    while (isCopying(camera)) {
        cancel.check();
        camera.requireLink();
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        status.show("copying to the flash card, " + std::to_string(static_cast<int>(time.count())) +
                    " s");
        std::this_thread::sleep_for(kFlashPoll);
    }
}

RecordingEnd finishRecording(const CameraSession& camera, std::optional<RecordingEnd> stopped)
{
    if (stopped) {
        return *stopped;
    }
    followFlashCopy(camera);
    RecordingEnd end = stopRecording(camera).value_or(RecordingEnd{});
    end.flashCopied = true;
    return end;
}

RecordingEnd endRecording(const CameraSession& camera)
{
    return finishRecording(camera, stopRecording(camera));
}

RecordedFrames recordedFrames(const CameraSession& camera)
{
    RecordedFrames frames;
    expGetNumberOfAllRecordedFrames(&frames.count, camera.id());
    expGetLastRecordDimensions(&frames.width, &frames.height, camera.id());
    return frames;
}

} // namespace telvo
