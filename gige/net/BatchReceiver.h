#ifndef TELVO_GIGE_NET_BATCHRECEIVER_H
#define TELVO_GIGE_NET_BATCHRECEIVER_H

#include "DatagramRun.h"
#include "RingUse.h"
#include "UdpSocket.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace gige::net
{

/// Takes many datagrams at once: on Linux per system call, on Windows out of many receives that are
/// posted ahead. Either system also joins datagrams of one source if it can (UDP_GRO, UDP receive
/// coalescing). On Linux single packets may be taken out of a ring that is shared with the kernel;
/// what the ring cannot take, the socket does. For one thread; the socket is borrowed for the
/// receiver's life and must not be received from otherwise.
class BatchReceiver
{
  public:
    explicit BatchReceiver(UdpSocket& socket);
    ~BatchReceiver();
    BatchReceiver(const BatchReceiver&) = delete;
    BatchReceiver& operator=(const BatchReceiver&) = delete;

    /// Allows the packet ring for what comes from this address. Of no effect where there is none.
    void useRing(RingUse use, Ipv4Address source);
    bool isRingInUse() const;

    /// Takes what is there, waiting for the first datagram; the wait may end early (TimedOut).
    /// Allocates nothing, but when the ring is opened or closed.
    /// @param waker  ends the wait, may be null; looked at only when no datagram is there
    ReceiveStatus receive(Timeout timeout, const Waker* waker);

    /// Whether the last receive took as much as it could at once, so that more may be waiting.
    bool mayHaveMore() const { return mMayHaveMore; }
    /// Lets datagrams gather. @return TimedOut, or Woken: the waker ended it
    ReceiveStatus pause(std::chrono::microseconds time, const Waker& waker);

    /// What the last receive brought; valid until the next.
    std::span<const DatagramRun> runs() const { return {mRuns.data(), mRunCount}; }

    /// Calls handler(std::span<const std::uint8_t> datagram, const Endpoint& source) for each
    /// datagram that the last receive brought, in order of arrival.
    template <typename Handler>
    void forEach(Handler&& handler) const
    {
        for (std::size_t index = 0; index < mRunCount; ++index) {
            if (index + kPrefetchAhead < mRunCount) {
                prefetch(mRuns[index + kPrefetchAhead]);
            }
            const DatagramRun& run = mRuns[index];
            std::size_t at = 0;
            do {
                const std::size_t size = std::min(run.segmentSize, run.bytes.size() - at);
                handler(run.bytes.subspan(at, size), run.source);
                at += size;
            } while (at < run.bytes.size());
        }
    }

  private:
    /// Runs that are handled while another comes from memory.
    static constexpr std::size_t kPrefetchAhead = 2;

    struct Buffers; // memory, and what the system call needs

    /// Receives without waiting. @return TimedOut: nothing there
    ReceiveStatus take();
    bool takeFromRing(); // not on Windows
    /// Waits until take() has something. @return Data, TimedOut, Woken or Failed
    ReceiveStatus wait(Timeout timeout, const Waker* waker);

    UdpSocket& mSocket;
    std::vector<DatagramRun> mRuns;
    std::size_t mRunCount = 0;
    bool mMayHaveMore = false;
    std::unique_ptr<Buffers> mBuffers;
};

} // namespace gige::net

#endif
