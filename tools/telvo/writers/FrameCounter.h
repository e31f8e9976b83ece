#ifndef TELVO_TOOLS_TELVO_WRITERS_FRAMECOUNTER_H
#define TELVO_TOOLS_TELVO_WRITERS_FRAMECOUNTER_H

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace telvo
{

/// The camera's own number of a frame: bytes 4 and 5 of the frame, little-endian; wraps after
/// 65535. The frame has at least the 16 bytes of its header.
std::uint16_t frameNumber(std::span<const std::uint8_t> frame);

/// A place in a series where the camera's numbers do not go on as they should.
struct FrameGap {
    std::uint64_t behind;  // frames of the series before it
    std::uint16_t from;    // the camera's number before it
    std::uint16_t to;      // and behind it
    std::uint32_t missing; // frames; 0: a number came twice
    bool operator==(const FrameGap&) const = default;
};

/// Counts a series' frames and, by the gaps in their numbers, those that are missing from it.
/// A gap of 65536 frames or more cannot be told from a smaller one.
class FrameCounter
{
  public:
    /// @param step  from one number to the next: more than 1 where only every so manieth is taken
    explicit FrameCounter(std::uint32_t step = 1) : mStep(static_cast<std::uint16_t>(step)) {}

    /// The series' next frame.
    void add(std::uint16_t number);

    std::uint64_t received() const { return mReceived; }
    std::uint64_t missing() const { return mMissing; }
    /// Whether a number came twice in a row: then the series is not what the camera took.
    bool hasRepeats() const { return mRepeats; }
    bool isContinuous() const { return mGapCount == 0; }
    std::uint64_t gapCount() const { return mGapCount; }
    /// The first kMostGaps gaps.
    const std::vector<FrameGap>& gaps() const { return mGaps; }

    static constexpr std::size_t kMostGaps = 10'000;

  private:
    std::uint16_t mStep;
    std::optional<std::uint16_t> mLast;
    std::uint64_t mReceived = 0;
    std::uint64_t mMissing = 0;
    std::uint64_t mGapCount = 0;
    bool mRepeats = false;
    std::vector<FrameGap> mGaps;
};

} // namespace telvo

#endif
