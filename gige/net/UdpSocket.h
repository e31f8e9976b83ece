#ifndef TELVO_GIGE_NET_UDPSOCKET_H
#define TELVO_GIGE_NET_UDPSOCKET_H

#include "Ipv4Address.h"
#include "SocketHandle.h"
#include "Waker.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <system_error>

namespace gige::net
{

/// Longest wait; none: without limit. Windows rounds up to milliseconds.
using Timeout = std::optional<std::chrono::microseconds>;

enum class [[nodiscard]] ReceiveStatus : std::uint8_t{
    Data,
    TimedOut,
    Woken, // by the waker, which stays signalled until it is cleared
    Failed,
};

/// Result of a receive. Size and source count with ReceiveStatus::Data only.
struct [[nodiscard]] Received {
    ReceiveStatus status = ReceiveStatus::Failed;
    std::size_t size = 0; // bytes stored; a longer datagram is cut at the buffer's end
    Endpoint source{};
};

struct UdpSocketOptions {
    bool reuseAddress = false;   // several sockets may share a broadcast address and port
    bool broadcast = false;      // sending to broadcast addresses is allowed
    bool dontFragment = false;   // datagrams beyond the MTU fail instead of being cut
    std::string interfaceName{}; // only datagrams of this interface; not on Windows
};

/// A bound IPv4 UDP socket, move-only. One thread may receive while others send. An unreachable
/// port of the other side is no error of this socket: sending and receiving go on.
class UdpSocket
{
  public:
    /// @param local  port 0: any free one
    /// @param error  out: set on failure, such as address_in_use or address_not_available
    static std::optional<UdpSocket> open(const Endpoint& local, const UdpSocketOptions& options,
                                         std::error_code& error);
    static std::optional<UdpSocket> open(const Endpoint& local,
                                         const UdpSocketOptions& options = {})
    {
        std::error_code error;
        return open(local, options, error);
    }

    /// The address bound to, with the port that was chosen.
    Endpoint localEndpoint() const;

    bool setDontFragment(bool on);
    /// Asks for a receive buffer. @return bytes obtained, less than asked if the system limits it
    std::size_t setReceiveBuffer(std::size_t bytes);
    /// Asks for a send buffer. @return bytes obtained
    std::size_t setSendBuffer(std::size_t bytes);

    /// Sends one datagram, waiting for room. @return false: nothing was sent (too long, no route)
    bool send(std::span<const std::uint8_t> datagram, const Endpoint& destination);

    /// Takes the next datagram, waiting for it. @param waker  ends the wait, may be null
    Received receive(std::span<std::uint8_t> buffer, Timeout timeout, Waker* waker = nullptr);

    /// For the batched transfers.
    NativeSocket handle() const { return mHandle.get(); }

  private:
    explicit UdpSocket(SocketHandle handle) : mHandle(std::move(handle)) {}

    SocketHandle mHandle;
};

/// Waits until the socket has a datagram (ReceiveStatus::Data). The waker comes first.
ReceiveStatus waitReadable(NativeSocket socket, Timeout timeout, const Waker* waker);

/// The local address that the system would send from. Sends nothing. None without a route.
std::optional<Ipv4Address> sourceAddressTowards(Ipv4Address destination);

} // namespace gige::net

#endif
