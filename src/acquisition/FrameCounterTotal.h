#ifndef TELVO_SRC_ACQUISITION_FRAMECOUNTERTOTAL_H
#define TELVO_SRC_ACQUISITION_FRAMECOUNTERTOTAL_H

#include <cstdint>

/// Counts the frames of a recording from the 16-bit counters of those that pass as preview.
class FrameCounterTotal
{
  public:
    /// @param maxFrames  that a sequence holds; up to 65535 the counter cannot wrap
    explicit FrameCounterTotal(std::int32_t maxFrames = 0) : mMaxFrames(maxFrames) {}

    /// @return frames recorded up to the one with this counter, modulo 2^32
    std::int32_t add(std::uint16_t counter)
    {
        if (counter > kNearWrap && mMaxFrames > kLargestCounter) {
            mHighMark = counter;
        }
        if (counter < mHighMark) {
            ++mWraps;
            mHighMark = 0;
        }
        // Not 65536 per wrap: hosts know the number so.
        return static_cast<std::int32_t>(mWraps * kLargestCounter + counter);
    }

  private:
    static constexpr std::uint16_t kNearWrap = 50'000;
    static constexpr std::uint32_t kLargestCounter = 65'535;

    std::int64_t mMaxFrames;
    std::uint16_t mHighMark = 0;
    std::uint32_t mWraps = 0;
};

#endif
