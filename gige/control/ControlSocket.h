#ifndef TELVO_GIGE_CONTROL_CONTROLSOCKET_H
#define TELVO_GIGE_CONTROL_CONTROLSOCKET_H

#include "ByteOrder.h"
#include "Clock.h"
#include "Ipv4Address.h"
#include "UdpSocket.h"

#include <cstdint>
#include <memory>
#include <span>

namespace gige::control
{

/// How a conversation with a device sends and receives: by the network, or within a test.
/// Threads: one receives and clears while others send and wake.
class ControlSocket
{
  public:
    virtual ~ControlSocket() = default;

    /// @return false: nothing was sent
    virtual bool send(wire::ByteView datagram, const net::Endpoint& destination) = 0;
    /// Takes the next datagram that comes until this time.
    virtual net::Received receive(std::span<std::uint8_t> buffer, Clock::TimePoint until) = 0;
    /// Ends the wait for a datagram, and every later one until clear().
    virtual void wake() = 0;
    virtual void clear() = 0;
};

/// A UDP socket on this address, which waits by the system's clock.
/// @return null: the system gives none
std::unique_ptr<ControlSocket> openControlSocket(net::Ipv4Address local);

} // namespace gige::control

#endif
