#include "FrameCounter.h"

namespace telvo
{

std::uint16_t frameNumber(std::span<const std::uint8_t> frame)
{
    return static_cast<std::uint16_t>(frame[4] | frame[5] << 8);
}

void FrameCounter::add(std::uint16_t number)
{
    if (mLast) {
        const auto step = static_cast<std::uint16_t>(number - *mLast);
        if (step == 0) {
            mRepeats = true;
        } else {
            mMissing += step - 1U;
        }
    }
    mLast = number;
    ++mReceived;
}

} // namespace telvo
