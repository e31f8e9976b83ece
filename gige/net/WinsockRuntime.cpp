#include "WinsockRuntime.h"

#include <algorithm>
#include <limits>

namespace gige::net
{

void startWinsock()
{
    // Never unloaded: sockets live as long as the process at most.
    static const int kResult = [] {
        WSADATA data{};
        return WSAStartup(MAKEWORD(2, 2), &data);
    }();
    (void)kResult;
}

bool setNonBlocking(SOCKET socket)
{
    u_long on = 1;
    return ioctlsocket(socket, static_cast<long>(FIONBIO), &on) == 0;
}

int waitLimit(std::optional<std::chrono::microseconds> timeout)
{
    if (!timeout) {
        return -1;
    }
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(*timeout).count();
    return static_cast<int>(
        std::clamp<long long>(milliseconds, 0, std::numeric_limits<int>::max()));
}

sockaddr_in toNative(const Endpoint& endpoint)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(endpoint.address.value);
    address.sin_port = htons(endpoint.port);
    return address;
}

Endpoint fromNative(const sockaddr_in& address)
{
    return {.address = {ntohl(address.sin_addr.s_addr)}, .port = ntohs(address.sin_port)};
}

} // namespace gige::net
