#include "Recorder.h"

#include <algorithm>
#include <utility>

namespace camera
{
namespace
{

// Time of day at which this process's cameras were switched on.
std::chrono::sys_time<std::chrono::microseconds> timeOfDay(CameraTime time)
{
    using std::chrono::microseconds;
    static const auto kPowerOn = std::chrono::floor<microseconds>(std::chrono::system_clock::now());
    return kPowerOn + std::chrono::floor<microseconds>(time);
}

} // namespace

std::uint64_t headerTime(CameraTime time, bool irigB)
{
    constexpr std::uint64_t kMask = (std::uint64_t{1} << 56) - 1;
    const auto sincePowerOn = std::chrono::floor<std::chrono::microseconds>(time);
    return irigB ? irigTime(timeOfDay(time))
                 : static_cast<std::uint64_t>(sincePowerOn.count()) & kMask;
}

void Recorder::start(RecordSettings settings, CameraTime now)
{
    mSettings = std::move(settings);
    mSequences.assign(std::clamp(mSettings.sequences, 1U, kMaxSequences), {});
    mClock = FrameClock(now, mSettings.frameRate);
    mCurrent = 0;
    mExposed = 0;
    mNextNumber = 0;
    mNewest = {};
    mTrailerLeft.reset();
    mBurstLeft = 0;
    mTriggered = false;
    mMarkTrigger = false;
    mRecording = true;
    mHasRecorded = true;
    advance(now);
}

void Recorder::stop(CameraTime now)
{
    advance(now);
    if (mRecording) {
        markLast();
        mTrailerLeft.reset();
        mRecording = false;
    }
}

void Recorder::advance(CameraTime now)
{
    while (mRecording && nextExposure() <= now) {
        take();
    }
}

void Recorder::trigger(CameraTime now)
{
    advance(now);
    if (!mRecording) {
        return;
    }
    if (mSettings.continuous) {
        beginTrailer();
    } else if (mSettings.waitForTrigger) {
        mMarkTrigger = true;
        mTriggered = true;
        mBurstLeft = mSettings.burst;
    }
}

void Recorder::beginTrailer()
{
    if (mTrailerLeft) {
        return; // a trigger during the trailer does nothing
    }
    mMarkTrigger = true;
    mTrailerLeft = mSettings.trailer;
    if (mTrailerLeft == 0U) {
        finishSequence();
    }
}

void Recorder::setTriggerActive(CameraTime now, bool active)
{
    advance(now);
    mTriggerActive = active;
}

void Recorder::setFrameRate(CameraTime now, std::uint32_t rate)
{
    advance(now);
    mSettings.frameRate = rate;
    mClock.setRate(now, rate);
}

std::uint32_t Recorder::frames(std::uint32_t sequence) const
{
    return sequence < mSequences.size()
               ? static_cast<std::uint32_t>(mSequences[sequence].frames.size())
               : 0;
}

std::uint32_t Recorder::allFrames() const
{
    std::uint32_t all = 0;
    for (const Sequence& sequence : mSequences) {
        all += static_cast<std::uint32_t>(sequence.frames.size());
    }
    return all;
}

std::optional<FrameStamp> Recorder::frame(std::uint32_t sequence, std::uint32_t index) const
{
    if (index >= frames(sequence)) {
        return std::nullopt;
    }
    const Sequence& ring = mSequences[sequence];
    const Stored& stored = ring.frames[(ring.oldest + index) % ring.frames.size()];
    return FrameStamp{.sequence = sequence,
                      .number = stored.number,
                      .time = stored.time,
                      .flags = stored.flags,
                      .last = stored.last};
}

std::uint32_t Recorder::stopPointer(std::uint32_t sequence) const
{
    return sequence < mSequences.size() ? mSequences[sequence].next : 0;
}

void Recorder::take()
{
    const bool kept = isTaking();
    mNewest = {.sequence = mCurrent,
               .number = mNextNumber,
               .time = headerTime(mClock.timeOf(mExposed), mSettings.irigB),
               .flags = static_cast<std::uint8_t>(mSettings.flags | kFlagRecording)};
    ++mExposed;
    if (!kept) {
        return;
    }
    if (std::exchange(mMarkTrigger, false)) {
        mNewest.flags |= kFlagTrigger;
    }
    if (mTrailerLeft) {
        mNewest.flags |= kFlagTrailer;
    }
    keep(mNewest);
    lookForTrigger();
    if (mTrailerLeft == 0U || isFull()) {
        finishSequence();
    }
}

bool Recorder::isTaking() const
{
    if (mSettings.continuous) {
        return true;
    }
    return (!mSettings.waitForTrigger || mTriggered) &&
           (!mSettings.whileTriggerActive || mTriggerActive);
}

bool Recorder::isFull() const
{
    return !mSettings.continuous && frames(mCurrent) >= mSettings.framesPerSequence;
}

void Recorder::keep(const FrameStamp& stamp)
{
    Sequence& ring = mSequences[mCurrent];
    const Stored frame{.number = stamp.number, .flags = stamp.flags, .time = stamp.time};
    const std::uint32_t places = std::max(mSettings.framesPerSequence, 1U);
    const std::uint32_t place = ring.next % places;
    if (place == ring.frames.size()) {
        ring.frames.push_back(frame);
    } else {
        ring.frames[place] = frame;
        ring.oldest = (place + 1) % places;
    }
    ring.next = place + 1;
    ++mNextNumber;
}

void Recorder::lookForTrigger()
{
    if (mTrailerLeft) {
        --*mTrailerLeft;
    } else if (mSettings.continuous && mSettings.contentTrigger &&
               mSettings.contentTrigger(mNewest)) {
        mMarkTrigger = true;
        mTrailerLeft = mSettings.trailer;
    } else if (mTriggered && mBurstLeft != 0 && --mBurstLeft == 0) {
        mTriggered = false;
    }
}

void Recorder::finishSequence()
{
    markLast();
    mTrailerLeft.reset();
    mMarkTrigger = false;
    if (!mSettings.continuous || mCurrent + 1 >= mSequences.size()) {
        mRecording = false;
        return;
    }
    ++mCurrent;
    mNextNumber = 0;
}

void Recorder::markLast()
{
    Sequence& ring = mSequences[mCurrent];
    if (ring.next != 0) {
        ring.frames[ring.next - 1].last = true;
    }
}

} // namespace camera
