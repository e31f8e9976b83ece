#include "LiveStream.h"

#include "ToolError.h"

#include "TelvoDll.h"

#include <thread>

namespace telvo
{

namespace
{

constexpr std::chrono::seconds kSilenceLimit{5};
constexpr std::chrono::milliseconds kWait{20};          // then the caller may look for Ctrl-C
constexpr std::chrono::microseconds kPollInterval{200}; // thousands of frames per second

} // namespace

LiveStream::LiveStream(const CameraSession& camera) : mCamera(camera)
{
    expGetWidth(&mWidth, camera.id());
    expGetHeight(&mHeight, camera.id());
    if (expStartLiveMode(camera.id()) != 0) {
        camera.fail("cannot start live mode ('telvo log' shows why)");
    }
    mRunning = true;
    mLastFrame = std::chrono::steady_clock::now();
}

LiveStream::~LiveStream()
{
    stop();
}

std::optional<GrayView> LiveStream::next()
{
    const auto start = std::chrono::steady_clock::now();
    auto now = start;
    do {
        std::uint8_t status = 0;
        std::uint8_t last = 0;
        if (const std::uint8_t* pixels = expGetPreviewImage(&status, &last, mCamera.id())) {
            mLastFrame = now;
            return GrayView{mWidth, mHeight, {pixels, std::size_t{mWidth} * mHeight}};
        }
        std::this_thread::sleep_for(kPollInterval);
        now = std::chrono::steady_clock::now();
    } while (now < start + kWait);

    mCamera.requireLink();
    if (now > mLastFrame + kSilenceLimit) {
        mCamera.fail("the camera sends no pictures");
    }
    return std::nullopt;
}

void LiveStream::stop()
{
    if (mRunning) {
        mRunning = false;
        expStopLiveMode(mCamera.id());
    }
}

} // namespace telvo
