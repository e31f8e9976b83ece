#ifndef TELVO_TOOLS_TELVO_WRITERS_FRAMECOUNTER_H
#define TELVO_TOOLS_TELVO_WRITERS_FRAMECOUNTER_H

#include <cstdint>
#include <optional>
#include <span>

namespace telvo
{

/// The camera's own number of a frame: bytes 4 and 5 of the frame, little-endian; wraps after
/// 65535. The frame has at least the 16 bytes of its header.
std::uint16_t frameNumber(std::span<const std::uint8_t> frame);

/// Counts a series' frames and, by the gaps in their numbers, those that are missing from it.
/// A gap of 65536 frames or more cannot be told from a smaller one.
class FrameCounter
{
  public:
    /// The series' next frame.
    void add(std::uint16_t number);

    std::uint64_t received() const { return mReceived; }
    std::uint64_t missing() const { return mMissing; }
    /// Whether a number came twice in a row: then the series is not what the camera took.
    bool hasRepeats() const { return mRepeats; }

  private:
    std::optional<std::uint16_t> mLast;
    std::uint64_t mReceived = 0;
    std::uint64_t mMissing = 0;
    bool mRepeats = false;
};

} // namespace telvo

#endif
