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
    auto socket = openControlSocket(local);
    if (socket == nullptr) {
        return nullptr;
    }
    return std::make_unique<ControlChannel>(
        std::move(socket), net::Endpoint{.address = device, .port = wire::kGvcpPort}, settings,
        limits, systemClock());
}

ControlChannel::ControlChannel(std::unique_ptr<ControlSocket> socket, net::Endpoint device,
                               const LinkSettings& settings, const ControlLimits& limits,
                               Clock& clock)
    : mClock(clock),
      mSocket(std::move(socket)),
      mDevice(device),
      mSettings(settings),
      mLimits(limits),
      mRequestId(randomRequestId())
{
}

Result<wire::Bytes> ControlChannel::execute(const Command& command, TimePoint deadline)
{
    const Patience& patience = this->patience();
    const TimePoint end = mClock.now() + patience.silence + patience.pending;
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
    mWaitedInVain = Clock::Duration::zero();
    mHurryUntil = mClock.now() + mLimits.leavingTime;
}

const Patience& ControlChannel::patience() const
{
    if (mClock.now() < mHurryUntil.load()) {
        return mLimits.leaving;
    }
    return mIsOpening ? mLimits.opening : mLimits.connected;
}

ControlChannel::Exchange ControlChannel::exchange(const Command& command, Allowance& allowance)
{
    Exchange done{.answer = Status::Timeout};
    {
        const TimePoint turnEnd = mClock.now() + allowance.patience.silence;
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
        const TimePoint now = mClock.now();
        const Clock::Duration time = sendingTime(allowance);
        if (now >= allowance.deadline || time <= Clock::Duration::zero()) {
            return {.answer = Status::Timeout, .sendings = sendings};
        }
        if (!mSocket->send(datagram, mDevice)) {
            return {.answer = Status::NetworkError, .sendings = sendings};
        }
        ++sendings;
        const TimePoint end = std::min(allowance.deadline, now + time);
        if (Answer answer = awaitAnswer(command, end, allowance)) {
            mWaitedInVain = Clock::Duration::zero();
            return {.answer = std::move(*answer), .sendings = sendings};
        }
        mWaitedInVain = mWaitedInVain.load() + (mClock.now() - now);
    }
    return {.answer = Status::Timeout, .sendings = sendings, .triesUsedUp = true};
}

Clock::Duration ControlChannel::sendingTime(const Allowance& allowance) const
{
    const milliseconds answerTimeout(mSettings.answerTimeout.load());
    const Clock::Duration silenceLeft = allowance.patience.silence - mWaitedInVain.load();
    return std::min<Clock::Duration>(std::min(answerTimeout, allowance.patience.sending),
                                     silenceLeft);
}

ControlChannel::Answer ControlChannel::awaitAnswer(const Command& command, TimePoint deadline,
                                                   Allowance& allowance)
{
    std::array<std::uint8_t, kReceiveBufferSize> buffer{};
    for (;;) {
        const net::Received received = mSocket->receive(buffer, deadline);
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
            mLastAnswer = mClock.now();
            mAnsweredUntil = mLastAnswer;
            return answer;
        }
    }
}

ControlChannel::TimePoint ControlChannel::promisedEnd(wire::ByteView payload, Allowance& allowance)
{
    const auto pending = wire::decodePendingAck(payload);
    const TimePoint now = mClock.now();
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
    return mTurns.sleepUntil(mClock.now() + time);
}

bool ControlChannel::close()
{
    if (mClosed.exchange(true)) {
        return false;
    }
    mTurns.close();
    mSocket->wake();
    return true;
}

Status ControlChannel::executeLast(const Command& command)
{
    mTurns.drain();
    mSocket->clear();
    mWaitedInVain = Clock::Duration::zero();
    Allowance allowance{.patience = mLimits.leaving,
                        .deadline = mClock.now() + mLimits.leaving.silence};
    return sendUntilAnswered(command, allowance).answer.status();
}

} // namespace gige::control
