#include "FrameCounter.h"

#include "FrameHeader.h"

namespace telvo
{

std::uint16_t frameNumber(std::span<const std::uint8_t> frame)
{
    return decodeFrameHeader(frame).counter;
}

void FrameCounter::add(std::uint16_t number)
{
    if (mLast && number != static_cast<std::uint16_t>(*mLast + mStep)) {
        const bool isRepeat = number == *mLast;
        const std::uint32_t missing =
            isRepeat ? 0U : static_cast<std::uint16_t>(number - *mLast - mStep);
        mRepeats = mRepeats || isRepeat;
        mMissing += missing;
        ++mGapCount;
        if (mGaps.size() < kMostGaps) {
            mGaps.push_back({mReceived, *mLast, number, missing});
        }
    }
    mLast = number;
    ++mReceived;
}

} // namespace telvo
