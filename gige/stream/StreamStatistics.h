#ifndef TELVO_GIGE_STREAM_STREAMSTATISTICS_H
#define TELVO_GIGE_STREAM_STREAMSTATISTICS_H

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

} // namespace gige::stream

#endif
