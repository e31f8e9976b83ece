/// Linux only.
#ifndef TELVO_GIGE_NET_RINGSWITCH_H
#define TELVO_GIGE_NET_RINGSWITCH_H

#include "DatagramRun.h"
#include "FlowFilter.h"
#include "PacketRing.h"
#include "RingTrial.h"
#include "RingUse.h"
#include "SocketHandle.h"
#include "UdpSocket.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <future>
#include <memory>
#include <optional>
#include <span>

namespace gige::net
{

/// Moves a flow from a UDP socket to a packet ring and back. The ring is trusted only after it has
/// shown a packet that the socket brought, too; so no packet is missed that comes by another
/// interface or in fragments. Then the socket's filter drops what the ring takes, both filters
/// being exact opposites. What comes while the filters change comes twice; most of it is dropped
/// here. Rings are opened and closed beside, which takes milliseconds. For one thread.
class RingSwitch
{
  public:
    /// @param socket  borrowed
    explicit RingSwitch(NativeSocket socket) : mSocket(socket) {}
    ~RingSwitch();
    RingSwitch(const RingSwitch&) = delete;
    RingSwitch& operator=(const RingSwitch&) = delete;

    void allow(RingUse use, const Flow& flow);

    /// What the socket has just brought.
    void noteReceived(std::span<const DatagramRun> runs);
    /// Takes what the ring has; unless it is used instead of the socket, only when that has
    /// nothing.
    /// @return how many, valid until the next call
    std::size_t take(std::span<DatagramRun> runs);

    /// Whether the socket has nothing but what the ring could not take.
    bool isInstead() const { return mState == State::InUse; }
    /// Whether packets come by the ring.
    bool isInUse() const { return mState >= State::CatchingUp; }
    /// For the waits while it is in use, and their limit: it is looked after from time to time.
    NativeSocket handle() const { return mRing->handle(); }
    static Timeout limit(Timeout timeout);

  private:
    enum class State : std::uint8_t {
        Closed,
        Changing,   // opens or closes beside
        Proving,    // everything comes by both, and is taken from the socket
        CatchingUp, // the socket still has what came before its filter
        InUse,
        Leaving, // everything may come by both; the ring still has what came before
    };

    void openBeside();
    void closeBeside();
    void endChange();
    void prove(std::span<const DatagramRun> runs);
    void begin();
    void catchUp();
    void leave();
    void markLast(std::span<const DatagramRun> runs);
    bool isOfFlow(const DatagramRun& run) const { return run.source.address == mFlow.source; }
    /// Bytes of the longest IP datagram that the ring takes.
    std::size_t longestPacket() const;

    NativeSocket mSocket;
    Flow mFlow;
    RingTrial mTrial{RingUse::Never};
    State mState = State::Closed;
    std::future<std::unique_ptr<PacketRing>> mChange;
    std::unique_ptr<PacketRing> mRing;
    std::size_t mProofs = 0;            // attempted
    std::optional<DatagramMark> mLast;  // the socket's last one of the flow
    RingTrial::Clock::time_point mLeft; // when leaving began
};

} // namespace gige::net

#endif
