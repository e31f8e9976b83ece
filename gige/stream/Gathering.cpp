#include "Gathering.h"

#include <algorithm>

namespace gige::stream
{

namespace
{

/// What is left of the measured sums with each receive.
constexpr double kFade = 0.875;
/// Of the time until the block's last packet: rates are not that steady.
constexpr double kShareOfRest = 0.9;
/// Of what the system keeps: the pause may turn out longer, and the rate higher.
constexpr double kShareOfCapacity = 0.25;

/// Blocks after which a stream counts as steady.
constexpr int kSteadyBlocks = 2;
/// Packets that come so many times faster than before end that.
constexpr double kHurry = 1.5;
/// A rate shows only in receives that are so far apart.
constexpr double kShortestMeasured = 200e-6;

double inSeconds(std::chrono::duration<double> time)
{
    return time.count();
}

} // namespace

Gathering::Gathering(std::size_t capacity)
    : mMostBytes(std::min(static_cast<double>(kMostGathered),
                          static_cast<double>(capacity) * kShareOfCapacity))
{
}

std::chrono::microseconds Gathering::pauseAfter(const Taken& taken, std::uint32_t toCome, Time now)
{
    measure(taken, now);
    if (mWithinBlock && toCome == 0) {
        mSteadyBlocks = std::min(mSteadyBlocks + 1, kSteadyBlocks);
    }
    mWithinBlock = toCome > 0;
    return choosePause(toCome);
}

/// Between blocks the camera may pause, which says nothing about the rate within them.
void Gathering::measure(const Taken& taken, Time now)
{
    if (mWithinBlock) {
        const double seconds = inSeconds(now - mLastTaken);
        if (isHurried(taken, seconds)) {
            mSteadyBlocks = -1; // the block that ends next is none
        }
        mSeconds = mSeconds * kFade + seconds;
        mPackets = mPackets * kFade + static_cast<double>(taken.packets);
        mBytes = mBytes * kFade + static_cast<double>(taken.bytes);
    }
    mLastTaken = now;
}

bool Gathering::isHurried(const Taken& taken, double seconds) const
{
    return seconds >= kShortestMeasured && mSeconds > 0 &&
           static_cast<double>(taken.packets) / seconds > kHurry * mPackets / mSeconds;
}

std::chrono::microseconds Gathering::longestPause() const
{
    return mSteadyBlocks == kSteadyBlocks ? mLimits.steady : mLimits.usual;
}

std::chrono::microseconds Gathering::choosePause(std::uint32_t toCome) const
{
    if (toCome == 0 || mPackets <= 0 || mSeconds <= 0) {
        return {};
    }
    const double packetRate = mPackets / mSeconds;
    // Not up to the last packet: the block is complete with it, and the host waits.
    const double rest = (toCome - 1) / packetRate;
    const double seconds =
        std::min({inSeconds(longestPause()), rest * kShareOfRest, mMostBytes * mSeconds / mBytes});
    const bool pays =
        seconds >= inSeconds(kShortestGathering) && seconds * packetRate >= kFewestGathered;
    return pays ? std::chrono::duration_cast<std::chrono::microseconds>(
                      std::chrono::duration<double>(seconds))
                : std::chrono::microseconds(0);
}

} // namespace gige::stream
