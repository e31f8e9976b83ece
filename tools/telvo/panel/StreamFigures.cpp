#include "StreamFigures.h"

#include <algorithm>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kSummaryInterval{1000};

} // namespace

void StreamFigures::lookedInVain(Clock::time_point now)
{
    look(now);
}

void StreamFigures::came(std::uint16_t number, std::size_t bytes, Clock::time_point now)
{
    if (!mNumber) {
        mBegin = now;
    } else {
        look(now);
        const auto steps = static_cast<std::uint16_t>(number - *mNumber);
        // Looked for at least twice in the time of each, all were there to be seen.
        if (steps > 1 && 2 * steps * mLongestPause < now - mLastPicture) {
            mLost += steps - 1U;
        }
        mSent += steps;
        mBytes += steps * bytes;
    }
    mNumber = number;
    mLastPicture = now;
    mLastLook = now;
    mLongestPause = {};
    summarise(now);
}

void StreamFigures::look(Clock::time_point now)
{
    mLongestPause = std::max(mLongestPause, now - mLastLook);
    mLastLook = now;
}

void StreamFigures::summarise(Clock::time_point now)
{
    const std::chrono::duration<double> time = now - mBegin;
    if (time < kSummaryInterval) {
        return;
    }
    mRate = static_cast<double>(mSent) / time.count();
    mMegabitsPerSecond = static_cast<double>(mBytes) * 8e-6 / time.count();
    mBegin = now;
    mSent = 0;
    mBytes = 0;
}

} // namespace telvo
