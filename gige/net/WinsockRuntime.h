/// Windows only: the socket headers in the order they need, and what the sources here share.
#ifndef TELVO_GIGE_NET_WINSOCKRUNTIME_H
#define TELVO_GIGE_NET_WINSOCKRUNTIME_H

#include "Ipv4Address.h"

#include <chrono>
#include <optional>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <winsock2.h>
// after winsock2.h
#include <ws2tcpip.h>
// after ws2tcpip.h
#include <mswsock.h>
#include <windows.h>

namespace gige::net
{

/// Loads Winsock at the first call; to be called before any socket call.
void startWinsock();

/// Calls on the socket fail with WSAEWOULDBLOCK instead of waiting. @return false on failure
bool setNonBlocking(SOCKET socket);

/// In milliseconds, rounded up so that no wait ends before its time. -1, which is INFINITE: none.
int waitLimit(std::optional<std::chrono::microseconds> timeout);

sockaddr_in toNative(const Endpoint& endpoint);
Endpoint fromNative(const sockaddr_in& address);

} // namespace gige::net

#endif
