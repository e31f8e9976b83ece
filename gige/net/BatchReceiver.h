#ifndef TELVO_GIGE_NET_BATCHRECEIVER_H
#define TELVO_GIGE_NET_BATCHRECEIVER_H

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

/// Datagrams of one source that lie behind each other: all `segmentSize` bytes long but the last,
/// which may be shorter.
struct DatagramRun {
    std::span<const std::uint8_t> bytes{};
    std::size_t segmentSize = 0; // bytes; not 0 unless the run is one empty datagram
    Endpoint source{};
};

/**
 * Takes many datagrams at once: on Linux per system call, on Windows out of many receives that are
 * posted ahead. Either system also joins datagrams of one source if it can (UDP_GRO, UDP receive
 * coalescing). For one thread; the socket is borrowed for the receiver's life and must not be
 * received from otherwise.
 */
class BatchReceiver
{
  public:
    explicit BatchReceiver(UdpSocket& socket);
    ~BatchReceiver();
    BatchReceiver(const BatchReceiver&) = delete;
    BatchReceiver& operator=(const BatchReceiver&) = delete;

    /// Takes what is there, waiting for the first datagram. Allocates nothing.
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
        for (const DatagramRun& run : runs()) {
            std::size_t at = 0;
            do {
                const std::size_t size = std::min(run.segmentSize, run.bytes.size() - at);
                handler(run.bytes.subspan(at, size), run.source);
                at += size;
            } while (at < run.bytes.size());
        }
    }

  private:
    struct Buffers; // memory, and what the system call needs

    /// Receives without waiting. @return TimedOut: nothing there
    ReceiveStatus take();
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
