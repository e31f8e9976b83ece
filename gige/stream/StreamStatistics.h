#ifndef TELVO_GIGE_STREAM_STREAMSTATISTICS_H
#define TELVO_GIGE_STREAM_STREAMSTATISTICS_H

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace gige::stream
{

/// Counters of one stream since it was opened.
struct StreamStatistics {
    std::uint64_t blocksReceived = 0;    // complete
    std::uint64_t blocksFailed = 0;      // delivered incomplete, or longer than the buffer
    std::uint64_t blocksDropped = 0;     // no buffer was queued when they began
    std::uint64_t packetsReceived = 0;   // placed in a block
    std::uint64_t packetsMissing = 0;    // of failed blocks, as far as their length is known
    std::uint64_t packetsResent = 0;     // came after they were asked for again
    std::uint64_t packetsDuplicated = 0; // were there already
    std::uint64_t packetsIgnored = 0;    // late, malformed, of a dropped block or of another sender
    std::uint64_t bytesReceived = 0;     // image data placed
    bool operator==(const StreamStatistics&) const = default;
};

/// One thread's counters for others to read: publish() counting thread, read() any thread.
class SharedStatistics
{
  public:
    void publish(const StreamStatistics& statistics)
    {
        for (std::size_t i = 0; i < kCounters.size(); ++i) {
            mValues[i].store(statistics.*kCounters[i], std::memory_order_relaxed);
        }
    }

    StreamStatistics read() const
    {
        StreamStatistics statistics;
        for (std::size_t i = 0; i < kCounters.size(); ++i) {
            statistics.*kCounters[i] = mValues[i].load(std::memory_order_relaxed);
        }
        return statistics;
    }

  private:
    static constexpr std::array kCounters{
        &StreamStatistics::blocksReceived,    &StreamStatistics::blocksFailed,
        &StreamStatistics::blocksDropped,     &StreamStatistics::packetsReceived,
        &StreamStatistics::packetsMissing,    &StreamStatistics::packetsResent,
        &StreamStatistics::packetsDuplicated, &StreamStatistics::packetsIgnored,
        &StreamStatistics::bytesReceived,
    };
    static_assert(sizeof(StreamStatistics) == kCounters.size() * sizeof(std::uint64_t));

    std::array<std::atomic<std::uint64_t>, kCounters.size()> mValues{};
};

} // namespace gige::stream

#endif
