#ifndef TELVO_GIGE_CONTROL_BROADCASTQUERY_H
#define TELVO_GIGE_CONTROL_BROADCASTQUERY_H

#include "ByteOrder.h"
#include "Clock.h"
#include "NetworkInterface.h"
#include "UdpSocket.h"
#include "Waker.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <list>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace gige::control
{

/// Datagrams that wait to be taken, at most; those that come then are lost.
inline constexpr std::size_t kMostHeard = 1024;

/// A datagram that arrived, who sent it, and the interface it was heard on.
struct HeardDatagram {
    wire::Bytes bytes{};
    net::Endpoint source{};
    net::NetworkInterface nic{};
};

/// Sends one command to every device that interfaces reach, and hears what comes back.
/// Threads: the operations one; each socket has a listening thread, which ends with the object.
/// mLock guards mHeard.
class BroadcastQuery
{
  public:
    /// @param clock  borrowed for the object's life
    explicit BroadcastQuery(wire::Bytes command, Clock& clock = systemClock())
        : mClock(clock), mCommand(std::move(command))
    {
    }
    ~BroadcastQuery();
    BroadcastQuery(const BroadcastQuery&) = delete;
    BroadcastQuery& operator=(const BroadcastQuery&) = delete;

    /// Opens sockets there and sends the command. An interface that does not let us is passed over.
    void ask(const net::NetworkInterface& interface);
    /// Sends the command once more on every interface asked.
    void repeat();
    /// The next datagram, in order of arrival. None: the time passed.
    std::optional<HeardDatagram> next(Clock::TimePoint deadline);

  private:
    /// One socket and the thread that listens to it. Stays where it is, for the thread's sake.
    struct Listener {
        net::UdpSocket socket;
        net::NetworkInterface nic;
        std::vector<net::Ipv4Address> destinations; // of the command
        std::thread thread{};
    };

    void askLoopback(const net::NetworkInterface& interface);
    void askNetwork(const net::NetworkInterface& interface);
    void listen(net::UdpSocket socket, const net::NetworkInterface& interface,
                std::vector<net::Ipv4Address> destinations);
    void hear(Listener& listener);
    void send(Listener& listener) const;

    Clock& mClock;
    wire::Bytes mCommand;
    net::Waker mWaker;
    std::list<Listener> mListeners;

    std::mutex mLock;
    std::condition_variable mArrived;
    std::deque<HeardDatagram> mHeard;
};

} // namespace gige::control

#endif
