#ifndef TELVO_GIGE_CONTROL_CONTROLCHANNEL_H
#define TELVO_GIGE_CONTROL_CONTROLCHANNEL_H

#include "ByteOrder.h"
#include "ControlResult.h"
#include "GvcpHeader.h"
#include "Ipv4Address.h"
#include "LinkSettings.h"
#include "TurnQueue.h"
#include "UdpSocket.h"
#include "Waker.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace gige::control
{

/// A command without its header, which the channel adds.
struct Command {
    wire::GvcpCommand code = wire::GvcpCommand::ReadRegister;
    wire::Bytes payload{};
    /// Whether the payload of a success acknowledge answers this command; one that does not is
    /// dropped. An error acknowledge is always taken.
    std::function<bool(wire::ByteView)> acceptable = [](wire::ByteView) { return true; };
};

/**
 * The one conversation with a device: a UDP socket, one command at a time, in the order of asking.
 * An unanswered command is sent again with the same bytes and request id, so that the device can
 * tell it from a second command; PENDING_ACK moves the deadline; a device that is BUSY is asked
 * again later. Whatever does not come from the device or does not belong to the command is dropped.
 * Threads: any. mTurns guards mRequestId, mPendingAcks and the receiving side of mSocket; the rest
 * is atomic.
 */
class ControlChannel
{
  public:
    using Clock = std::chrono::steady_clock;
    using TimePoint = Clock::time_point;

    /**
     * @param local     address of the interface that leads to the device
     * @param device    the device's address; the port is 3956
     * @param settings  borrowed for the channel's life; with disconnectOnAnswerTimeout the channel
     *                  closes itself when a command has gone unanswered through all its tries
     * @return null: the system gives no socket on that address
     */
    static std::unique_ptr<ControlChannel> open(net::Ipv4Address local, net::Ipv4Address device,
                                                const LinkSettings& settings);

    /**
     * Sends the command and waits for its answer.
     * @param deadline  ends waiting with a timeout, however many tries are left
     * @return the acknowledge's payload
     */
    [[nodiscard]] ControlValue<wire::Bytes> execute(const Command& command,
                                                    TimePoint deadline = TimePoint::max());

    /// Ends a waiting command and refuses all later ones with NotConnected. Does not wait.
    /// @return false: it was closed already
    bool close();
    /// One command after close(), for taking leave: waits for the commands that end, then for the
    /// answer, less long than usual.
    ControlResult executeLast(const Command& command);
    [[nodiscard]] bool isClosed() const { return mClosed; }

    /// Waits, without keeping others from the channel. @return false: the channel is closed
    [[nodiscard]] bool sleep(std::chrono::milliseconds time);

    /// Up to when the device has shown that it is alive: its last answer, or the end of the time
    /// that a PENDING_ACK named. At first: when the channel was opened.
    [[nodiscard]] TimePoint answeredUntil() const { return mAnsweredUntil; }
    [[nodiscard]] net::Endpoint localEndpoint() const { return mSocket.localEndpoint(); }

  private:
    /// Answer to one request id, and how often the command was sent under it.
    struct Exchange {
        ControlValue<wire::Bytes> answer;
        std::uint32_t sendings = 0;
        bool triesUsedUp = false; // unanswered to the last
    };
    using Answer = std::optional<ControlValue<wire::Bytes>>; // none: the time passed

    ControlChannel(net::UdpSocket socket, net::Endpoint device, const LinkSettings& settings);

    Exchange exchange(const Command& command, TimePoint deadline);
    /// @param answerTimeout  of each try; none: as the settings say at that time
    Exchange sendUntilAnswered(const Command& command,
                               std::optional<std::chrono::milliseconds> answerTimeout,
                               TimePoint deadline);
    Answer awaitAnswer(const Command& command, TimePoint deadline);
    /// Up to when a PENDING_ACK wants to be waited for; now, if it is malformed or one too many.
    TimePoint promisedEnd(wire::ByteView payload);
    /// None: the acknowledge does not answer the command.
    static Answer answerIn(const wire::GvcpAckPacket& ack, const Command& command);

    net::UdpSocket mSocket;
    net::Endpoint mDevice;
    const LinkSettings& mSettings;
    net::Waker mWaker;
    TurnQueue mTurns;
    std::uint16_t mRequestId;
    int mPendingAcks = 0; // to the present request id
    std::atomic<TimePoint> mAnsweredUntil{Clock::now()};
    std::atomic<bool> mClosed{false};
};

} // namespace gige::control

#endif
