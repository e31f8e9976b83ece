#include "FakeDevice.h"

#include <stdexcept>
#include <utility>

using gige::net::Endpoint;
using gige::net::Ipv4Address;
using gige::net::ReceiveStatus;
using gige::net::UdpSocket;

namespace
{

constexpr std::uint16_t kPort = 3956;
constexpr std::size_t kCommandHeader = 8;
constexpr Ipv4Address kLoopbackBroadcast{0x7FFFFFFF};

UdpSocket openSocket(Ipv4Address address, std::uint16_t port)
{
    auto socket = UdpSocket::open({.address = address, .port = port},
                                  {.reuseAddress = true, .broadcast = true});
    if (!socket) {
        throw std::runtime_error("the test device's address is taken");
    }
    return std::move(*socket);
}

} // namespace

FakeDevice::FakeDevice(const std::string& address)
    : DeviceModel(gige::net::parseIpv4(address).value().value),
      mAddress(gige::net::parseIpv4(address).value()),
      mSocket(openSocket(mAddress, kPort)),
      mBroadcastSocket(openSocket(kLoopbackBroadcast, kPort)),
      mOtherPortSocket(openSocket(mAddress, 0)),
      mOtherAddressSocket(openSocket({mAddress.value + 100}, kPort))
{
    mThread = std::thread([this] { serve(mSocket); });
    mBroadcastThread = std::thread([this] { serve(mBroadcastSocket); });
}

FakeDevice::~FakeDevice()
{
    mStop.wake();
    mThread.join();
    mBroadcastThread.join();
}

void FakeDevice::serve(UdpSocket& socket)
{
    Bytes buffer(2048);
    for (;;) {
        const auto received = socket.receive(buffer, std::nullopt, &mStop);
        if (received.status != ReceiveStatus::Data) {
            return;
        }
        if (received.size >= kCommandHeader) {
            handle(Bytes(buffer.data(), buffer.data() + received.size), received.source);
        }
    }
}

void FakeDevice::handle(const Bytes& datagram, const Endpoint& sender)
{
    const std::lock_guard turn(mTurn);
    for (const FakeAnswer& answer : answersTo(datagram, sender.port)) {
        if (!answer.datagram.empty()) {
            send(answer, sender);
        }
    }
}

void FakeDevice::send(const FakeAnswer& answer, Endpoint destination)
{
    std::this_thread::sleep_for(answer.delay);
    UdpSocket* from = &mSocket;
    if (answer.fromOtherPort) {
        from = &mOtherPortSocket;
    } else if (answer.fromOtherAddress) {
        from = &mOtherAddressSocket;
    }
    if (answer.broadcast) {
        destination.address = kLoopbackBroadcast;
    }
    from->send(answer.datagram, destination);
}
