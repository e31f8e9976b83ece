#include "LiveMode.h"

#include "ToolError.h"

#include "TelvoDll.h"

namespace telvo
{

namespace
{

/// Between two looks for a new picture: what adds to its latency, and what costs time while none
/// comes.
constexpr std::chrono::milliseconds kLiveLookInterval{3};
constexpr std::chrono::seconds kCameraSilence{3};

} // namespace

LiveMode::LiveMode(const CameraSession& camera, LivePictures& pictures)
    : mCamera(camera), mPictures(pictures)
{
    mPictures.begin(camera);
    if (expStartLiveMode(camera.id()) != 0) {
        camera.requireLink();
        throw Failure("cannot start live pictures ('telvo log' shows why)");
    }
}

LiveMode::~LiveMode()
{
    expStopLiveMode(mCamera.id());
}

DeskMode::Step LiveMode::step()
{
    if (mPictures.fetch(mCamera)) {
        mLastPicture = Clock::now();
    } else {
        mCamera.requireLink();
    }
    return {.wait = kLiveLookInterval};
}

bool LiveMode::isSilent() const
{
    return Clock::now() > mLastPicture + kCameraSilence;
}

Json LiveMode::state() const
{
    Json state{{"state", "live"},
               {"text", isSilent() ? "live, but the camera sends no pictures" : "live"}};
    state.update(mPictures.figures());
    return state;
}

} // namespace telvo
