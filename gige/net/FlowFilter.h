/// Linux only: which packets of a stream the packet ring takes, and the socket therefore does not.
#ifndef TELVO_GIGE_NET_FLOWFILTER_H
#define TELVO_GIGE_NET_FLOWFILTER_H

#include "Ipv4Address.h"
#include "SocketHandle.h"

#include <cstddef>
#include <cstdint>

namespace gige::net
{

/// Datagrams from one address, whatever its port, to one endpoint here.
struct Flow {
    Ipv4Address source{};
    Endpoint destination{};
};

enum class FlowFilter : std::uint8_t {
    OnlyFlow,       // for the ring's packet socket
    AllButThatFlow, // for the UDP socket, the exact opposite
};

/// Attaches the filter. The flow's packets are those with an IP datagram of at most `longest` bytes
/// that is whole and without options. @return false: the system refuses
bool attachFilter(NativeSocket socket, FlowFilter kind, const Flow& flow, std::size_t longest);
void detachFilter(NativeSocket socket);

} // namespace gige::net

#endif
