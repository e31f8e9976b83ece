#include "ControlSocket.h"

#include "Waker.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace gige::control
{

namespace
{

class UdpControlSocket final : public ControlSocket
{
  public:
    explicit UdpControlSocket(net::UdpSocket socket) : mSocket(std::move(socket)) {}

    [[nodiscard]] bool isValid() const { return mWaker.isValid(); }

    bool send(wire::ByteView datagram, const net::Endpoint& destination) override
    {
        return mSocket.send(datagram, destination);
    }

    net::Received receive(std::span<std::uint8_t> buffer, Clock::TimePoint until) override
    {
        using std::chrono::microseconds;
        const auto left = std::chrono::ceil<microseconds>(until - systemClock().now());
        return mSocket.receive(buffer, std::max(left, microseconds(0)), &mWaker);
    }

    void wake() override { mWaker.wake(); }
    void clear() override { mWaker.clear(); }

  private:
    net::UdpSocket mSocket;
    net::Waker mWaker;
};

} // namespace

std::unique_ptr<ControlSocket> openControlSocket(net::Ipv4Address local)
{
    auto socket = net::UdpSocket::open({.address = local});
    if (!socket) {
        return nullptr;
    }
    auto opened = std::make_unique<UdpControlSocket>(std::move(*socket));
    return opened->isValid() ? std::move(opened) : nullptr;
}

} // namespace gige::control
