#ifndef TELVO_GIGE_STREAM_STREAMREASONS_H
#define TELVO_GIGE_STREAM_STREAMREASONS_H

#include "Reasons.h"
#include "StreamStatistics.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace gige::stream
{

/// Who could have got lost packets again.
enum class Resends : std::uint8_t { Off, NotByDevice, On };

/// What a stream was like for a while.
struct StreamPeriod {
    StreamStatistics counted{};
    std::uint64_t blocksTooLong = 0; // of the failed ones
    log::LostByTenth lost{};
    Resends resends = Resends::On;
    double load = 0; // the receiving thread's part of a core
    bool isRingInUse = false;
    std::size_t packetSize = 0; // bytes of the IP datagram; 0: not known
};

/// The reasons that a period gives; none if all came. Needs no memory.
class StreamReasons
{
  public:
    explicit StreamReasons(const StreamPeriod& period);

    std::span<const log::Reason> all() const { return std::span(mReasons).first(mCount); }

  private:
    void add(const log::Reason& reason) { mReasons.at(mCount++) = reason; }

    std::array<log::Reason, 4> mReasons{}; // as many kinds as there are
    std::size_t mCount = 0;
};

} // namespace gige::stream

#endif
