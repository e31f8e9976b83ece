#include "UdpSocket.h"

#include "PosixSocket.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace gige::net
{

namespace
{

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

bool setOption(NativeSocket socket, int level, int name, int value)
{
    return setsockopt(socket, level, name, &value, sizeof value) == 0;
}

bool setFragmentation(NativeSocket socket, bool dontFragment)
{
    return setOption(socket, IPPROTO_IP, IP_MTU_DISCOVER,
                     dontFragment ? IP_PMTUDISC_DO : IP_PMTUDISC_DONT);
}

bool restrictTo(NativeSocket socket, const std::string& interface)
{
    return setsockopt(socket, SOL_SOCKET, SO_BINDTODEVICE, interface.c_str(),
                      static_cast<socklen_t>(interface.size())) == 0;
}

bool applyOptions(NativeSocket socket, const UdpSocketOptions& options)
{
    return (!options.reuseAddress || setOption(socket, SOL_SOCKET, SO_REUSEADDR, 1)) &&
           (!options.broadcast || setOption(socket, SOL_SOCKET, SO_BROADCAST, 1)) &&
           (!options.dontFragment || setFragmentation(socket, true)) &&
           (options.interfaceName.empty() || restrictTo(socket, options.interfaceName));
}

/// @param forced  the variant of the option that a privileged process may exceed the limit with
std::size_t setBuffer(NativeSocket socket, int option, int forced, std::size_t bytes)
{
    const int wanted = static_cast<int>(bytes);
    if (!setOption(socket, SOL_SOCKET, forced, wanted)) {
        setOption(socket, SOL_SOCKET, option, wanted);
    }
    int obtained = 0;
    socklen_t size = sizeof obtained;
    getsockopt(socket, SOL_SOCKET, option, &obtained, &size);
    return static_cast<std::size_t>(obtained) / 2; // the kernel doubles it for its own overhead
}

bool isPassing(int error)
{
    return error == EINTR || error == ECONNREFUSED; // the latter: an ICMP port unreachable
}

} // namespace

void SocketHandle::close(NativeSocket socket)
{
    ::close(socket);
}

std::optional<UdpSocket> UdpSocket::open(const Endpoint& local, const UdpSocketOptions& options,
                                         std::error_code& error)
{
    SocketHandle socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_UDP));
    const sockaddr_in address = toNative(local);
    if (!socket || !applyOptions(socket.get(), options) ||
        bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        error = lastError();
        return std::nullopt;
    }
    return UdpSocket(std::move(socket));
}

Endpoint UdpSocket::localEndpoint() const
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(mHandle.get(), reinterpret_cast<sockaddr*>(&address), &size);
    return fromNative(address);
}

bool UdpSocket::setDontFragment(bool on)
{
    return setFragmentation(mHandle.get(), on);
}

std::size_t UdpSocket::setReceiveBuffer(std::size_t bytes)
{
    return setBuffer(mHandle.get(), SO_RCVBUF, SO_RCVBUFFORCE, bytes);
}

std::size_t UdpSocket::setSendBuffer(std::size_t bytes)
{
    return setBuffer(mHandle.get(), SO_SNDBUF, SO_SNDBUFFORCE, bytes);
}

bool UdpSocket::send(std::span<const std::uint8_t> datagram, const Endpoint& destination)
{
    const sockaddr_in address = toNative(destination);
    for (;;) {
        const auto sent = sendto(mHandle.get(), datagram.data(), datagram.size(), 0,
                                 reinterpret_cast<const sockaddr*>(&address), sizeof address);
        if (sent >= 0) {
            return true;
        }
        if (!isPassing(errno)) {
            return false;
        }
    }
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
        socklen_t size = sizeof source;
        const auto got = recvfrom(mHandle.get(), buffer.data(), buffer.size(), MSG_DONTWAIT,
                                  reinterpret_cast<sockaddr*>(&source), &size);
        if (got >= 0) {
            return {.status = ReceiveStatus::Data,
                    .size = static_cast<std::size_t>(got),
                    .source = fromNative(source)};
        }
        // EAGAIN: the datagram was there and was dropped for its checksum.
        if (errno != EAGAIN && !isPassing(errno)) {
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
    return waitReadable(socket, kInvalidSocket, timeout, waker);
}

ReceiveStatus waitReadable(NativeSocket first, NativeSocket second, Timeout timeout,
                           const Waker* waker)
{
    std::array<pollfd, 3> polled{
        {{.fd = first, .events = POLLIN, .revents = 0},
         {.fd = second, .events = POLLIN, .revents = 0},
         {.fd = waker == nullptr ? -1 : waker->handle(), .events = POLLIN, .revents = 0}}};
    const auto deadline =
        std::chrono::steady_clock::now() + timeout.value_or(std::chrono::microseconds(0));
    for (;;) {
        timespec limit{};
        if (timeout) {
            const auto left =
                std::max(std::chrono::nanoseconds(0),
                         std::chrono::nanoseconds(deadline - std::chrono::steady_clock::now()));
            const auto seconds = std::chrono::floor<std::chrono::seconds>(left);
            limit = {.tv_sec = seconds.count(), .tv_nsec = (left - seconds).count()};
        }
        const int ready = ppoll(polled.data(), polled.size(), timeout ? &limit : nullptr, nullptr);
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        if (ready < 0) {
            return ReceiveStatus::Failed;
        }
        if (ready == 0) {
            return ReceiveStatus::TimedOut;
        }
        return polled[2].revents != 0 ? ReceiveStatus::Woken : ReceiveStatus::Data;
    }
}

std::optional<Ipv4Address> sourceAddressTowards(Ipv4Address destination)
{
    // Connecting a UDP socket only looks the route up.
    const SocketHandle socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_UDP));
    sockaddr_in address = toNative({.address = destination, .port = 9});
    socklen_t size = sizeof address;
    auto* const name = reinterpret_cast<sockaddr*>(&address);
    if (!socket || connect(socket.get(), name, size) != 0 ||
        getsockname(socket.get(), name, &size) != 0) {
        return std::nullopt;
    }
    return fromNative(address).address;
}

} // namespace gige::net
