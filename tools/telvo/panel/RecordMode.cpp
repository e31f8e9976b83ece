#include "RecordMode.h"

#include "FlashMode.h"
#include "IdleMode.h"
#include "PanelMessages.h"
#include "RecordingEnd.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <algorithm>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kPictureInterval{3}; // for a picture
constexpr std::chrono::milliseconds kStateInterval{20};  // of the camera

std::uint32_t framesOfRoom(const CameraSession& camera)
{
    std::uint32_t room = 0;
    expGetMaxFramesPerSequence(&room, camera.id());
    return room;
}

bool isIdle(const CameraSession& camera)
{
    std::uint8_t idle = 0;
    return expIsStateIdle(&idle, camera.id()) == 0 && idle != 0;
}

} // namespace

RecordMode::RecordMode(const CameraSession& camera, LivePictures& pictures, const RecordPlan& plan)
    : mCamera(camera),
      mPictures(pictures),
      mPlan(plan),
      mRoom(framesOfRoom(camera)),
      mRun(camera, plan, [this] { return mIsTriggered; })
{
    mPictures.begin(camera);
}

DeskMode::Step RecordMode::step()
{
    mPictures.fetch(mCamera);
    const Clock::time_point now = Clock::now();
    if (now < mNextLook) {
        return {.wait = kPictureInterval};
    }
    mNextLook = now + kStateInterval;
    const auto cause = mRun.look();
    return cause ? Step{.next = end(*cause)} : Step{.wait = kPictureInterval};
}

std::unique_ptr<DeskMode> RecordMode::end(EndCause cause)
{
    const auto end = mRun.stop();
    if (!end) {
        return std::make_unique<FlashMode>(mCamera, FlashMode::After::Recording);
    }
    return std::make_unique<IdleMode>(mCamera, mRun.outcome(cause, *end).endText());
}

void RecordMode::trigger()
{
    if (mPlan.trigger != TriggerKind::Key) {
        throw Failure(mPlan.trigger == TriggerKind::Camera
                          ? "this recording waits for a trigger of the camera's own"
                          : "this recording waits for no trigger");
    }
    mIsTriggered = true;
    mNextLook = {}; // at once: what is shown now is what the user saw
}

Json RecordMode::state() const
{
    const RecordProgress progress = mRun.progress();
    Json state{{"state", progress.waits ? "armed" : "recording"},
               {"text", progress.waits ? progress.text() : "recording, " + progress.text()},
               {"live", true},
               {"frames", progress.frames},
               {"elapsed", tenths(progress.time.count())}};
    const std::uint32_t all = mPlan.frames.value_or(mRoom);
    if (all != 0 && !mPlan.isRing) {
        state["of"] = all;
    }
    state.update(mPictures.figures());
    return state;
}

FoundRecordingMode::FoundRecordingMode(const CameraSession& camera, LivePictures& pictures)
    : mCamera(camera), mPictures(pictures)
{
    mPictures.begin(camera);
}

DeskMode::Step FoundRecordingMode::step()
{
    mPictures.fetch(mCamera);
    const Clock::time_point now = Clock::now();
    if (now >= mNextLook) {
        mNextLook = now + kStateInterval;
        const bool isOver = isIdle(mCamera);
        mCamera.requireLink();
        if (isOver) {
            return {.next = stop()};
        }
    }
    return {.wait = kPictureInterval};
}

Json FoundRecordingMode::state() const
{
    std::uint32_t counted = 0;
    expGetNumberOfAllRecordedFrames(&counted, mCamera.id());
    const auto shown = static_cast<std::uint32_t>(expGetCurrentNumberOfImages(mCamera.id()));
    Json state{{"state", "recording"},
               {"text", "recording, as it was when the camera was connected"},
               {"live", true},
               {"frames", std::max(counted, shown)}};
    state.update(mPictures.figures());
    return state;
}

void FoundRecordingMode::trigger()
{
    throw Failure("this recording was started by somebody else, and waits for no trigger of yours");
}

std::unique_ptr<DeskMode> FoundRecordingMode::stop()
{
    if (!stopRecording(mCamera)) {
        return std::make_unique<FlashMode>(mCamera, FlashMode::After::Recording);
    }
    return std::make_unique<IdleMode>(mCamera, "recording ended");
}

} // namespace telvo
