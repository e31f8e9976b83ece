#ifndef TELVO_CAMERA_PACER_H
#define TELVO_CAMERA_PACER_H

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace camera
{

/**
 * Spreads packets over time: at least `delay` between two packets, at most `bytesPerSecond`. Works
 * in batches, since no sleep is short enough for a single packet. Time lost is made up only within
 * kMostCredit, so a stall is not followed by a flood.
 */
class Pacer
{
  public:
    using Clock = std::chrono::steady_clock;

    /** @param delay  nanoseconds between packets; @param bytesPerSecond  0: no ceiling */
    void set(std::uint32_t delay, std::uint64_t bytesPerSecond);
    /** True when packets need not wait at all. */
    [[nodiscard]] bool isFree() const { return mDelay.count() == 0 && mBytesPerSecond == 0; }
    /** When the next batch may go; books it. */
    [[nodiscard]] Clock::time_point book(Clock::time_point now, std::size_t packets,
                                         std::size_t bytes);
    /** How many packets of this size make one batch: about kBatchTime of the stream. */
    [[nodiscard]] std::size_t batchPackets(std::size_t packetBytes) const;

  private:
    static constexpr std::chrono::microseconds kMostCredit{300};
    static constexpr std::chrono::microseconds kBatchTime{150};
    static constexpr std::size_t kMostPackets = 1024;

    [[nodiscard]] std::chrono::nanoseconds duration(std::size_t packets, std::size_t bytes) const;

    std::chrono::nanoseconds mDelay{0};
    std::uint64_t mBytesPerSecond = 0;
    Clock::time_point mNext;
};

} // namespace camera

#endif
