#include "RingTrial.h"

#include <algorithm>

namespace gige::net
{

bool RingTrial::noteReceived(std::size_t single, std::size_t joined, std::size_t longest,
                             Clock::time_point now)
{
    if (mUse == RingUse::Never || now < mNotBefore) {
        return false;
    }
    if (joined > 0 || mSingle == 0 || now - mWindow > kTrialWindow) {
        mSingle = 0;
        mLongest = 0;
        mWindow = now;
    }
    mSingle += joined > 0 ? 0 : single;
    mLongest = std::max(mLongest, longest);
    return mSingle >= (mUse == RingUse::AtOnce ? 1 : kWorthwhile);
}

void RingTrial::noteBegun(Clock::time_point now)
{
    mFullPacket = now;
    mAstray = 0;
}

void RingTrial::noteRing(std::size_t longest, Clock::time_point now)
{
    if (longest >= mLongest) {
        mFullPacket = now;
    }
}

/// Without full packets in it the ring sees too little of the stream: they have become longer than
/// its frames, come in fragments, joined, or by another interface. Or the camera has paused.
bool RingTrial::isUseless(Clock::time_point now) const
{
    return mAstray > kMostAstray || now - mFullPacket > kRingSilence;
}

void RingTrial::noteEnded(Clock::time_point now)
{
    mSingle = 0;
    if (mAstray > kMostAstray) {
        noteFailed(now);
    }
}

} // namespace gige::net
