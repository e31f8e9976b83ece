#ifndef TELVO_GIGE_STREAM_SHAREDSTATISTICS_H
#define TELVO_GIGE_STREAM_SHAREDSTATISTICS_H

#include "StreamStatistics.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace gige::stream
{

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
