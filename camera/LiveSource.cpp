#include "LiveSource.h"

namespace camera
{

void LiveSource::start(CameraTime now, std::uint32_t rate, const Recorder& recorder)
{
    mRunning = true;
    mPreviewed = recorder.exposed();
    endPreview(now, rate, 0);
}

void LiveSource::endPreview(CameraTime now, std::uint32_t rate, std::uint64_t first)
{
    mClock = FrameClock(now, rate);
    mTaken = 0;
    mFirst = first;
}

std::optional<Exposure> LiveSource::take(CameraTime now)
{
    const std::uint64_t exposed = mUnpaced ? mTaken + 1 : mClock.exposedAt(now);
    return exposed > mTaken ? std::optional(takeUpTo(exposed, now)) : std::nullopt;
}

std::optional<Exposure> LiveSource::takeOnly(CameraTime now)
{
    const bool isExposed = mUnpaced || mClock.exposedAt(now) > mTaken;
    return isExposed ? std::optional(takeUpTo(mTaken + 1, now)) : std::nullopt;
}

Exposure LiveSource::takeUpTo(std::uint64_t exposed, CameraTime now)
{
    const Exposure newest{.number = mFirst + exposed - 1,
                          .leftOut = exposed - mTaken - 1,
                          .time = mUnpaced ? now : mClock.timeOf(exposed - 1)};
    mTaken = exposed;
    return newest;
}

std::optional<FrameStamp> LiveSource::takePreview(const Recorder& recorder)
{
    if (recorder.exposed() <= mPreviewed) {
        return std::nullopt;
    }
    mPreviewed = recorder.exposed();
    return recorder.newest();
}

} // namespace camera
