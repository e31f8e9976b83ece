#include "FrameCounterCheck.h"

#include <algorithm>

namespace
{

constexpr std::size_t kCounterEnd = 6; // the counter is bytes 4 and 5 of a frame
constexpr std::uint16_t kLastCounter = 65'535;

bool isGap(std::uint16_t previous, std::uint16_t counter)
{
    return counter != previous + 1 && previous != kLastCounter && counter != 0;
}

std::size_t countersWithin(std::size_t blockSize, std::size_t stride)
{
    if (blockSize < kCounterEnd || stride == 0) {
        return 0;
    }
    return (blockSize - kCounterEnd) / stride + 1;
}

} // namespace

BlockCounters::BlockCounters(std::span<const std::uint8_t> block, std::size_t frameSize,
                             std::size_t frameCount)
    : mBlock(block),
      mStride(frameSize / 2 * 2),
      mCount(std::min(frameCount, countersWithin(block.size(), mStride)))
{
}

std::uint16_t BlockCounters::operator[](std::size_t frame) const
{
    const std::uint8_t* const counter = &mBlock[frame * mStride + 4];
    return static_cast<std::uint16_t>(counter[0] | counter[1] << 8);
}

std::vector<FrameCounterCheck::Gap> FrameCounterCheck::check(const BlockCounters& counters)
{
    std::vector<Gap> gaps;
    for (std::size_t frame = 0; frame < counters.size(); ++frame) {
        const std::uint16_t counter = counters[frame];
        if (mLast && isGap(*mLast, counter)) {
            gaps.push_back({*mLast, counter});
        }
        mLast = counter;
    }
    return gaps;
}
