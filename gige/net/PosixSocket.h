/// POSIX only: endpoints as the system's socket addresses.
#ifndef TELVO_GIGE_NET_POSIXADDRESS_H
#define TELVO_GIGE_NET_POSIXADDRESS_H

#include "Ipv4Address.h"

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

} // namespace gige::net

#endif
