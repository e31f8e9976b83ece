#include "Gathering.h"

#include <algorithm>

namespace gige::stream
{

namespace
{

/// What is left of the measured sums with each receive.
constexpr double kFade = 0.875;
/// Of the time until the block's last packet: rates are not that steady.
constexpr double kShareOfRest = 0.75;
/// Of what the system keeps: the pause may turn out longer, and the rate higher.
constexpr double kShareOfCapacity = 0.25;

constexpr double kNone = 0;

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
    mWithinBlock = toCome > 0;
    if (!mWithinBlock || mPackets <= kNone || mSeconds <= kNone) {
        return {};
    }
    const double packetRate = mPackets / mSeconds;
    const double byteRate = mBytes / mSeconds;
    const double seconds =
        std::min({inSeconds(mLongest), toCome * kShareOfRest / packetRate, mMostBytes / byteRate});
    const bool pays =
        seconds >= inSeconds(kShortestGathering) && seconds * packetRate >= kFewestGathered;
    return pays ? std::chrono::duration_cast<std::chrono::microseconds>(
                      std::chrono::duration<double>(seconds))
                : std::chrono::microseconds(0);
}

/// Between blocks the camera may pause, which says nothing about the rate within them.
void Gathering::measure(const Taken& taken, Time now)
{
    if (mWithinBlock) {
        mSeconds = mSeconds * kFade + inSeconds(now - mLastTaken);
        mPackets = mPackets * kFade + static_cast<double>(taken.packets);
        mBytes = mBytes * kFade + static_cast<double>(taken.bytes);
    }
    mLastTaken = now;
}

} // namespace gige::stream
