#ifndef TELVO_GIGE_CONTROL_CONTROLCHANNEL_H
#define TELVO_GIGE_CONTROL_CONTROLCHANNEL_H

#include "ByteOrder.h"
#include "Clock.h"
#include "ControlLimits.h"
#include "ControlSocket.h"
#include "ControlStatus.h"
#include "GvcpHeader.h"
#include "Ipv4Address.h"
#include "LinkSettings.h"
#include "TurnQueue.h"

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

/// The one conversation with a device: a UDP socket, one command at a time, in the order of asking.
/// An unanswered command is sent again with the same bytes and request id, so that the device can
/// tell it from a second command; PENDING_ACK moves the deadline, up to a limit; a device that is
/// BUSY is asked again later. Whatever does not come from the device or does not belong to the
/// command is dropped.
/// Threads: any. mTurns guards mRequestId, mLastAnswer and the receiving side of mSocket; the rest
/// is atomic.
class ControlChannel
{
  public:
    using TimePoint = Clock::TimePoint;

    /// @param local     address of the interface that leads to the device
    /// @param device    the device's address; the port is 3956
    /// @param settings  borrowed for the channel's life; with disconnectOnAnswerTimeout the channel
    ///                  closes itself when a command has gone unanswered through all its tries
    /// @return null: the system gives no socket on that address
    static std::unique_ptr<ControlChannel> open(net::Ipv4Address local, net::Ipv4Address device,
                                                const LinkSettings& settings,
                                                const ControlLimits& limits = {});
    /// @param socket  how to reach the device
    /// @param clock   the one that the socket waits by; borrowed for the channel's life
    ControlChannel(std::unique_ptr<ControlSocket> socket, net::Endpoint device,
                   const LinkSettings& settings, const ControlLimits& limits, Clock& clock);

    /// Sends the command and waits for its answer.
    /// @param deadline  ends waiting with a timeout, however many tries are left and whatever a
    ///                  PENDING_ACK promises
    /// @return the acknowledge's payload
    Result<wire::Bytes> execute(const Command& command, TimePoint deadline = TimePoint::max());

    /// While it lives a connection is being made, with the patience for that.
    class Opening
    {
      public:
        explicit Opening(ControlChannel& channel) : mChannel(channel)
        {
            mChannel.mIsOpening = true;
        }
        ~Opening() { mChannel.mIsOpening = false; }
        Opening(const Opening&) = delete;
        Opening& operator=(const Opening&) = delete;

      private:
        ControlChannel& mChannel;
    };

    /// The host is about to leave: commands get little time from now on, and none for a
    /// PENDING_ACK, until ControlLimits::leavingTime has passed.
    void hurry();

    /// Ends a waiting command and refuses all later ones with NotConnected. Does not wait.
    /// @return false: it was closed already
    bool close();
    /// One command after close(), for taking leave: waits for the commands that end, then for the
    /// answer, less long than usual.
    Status executeLast(const Command& command);
    [[nodiscard]] bool isClosed() const { return mClosed; }

    /// Waits, without keeping others from the channel. @return false: the channel is closed
    [[nodiscard]] bool sleep(std::chrono::milliseconds time);

    /// Up to when the device has shown that it is alive: its last answer, or the end of the time
    /// that a PENDING_ACK named, which counts for so long only as one command may be pending. At
    /// first: when the channel was opened.
    [[nodiscard]] TimePoint answeredUntil() const { return mAnsweredUntil; }
    [[nodiscard]] Clock& clock() const { return mClock; }
    [[nodiscard]] net::Ipv4Address device() const { return mDevice.address; }

  private:
    /// Answer to one request id, and how often the command was sent under it.
    struct Exchange {
        Result<wire::Bytes> answer;
        std::uint32_t sendings = 0;
        bool triesUsedUp = false; // unanswered to the last
    };
    using Answer = std::optional<Result<wire::Bytes>>; // none: the time passed
    /// What time a command has, under all the request ids that it is sent with.
    struct Allowance {
        Patience patience;
        TimePoint deadline;
        std::optional<TimePoint> pendingEnd{}; // from the first PENDING_ACK on
    };

    [[nodiscard]] const Patience& patience() const;
    Exchange exchange(const Command& command, Allowance& allowance);
    Exchange sendUntilAnswered(const Command& command, Allowance& allowance);
    /// How long the next sending may wait; none left: zero or less.
    [[nodiscard]] Clock::Duration sendingTime(const Allowance& allowance) const;
    Answer awaitAnswer(const Command& command, TimePoint deadline, Allowance& allowance);
    /// Up to when a PENDING_ACK may be waited for; now, if it is malformed or the time is used up.
    TimePoint promisedEnd(wire::ByteView payload, Allowance& allowance);
    /// None: the acknowledge does not answer the command.
    static Answer answerIn(const wire::GvcpAckPacket& ack, const Command& command);

    Clock& mClock;
    std::unique_ptr<ControlSocket> mSocket;
    net::Endpoint mDevice;
    const LinkSettings& mSettings;
    const ControlLimits mLimits;
    TurnQueue mTurns{mClock};
    std::uint16_t mRequestId;
    TimePoint mLastAnswer = mClock.now();
    std::atomic<TimePoint> mAnsweredUntil{mLastAnswer};
    std::atomic<Clock::Duration> mWaitedInVain{Clock::Duration::zero()}; // since the last answer
    std::atomic<TimePoint> mHurryUntil{TimePoint::min()};
    std::atomic<bool> mIsOpening{false};
    std::atomic<bool> mClosed{false};
};

} // namespace gige::control

#endif
