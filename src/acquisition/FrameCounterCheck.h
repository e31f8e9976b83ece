#ifndef TELVO_SRC_ACQUISITION_FRAMECOUNTERCHECK_H
#define TELVO_SRC_ACQUISITION_FRAMECOUNTERCHECK_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// The frame counters of a block, read where they lie.
class BlockCounters
{
  public:
    /**
     * @param block       frames one behind the other
     * @param frameSize   bytes; an odd frame size makes the step one byte short, which hosts know
     *                    from the reported gaps
     * @param frameCount  what lies beyond the block's end is left out
     */
    BlockCounters(std::span<const std::uint8_t> block, std::size_t frameSize,
                  std::size_t frameCount);

    std::size_t size() const { return mCount; }
    std::uint16_t operator[](std::size_t frame) const;

  private:
    std::span<const std::uint8_t> mBlock;
    std::size_t mStride;
    std::size_t mCount;
};

/// Looks for gaps in the frame counters of a recording that is read back block by block.
class FrameCounterCheck
{
  public:
    struct Gap {
        std::uint16_t previous;
        std::uint16_t counter;
        bool operator==(const Gap&) const = default;
    };

    /// One pass over the block; frame 0 of the first one has no predecessor. A counter of 0 is
    /// always accepted, and whatever follows 65535.
    /// @return the gaps, in order
    std::vector<Gap> check(const BlockCounters& counters);

  private:
    std::optional<std::uint16_t> mLast;
};

#endif
