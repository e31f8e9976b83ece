#include "BroadcastQuery.h"

#include "GvcpHeader.h"
#include "StartThread.h"

#include <array>
#include <utility>

namespace gige::control
{

namespace
{

constexpr std::size_t kAnswerBufferSize = 1500; // more than any acknowledge
/// Room in a socket for the answers of a network full of devices, bytes.
constexpr std::size_t kSocketBuffer = 256 * 1024;
/// Where loopback devices listen together.
constexpr net::Ipv4Address kLoopbackBroadcast{0x7FFFFFFF};

} // namespace

BroadcastQuery::~BroadcastQuery()
{
    mWaker.wake();
    for (Listener& listener : mListeners) {
        listener.thread.join();
    }
}

void BroadcastQuery::ask(const net::NetworkInterface& interface)
{
    if (!mWaker.isValid()) {
        return;
    }
    if (interface.isLoopback) {
        askLoopback(interface);
    } else {
        askNetwork(interface);
    }
}

void BroadcastQuery::askLoopback(const net::NetworkInterface& interface)
{
    // Tied to the interface, or else the limited broadcast would leave by another.
    auto socket = net::UdpSocket::open({.address = interface.address},
                                       {.broadcast = true, .interfaceName = interface.name});
    if (socket) {
        listen(std::move(*socket), interface, {kLoopbackBroadcast, net::kLimitedBroadcast});
    }
}

void BroadcastQuery::askNetwork(const net::NetworkInterface& interface)
{
    // Not tied to the interface: a camera on this very machine answers by way of loopback.
    auto socket = net::UdpSocket::open({.address = interface.address},
                                       {.reuseAddress = true, .broadcast = true});
    if (!socket) {
        return;
    }
    const std::uint16_t port = socket->localEndpoint().port;
    // A device of another subnet answers by broadcast, which a socket bound to one address misses.
    // And with several interfaces, only a socket tied to one sends the limited broadcast there.
    auto broadcasts = net::UdpSocket::open(
        {.address = net::kAnyAddress, .port = port},
        {.reuseAddress = true, .broadcast = true, .interfaceName = interface.name});
    if (broadcasts) {
        listen(std::move(*broadcasts), interface, {net::kLimitedBroadcast});
    }
    // Asks last: both listen by then.
    listen(std::move(*socket), interface, {interface.broadcast(), net::kLimitedBroadcast});
}

void BroadcastQuery::repeat()
{
    for (Listener& listener : mListeners) {
        send(listener);
    }
}

std::optional<HeardDatagram> BroadcastQuery::next(Clock::TimePoint deadline)
{
    std::unique_lock lock(mLock);
    if (!mClock.waitUntil(lock, mArrived, deadline, [this] { return !mHeard.empty(); })) {
        return std::nullopt;
    }
    HeardDatagram heard = std::move(mHeard.front());
    mHeard.pop_front();
    return heard;
}

void BroadcastQuery::listen(net::UdpSocket socket, const net::NetworkInterface& interface,
                            std::vector<net::Ipv4Address> destinations)
{
    mListeners.push_back(
        {.socket = std::move(socket), .nic = interface, .destinations = std::move(destinations)});
    Listener& listener = mListeners.back();
    listener.socket.setReceiveBuffer(kSocketBuffer);
    if (!net::startThread(listener.thread, [this, &listener] { hear(listener); })) {
        mListeners.pop_back(); // nobody would hear an answer
        return;
    }
    send(listener);
}

void BroadcastQuery::hear(Listener& listener)
{
    std::array<std::uint8_t, kAnswerBufferSize> buffer{};
    for (;;) {
        const net::Received received = listener.socket.receive(buffer, std::nullopt, &mWaker);
        if (received.status != net::ReceiveStatus::Data) {
            return;
        }
        const auto end = buffer.begin() + static_cast<std::ptrdiff_t>(received.size);
        const std::lock_guard lock(mLock);
        if (mHeard.size() < kMostHeard) {
            mHeard.push_back(
                {.bytes = {buffer.begin(), end}, .source = received.source, .nic = listener.nic});
            mArrived.notify_one();
        }
    }
}

void BroadcastQuery::send(Listener& listener) const
{
    // What cannot be sent, for lack of a route or of a link, goes unanswered.
    for (const net::Ipv4Address destination : listener.destinations) {
        listener.socket.send(mCommand, {destination, wire::kGvcpPort});
    }
}

} // namespace gige::control
