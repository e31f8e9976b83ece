#ifndef TELVO_GIGE_NET_RINGUSE_H
#define TELVO_GIGE_NET_RINGUSE_H

#include <cstdint>

namespace gige::net
{

/// Whether datagrams are taken out of a ring of packets that the kernel shares with this process.
/// That needs the privilege to open packet sockets; without it the socket serves alone.
enum class RingUse : std::uint8_t {
    Never,
    WhenItPays, // at a steady stream of single packets
    AtOnce,     // as soon as a packet came
};

} // namespace gige::net

#endif
