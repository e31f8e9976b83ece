#ifndef TELVO_CAMERA_STREAMER_H
#define TELVO_CAMERA_STREAMER_H

#include "BatchSender.h"
#include "BlockPackets.h"
#include "CameraLog.h"
#include "Device.h"
#include "FrameRenderer.h"
#include "GvcpPayloads.h"
#include "Pacer.h"
#include "UdpSocket.h"

#include <atomic>
#include <deque>
#include <mutex>
#include <optional>
#include <vector>

namespace camera
{

/// Sends what the device has to send, packet by packet, and sends packets again on request. A block
/// is made anew for a resend, so nothing but its order is kept. run() is the stream thread's; the
/// other operations are thread-safe.
class Streamer
{
  public:
    /// All are borrowed for the streamer's life.
    Streamer(gige::net::UdpSocket& socket, const CameraOptions& options, Device& device,
             Faults& faults, CameraLog& log);

    /// Sends until stop() is called.
    void run();
    void stop();

    void resend(const gige::wire::PacketResend& request);
    /// One datagram of exactly the channel's packet size.
    void sendTestPacket(const StreamChannel& channel);

  private:
    /// Makes a block's bytes; keeps the background of the last view.
    class BlockMaker
    {
      public:
        std::span<const std::uint8_t> make(const StreamOrder& order);

      private:
        std::optional<FrameRenderer> mRenderer;
        std::vector<std::uint8_t> mInfo;
    };

    void sendInTurn(const std::optional<StreamOrder>& order);
    void sendBlock(StreamOrder order, const std::optional<FrameFault>& fault);
    void sendPackets(const StreamOrder& order, std::span<const gige::net::PacketSlices> packets);
    std::size_t sendDue(const gige::net::Endpoint& destination,
                        std::span<const gige::net::PacketSlices> packets);
    void sendDisturbed(const StreamOrder& order);
    void sleepUntil(Pacer::Clock::time_point end);
    void remember(const StreamOrder& order);
    void serveResends();
    void serve(const gige::wire::PacketResend& request);
    void makeForResend(const StreamOrder& order);
    void refuse(const gige::wire::PacketResend& request);

    gige::net::UdpSocket& mSocket;
    const CameraOptions& mOptions;
    Device& mDevice;
    Faults& mFaults;
    CameraLog& mLog;
    std::atomic<bool> mStop{false};

    // The stream thread's own.
    gige::net::BatchSender mSender;
    Pacer mPacer;
    BlockMaker mMaker;
    BlockMaker mResendMaker;
    BlockPackets mPackets;
    BlockPackets mResendPackets;
    std::optional<std::uint64_t> mResendMade; // id of the block in mResendPackets
    std::vector<PacketStep> mSteps;
    std::optional<StreamOrder> mHeldBack; // goes behind the next block
    std::deque<StreamOrder> mSent;        // newest last

    std::mutex mLock; // guards mResends
    std::vector<gige::wire::PacketResend> mResends;
    std::atomic<bool> mHasResends{false};
};

} // namespace camera

#endif
