#include "IdleMode.h"

#include "CountText.h"

#include "TelvoDll.h"

#include <utility>

namespace telvo
{

namespace
{

constexpr std::chrono::seconds kIdleInterval{1};

} // namespace

IdleMode::IdleMode(const CameraSession& camera, std::string news)
    : mCamera(camera), mNews(std::move(news))
{
    expGetNumberOfAllRecordedFrames(&mRecorded, mCamera.id());
}

DeskMode::Step IdleMode::step()
{
    mCamera.requireLink();
    return {.wait = kIdleInterval};
}

Json IdleMode::state() const
{
    const std::string held =
        mRecorded == 0 ? "" : "; " + countText(mRecorded, "frame") + " in the camera's memory";
    return {{"state", "idle"}, {"text", mNews + held}, {"frames", mRecorded}};
}

} // namespace telvo
