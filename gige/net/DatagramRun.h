#ifndef TELVO_GIGE_NET_DATAGRAMRUN_H
#define TELVO_GIGE_NET_DATAGRAMRUN_H

#include "Ipv4Address.h"

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

} // namespace gige::net

#endif
