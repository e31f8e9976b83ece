#include "ControlChannel.h"

#include "GvcpPayloads.h"

#include <algorithm>
#include <array>
#include <random>
#include <utility>

namespace gige::control
{

namespace
{

using std::chrono::milliseconds;

/// Pause before a device that answered BUSY is asked again.
constexpr milliseconds kBusyPause{100};
/// Room for more than any acknowledge may have, so that one too long shows.
constexpr std::size_t kReceiveBufferSize = 1500;

/// Any but 0: a device that forgets its last host must not take our first command for a repetition.
std::uint16_t randomRequestId()
{
    return static_cast<std::uint16_t>(std::random_device{}() % 0xFFFF + 1);
}

bool writes(wire::GvcpCommand command)
{
    return command == wire::GvcpCommand::WriteRegister || command == wire::GvcpCommand::WriteMemory;
}

} // namespace

std::unique_ptr<ControlChannel> ControlChannel::open(net::Ipv4Address local,
                                                     net::Ipv4Address device,
                                                     const LinkSettings& settings,
                                                     const ControlLimits& limits)
{
    auto socket = net::UdpSocket::open({.address = local});
    if (!socket) {
        return nullptr;
    }
    std::unique_ptr<ControlChannel> channel(new ControlChannel(
        std::move(*socket), {.address = device, .port = wire::kGvcpPort}, settings, limits));
    return channel->mWaker.isValid() ? std::move(channel) : nullptr;
}

ControlChannel::ControlChannel(net::UdpSocket socket, net::Endpoint device,
                               const LinkSettings& settings, const ControlLimits& limits)
    : mSocket(std::move(socket)),
      mDevice(device),
      mSettings(settings),
      mLimits(limits),
      mRequestId(randomRequestId())
{
}

Result<wire::Bytes> ControlChannel::execute(const Command& command, TimePoint deadline)
{
    const Patience& patience = this->patience();
    const TimePoint end = Clock::now() + patience.silence + patience.pending;
    Allowance allowance{.patience = patience, .deadline = std::min(deadline, end)};
    for (std::uint32_t retries = 0;; ++retries) {
        Exchange done = exchange(command, allowance);
        // BUSY says that the command was not run, so that it may be asked anew. But if it was sent
        // twice, the first one may run now, and be what the device is busy with.
        const bool askAgain = done.answer.status() == deviceError(wire::GvcpStatus::Busy) &&
                              retries < mSettings.commandRetryCount &&
                              (done.sendings == 1 || !writes(command.code));
        if (!askAgain) {
            return std::move(done.answer);
        }
        if (!sleep(kBusyPause)) {
            return Status::NotConnected;
        }
    }
}

void ControlChannel::hurry()
{
    mWaitedInVain = Clock::duration::zero();
    mHurryUntil = Clock::now() + mLimits.leavingTime;
}

const Patience& ControlChannel::patience() const
{
    if (Clock::now() < mHurryUntil.load()) {
        return mLimits.leaving;
    }
    return mIsOpening ? mLimits.opening : mLimits.connected;
}

ControlChannel::Exchange ControlChannel::exchange(const Command& command, Allowance& allowance)
{
    Exchange done{.answer = Status::Timeout};
    {
        const TimePoint turnEnd = Clock::now() + allowance.patience.silence;
        const Turn turn(mTurns, std::min(allowance.deadline, turnEnd));
        if (!turn.granted()) {
            return {.answer = mClosed ? Status::NotConnected : Status::Timeout};
        }
        done = sendUntilAnswered(command, allowance);
    }
    if (done.triesUsedUp && mSettings.disconnectOnAnswerTimeout != 0) {
        close();
    }
    return done;
}

ControlChannel::Exchange ControlChannel::sendUntilAnswered(const Command& command,
                                                           Allowance& allowance)
{
    mRequestId = wire::nextRequestId(mRequestId);
    const wire::Bytes datagram =
        wire::commandDatagram(command.code, wire::kGvcpAckRequired, mRequestId, command.payload);
    std::uint32_t sendings = 0;
    while (sendings <= mSettings.commandRetryCount) {
        const TimePoint now = Clock::now();
        const Clock::duration time = sendingTime(allowance);
        if (now >= allowance.deadline || time <= Clock::duration::zero()) {
            return {.answer = Status::Timeout, .sendings = sendings};
        }
        if (!mSocket.send(datagram, mDevice)) {
            return {.answer = Status::NetworkError, .sendings = sendings};
        }
        ++sendings;
        const TimePoint end = std::min(allowance.deadline, now + time);
        if (Answer answer = awaitAnswer(command, end, allowance)) {
            mWaitedInVain = Clock::duration::zero();
            return {.answer = std::move(*answer), .sendings = sendings};
        }
        mWaitedInVain = mWaitedInVain.load() + (Clock::now() - now);
    }
    return {.answer = Status::Timeout, .sendings = sendings, .triesUsedUp = true};
}

ControlChannel::Clock::duration ControlChannel::sendingTime(const Allowance& allowance) const
{
    const milliseconds answerTimeout(mSettings.answerTimeout.load());
    const Clock::duration silenceLeft = allowance.patience.silence - mWaitedInVain.load();
    return std::min<Clock::duration>(std::min(answerTimeout, allowance.patience.sending),
                                     silenceLeft);
}

ControlChannel::Answer ControlChannel::awaitAnswer(const Command& command, TimePoint deadline,
                                                   Allowance& allowance)
{
    std::array<std::uint8_t, kReceiveBufferSize> buffer{};
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::microseconds>(deadline - Clock::now());
        const net::Received received =
            mSocket.receive(buffer, std::max(left, std::chrono::microseconds(0)), &mWaker);
        switch (received.status) {
        case net::ReceiveStatus::TimedOut:
            return std::nullopt;
        case net::ReceiveStatus::Woken:
            return Status::NotConnected;
        case net::ReceiveStatus::Failed:
            return Status::NetworkError;
        case net::ReceiveStatus::Data:
            break;
        }
        const auto ack = wire::decodeAck(wire::ByteView(buffer).first(received.size));
        if (received.source != mDevice || !ack || ack->header.requestId != mRequestId) {
            continue;
        }
        if (ack->header.command == wire::GvcpCommand::PendingAck) {
            deadline = std::max(deadline, promisedEnd(ack->payload, allowance));
        } else if (Answer answer = answerIn(*ack, command)) {
            mLastAnswer = Clock::now();
            mAnsweredUntil = mLastAnswer;
            return answer;
        }
    }
}

ControlChannel::TimePoint ControlChannel::promisedEnd(wire::ByteView payload, Allowance& allowance)
{
    const auto pending = wire::decodePendingAck(payload);
    const TimePoint now = Clock::now();
    if (!pending) {
        return now;
    }
    if (!allowance.pendingEnd) {
        allowance.pendingEnd = now + allowance.patience.pending;
    }
    const TimePoint end =
        std::min({now + pending->timeToCompletion, *allowance.pendingEnd, allowance.deadline});
    // A device that promises and promises is not alive for ever.
    mAnsweredUntil = std::min(end, mLastAnswer + mLimits.connected.pending);
    return end;
}

ControlChannel::Answer ControlChannel::answerIn(const wire::GvcpAckPacket& ack,
                                                const Command& command)
{
    if (ack.header.command != wire::ackOf(command.code)) {
        return std::nullopt;
    }
    if (wire::isError(ack.header.status)) {
        return deviceError(ack.header.status);
    }
    if (!command.acceptable(ack.payload)) {
        return std::nullopt;
    }
    return wire::Bytes(ack.payload.begin(), ack.payload.end());
}

bool ControlChannel::sleep(milliseconds time)
{
    return mTurns.sleepUntil(Clock::now() + time);
}

bool ControlChannel::close()
{
    if (mClosed.exchange(true)) {
        return false;
    }
    mTurns.close();
    mWaker.wake();
    return true;
}

Status ControlChannel::executeLast(const Command& command)
{
    mTurns.drain();
    mWaker.clear();
    mWaitedInVain = Clock::duration::zero();
    Allowance allowance{.patience = mLimits.leaving,
                        .deadline = Clock::now() + mLimits.leaving.silence};
    return sendUntilAnswered(command, allowance).answer.status();
}

} // namespace gige::control
