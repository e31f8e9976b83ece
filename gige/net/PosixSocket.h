/// POSIX only: what the sockets' sources share.
#ifndef TELVO_GIGE_NET_POSIXSOCKET_H
#define TELVO_GIGE_NET_POSIXSOCKET_H

#include "Ipv4Address.h"
#include "UdpSocket.h"

#include <arpa/inet.h>
#include <netinet/in.h>

namespace gige::net
{

inline sockaddr_in toNative(const Endpoint& endpoint)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(endpoint.address.value);
    address.sin_port = htons(endpoint.port);
    return address;
}

inline Endpoint fromNative(const sockaddr_in& address)
{
    return {.address = {ntohl(address.sin_addr.s_addr)}, .port = ntohs(address.sin_port)};
}

/// Waits until one of the two sockets has something (ReceiveStatus::Data). The waker comes first.
/// @param second  kInvalidSocket: none
ReceiveStatus waitReadable(NativeSocket first, NativeSocket second, Timeout timeout,
                           const Waker* waker);

} // namespace gige::net

#endif
