#ifndef TELVO_GIGE_NET_DATAGRAMRUN_H
#define TELVO_GIGE_NET_DATAGRAMRUN_H

#include "Ipv4Address.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace gige::net
{

/// Datagrams of one source that lie behind each other: all `segmentSize` bytes long but the last,
/// which may be shorter.
struct DatagramRun {
    std::span<const std::uint8_t> bytes{};
    std::size_t segmentSize = 0; // bytes; not 0 unless the run is one empty datagram
    Endpoint source{};

    bool isJoined() const { return bytes.size() > segmentSize; }
};

/// Has the processor fetch a run that another one has written, before it is read: the walk through
/// short packets is too jumpy for it to see by itself what comes next. Of a longer one the rest
/// follows by itself.
inline void prefetch(const DatagramRun& run)
{
    constexpr std::size_t kCacheLine = 64;
    constexpr std::size_t kAtOnce = 24 * kCacheLine; // as much as an Ethernet packet
    for (std::size_t at = 0; at < std::min(run.bytes.size(), kAtOnce); at += kCacheLine) {
        __builtin_prefetch(run.bytes.data() + at);
    }
}

/// Remembers a datagram by its source, its length, and how it begins and ends: headers differ from
/// packet to packet.
class DatagramMark
{
  public:
    explicit DatagramMark(const DatagramRun& datagram)
        : mSource(datagram.source), mSize(datagram.bytes.size())
    {
        const std::size_t kept = std::min(mSize, kKept);
        std::ranges::copy(datagram.bytes.first(kept), mBegin.begin());
        std::ranges::copy(datagram.bytes.last(kept), mEnd.begin());
    }

    bool operator==(const DatagramMark&) const = default;

  private:
    static constexpr std::size_t kKept = 32; // bytes

    Endpoint mSource;
    std::size_t mSize;
    std::array<std::uint8_t, kKept> mBegin{};
    std::array<std::uint8_t, kKept> mEnd{};
};

} // namespace gige::net

#endif
