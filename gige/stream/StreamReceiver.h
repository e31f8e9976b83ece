#ifndef TELVO_GIGE_STREAM_STREAMRECEIVER_H
#define TELVO_GIGE_STREAM_STREAMRECEIVER_H

#include "BatchReceiver.h"
#include "BlockAssembler.h"
#include "BufferQueue.h"
#include "Gathering.h"
#include "Ipv4Address.h"
#include "StreamReport.h"
#include "StreamSettings.h"
#include "StreamStatistics.h"
#include "UdpSocket.h"
#include "Waker.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

namespace gige::stream
{

/// Receive buffer asked for, bytes: several blocks of a high-speed camera.
constexpr std::size_t kSocketBufferSize = std::size_t{32} << 20;

struct StreamConfig {
    net::Endpoint local{};        // host address of the device's interface; port 0: any free one
    net::Ipv4Address device{};    // packets of others are dropped, resends are asked for here
    std::uint16_t devicePort = 0; // the device's stream port (SCSP); 0: that of its first packet
    std::uint16_t channel = 0;    // the device's stream channel
    StreamSettings settings{};
    net::RingUse ring = net::RingUse::WhenItPays;
};

/// Receives one stream: a socket, and a thread that fills queued buffers with blocks. Every
/// operation may be called from any thread, except that none may run while it is destroyed.
/// Destroying ends the thread; buffers that are still in the stream are then their owners' again.
class StreamReceiver final : private AssemblerHost
{
  public:
    /// @param error  out: why there is no stream, such as address_in_use
    static std::unique_ptr<StreamReceiver> open(const StreamConfig& config, std::error_code& error);
    ~StreamReceiver() override;
    StreamReceiver(const StreamReceiver&) = delete;
    StreamReceiver& operator=(const StreamReceiver&) = delete;

    /// Where the device has to send to.
    net::Endpoint localEndpoint() const { return mSocket.localEndpoint(); }
    /// Bytes of the socket's receive buffer, as the system granted it.
    std::size_t socketBufferSize() const { return mSocketBuffer; }

    /// Whether packets come by the packet ring now.
    bool isRingInUse() const { return mRingInUse; }

    /// Take effect from the next packet on.
    void setSettings(const StreamSettings& settings);
    /// Packets of another port are dropped from now on; 0: learn it from the next packet.
    void setDevicePort(std::uint16_t port) { mDevicePort = port; }

    /// Whether the device sends packets again; for the log.
    void setDeviceResends(bool resends) { mDeviceResends = resends; }
    /// The device is about to be asked for pictures (true), or to stop them: for the log, which
    /// tells when no packet comes.
    void setAcquiring(bool acquiring);

    /// Hands a buffer in. @return false: it is in a stream already
    bool queue(StreamBuffer& buffer);
    /// The same, to be filled before all others: a buffer that was just in use is still in the
    /// processor's cache.
    bool queueFirst(StreamBuffer& buffer);
    /// Where the completed ones are taken.
    CompletedBuffers& completed() { return mQueue; }

    /// Completes every buffer in the stream, also one being filled, as Aborted; they can still be
    /// retrieved. What is on its way of a block that was begun is dropped.
    void abortQueued();
    /// Drops packets that have been received and not yet placed.
    void flushPackets();

    StreamStatistics statistics() const { return mStatistics.read(); }

  private:
    /// What other threads want of the receiving thread; mCommandLock guards it.
    struct Commands {
        std::optional<StreamSettings> settings{};
        bool abort = false;
        bool flush = false;
    };

    enum class Acquiring : std::uint8_t { Unchanged, Begins, Ends };

    StreamReceiver(const StreamConfig& config, net::UdpSocket socket);

    void run();
    void receiveNext();
    net::Timeout timeToWait();
    void report(Time now);
    StreamReport::Totals totals() const;
    Resends resends() const;
    void serveAcquiring();
    Taken placeReceived(Time now);
    bool wakeIf(bool queued);
    void gather(const Taken& taken, Time now);
    void serveCommands();
    void apply(const StreamSettings& settings);
    template <typename Change>
    void command(Change change);
    void dropReceived();
    void onDatagram(wire::ByteView datagram, const net::Endpoint& source, Time now);
    bool isFromDevice(const net::Endpoint& source) const;

    StreamBuffer* takeBuffer() override { return mQueue.take(); }
    std::optional<Time> waitingSince() override { return mQueue.waitingSince(); }
    void complete(StreamBuffer& buffer) override;
    void requestResend(const ResendRequest& request) override;

    const net::Ipv4Address mDevice;
    const std::uint16_t mChannel;
    std::atomic<std::uint16_t> mDevicePort; // 0: not known
    net::UdpSocket mSocket;
    std::size_t mSocketBuffer = 0;
    net::Waker mWaker;
    BufferQueue mQueue;
    SharedStatistics mStatistics;

    // The receiving thread's own.
    net::BatchReceiver mBatches{mSocket};
    BlockAssembler mAssembler{*this};
    Gathering mGathering;
    StreamReport mReport;
    std::uint64_t mBlocksTooLong = 0;
    std::uint32_t mPendingResends = 0; // as set
    std::uint16_t mRequestId = 0;

    std::mutex mCommandLock;
    std::condition_variable mCommandServed;
    Commands mCommands;
    std::uint64_t mCommandsGiven = 0;
    std::uint64_t mCommandsServed = 0;
    std::atomic<bool> mHasCommands = false;
    std::atomic<bool> mQueueWakes = false; // a queued buffer starts the first-packet timeout
    std::atomic<bool> mRingInUse = false;
    std::atomic<Acquiring> mAcquiring = Acquiring::Unchanged;
    std::atomic<bool> mDeviceResends = true;
    std::atomic<bool> mIsFed = false; // a buffer was queued since they were last aborted
    std::atomic<bool> mStop = false;
    std::thread mThread;
};

} // namespace gige::stream

#endif
