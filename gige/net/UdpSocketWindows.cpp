#include "WinsockRuntime.h"

#include "UdpSocket.h"

#include <algorithm>

namespace gige::net
{

namespace
{

// Named here since not every SDK header has them.
constexpr DWORD kSioUdpConnReset = 0x9800000C; // SIO_UDP_CONNRESET
constexpr int kIpDontFragment = 14;            // IP_DONTFRAGMENT

std::error_code lastError()
{
    const int code = WSAGetLastError();
    switch (code) { // so that callers compare with the portable conditions
    case WSAEADDRINUSE:
        return std::make_error_code(std::errc::address_in_use);
    case WSAEADDRNOTAVAIL:
        return std::make_error_code(std::errc::address_not_available);
    case WSAEACCES:
        return std::make_error_code(std::errc::permission_denied);
    default:
        return {code, std::system_category()};
    }
}

bool setOption(NativeSocket socket, int level, int name, DWORD value)
{
    return setsockopt(socket, level, name, reinterpret_cast<const char*>(&value), sizeof value) ==
           0;
}

bool applyOptions(NativeSocket socket, const UdpSocketOptions& options)
{
    return setNonBlocking(socket) &&
           (!options.reuseAddress || setOption(socket, SOL_SOCKET, SO_REUSEADDR, 1)) &&
           (!options.broadcast || setOption(socket, SOL_SOCKET, SO_BROADCAST, 1)) &&
           (!options.dontFragment || setOption(socket, IPPROTO_IP, kIpDontFragment, 1));
}

/// Else an unreachable port of the other side fails a later receive.
void ignorePortUnreachable(NativeSocket socket)
{
    BOOL report = FALSE;
    DWORD unused = 0;
    WSAIoctl(socket, kSioUdpConnReset, &report, sizeof report, nullptr, 0, &unused, nullptr,
             nullptr);
}

std::size_t setBuffer(NativeSocket socket, int option, std::size_t bytes)
{
    setOption(socket, SOL_SOCKET, option, static_cast<DWORD>(bytes));
    int obtained = 0;
    int size = sizeof obtained;
    getsockopt(socket, SOL_SOCKET, option, reinterpret_cast<char*>(&obtained), &size);
    return static_cast<std::size_t>(obtained);
}

void waitWritable(NativeSocket socket)
{
    fd_set sockets;
    FD_ZERO(&sockets);
    FD_SET(socket, &sockets);
    select(0, nullptr, &sockets, nullptr, nullptr);
}

} // namespace

void SocketHandle::close(NativeSocket socket)
{
    closesocket(socket);
}

std::optional<UdpSocket> UdpSocket::open(const Endpoint& local, const UdpSocketOptions& options,
                                         std::error_code& error)
{
    startWinsock();
    SocketHandle socket(::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP));
    const sockaddr_in address = toNative(local);
    if (!socket || !applyOptions(socket.get(), options) ||
        bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        error = lastError();
        return std::nullopt;
    }
    ignorePortUnreachable(socket.get());
    return UdpSocket(std::move(socket));
}

Endpoint UdpSocket::localEndpoint() const
{
    sockaddr_in address{};
    int size = sizeof address;
    getsockname(mHandle.get(), reinterpret_cast<sockaddr*>(&address), &size);
    return fromNative(address);
}

bool UdpSocket::setDontFragment(bool on)
{
    return setOption(mHandle.get(), IPPROTO_IP, kIpDontFragment, on ? 1 : 0);
}

std::size_t UdpSocket::setReceiveBuffer(std::size_t bytes)
{
    return setBuffer(mHandle.get(), SO_RCVBUF, bytes);
}

std::size_t UdpSocket::setSendBuffer(std::size_t bytes)
{
    return setBuffer(mHandle.get(), SO_SNDBUF, bytes);
}

bool UdpSocket::send(std::span<const std::uint8_t> datagram, const Endpoint& destination)
{
    const sockaddr_in address = toNative(destination);
    while (sendto(mHandle.get(), reinterpret_cast<const char*>(datagram.data()),
                  static_cast<int>(datagram.size()), 0, reinterpret_cast<const sockaddr*>(&address),
                  sizeof address) < 0) {
        if (WSAGetLastError() != WSAEWOULDBLOCK) {
            return false;
        }
        waitWritable(mHandle.get());
    }
    return true;
}

Received UdpSocket::receive(std::span<std::uint8_t> buffer, Timeout timeout, Waker* waker)
{
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + timeout.value_or(std::chrono::microseconds(0));
    for (;;) {
        const ReceiveStatus ready = waitReadable(mHandle.get(), timeout, waker);
        if (ready != ReceiveStatus::Data) {
            return {.status = ready};
        }
        sockaddr_in source{};
        int size = sizeof source;
        const int got = recvfrom(mHandle.get(), reinterpret_cast<char*>(buffer.data()),
                                 static_cast<int>(buffer.size()), 0,
                                 reinterpret_cast<sockaddr*>(&source), &size);
        const int error = got < 0 ? WSAGetLastError() : 0;
        if (got >= 0 || error == WSAEMSGSIZE) {
            return {.status = ReceiveStatus::Data,
                    .size = got >= 0 ? static_cast<std::size_t>(got) : buffer.size(),
                    .source = fromNative(source)};
        }
        if (error != WSAEWOULDBLOCK && error != WSAECONNRESET) {
            return {};
        }
        if (timeout) {
            timeout =
                std::max(std::chrono::microseconds(0),
                         std::chrono::ceil<std::chrono::microseconds>(deadline - Clock::now()));
        }
    }
}

ReceiveStatus waitReadable(NativeSocket socket, Timeout timeout, const Waker* waker)
{
    WSAPOLLFD polled[2]{{.fd = socket, .events = POLLRDNORM, .revents = 0},
                        {.fd = waker == nullptr ? INVALID_SOCKET : waker->handle(),
                         .events = POLLRDNORM,
                         .revents = 0}};
    const int ready = WSAPoll(polled, waker == nullptr ? 1 : 2, waitLimit(timeout));
    if (ready < 0) {
        return ReceiveStatus::Failed;
    }
    if (ready == 0) {
        return ReceiveStatus::TimedOut;
    }
    return polled[1].revents != 0 ? ReceiveStatus::Woken : ReceiveStatus::Data;
}

std::optional<Ipv4Address> sourceAddressTowards(Ipv4Address destination)
{
    startWinsock();
    // Connecting a UDP socket only looks the route up.
    const SocketHandle socket(::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP));
    sockaddr_in address = toNative({.address = destination, .port = 9});
    int size = sizeof address;
    auto* const name = reinterpret_cast<sockaddr*>(&address);
    if (!socket || connect(socket.get(), name, size) != 0 ||
        getsockname(socket.get(), name, &size) != 0) {
        return std::nullopt;
    }
    return fromNative(address).address;
}

} // namespace gige::net
