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

/// Longest time taken from one PENDING_ACK, and how many of them one command may get.
constexpr milliseconds kPendingAckCap{10'000};
constexpr int kMaxPendingAcks = 60;
/// Pause before a device that answered BUSY is asked again.
constexpr milliseconds kBusyPause{100};
/// Wait for the answer to a try of the last command. Nobody wants to wait long for a goodbye.
constexpr milliseconds kLastAnswerTimeout{200};
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

std::unique_ptr<ControlChannel>
ControlChannel::open(net::Ipv4Address local, net::Ipv4Address device, const LinkSettings& settings)
{
    auto socket = net::UdpSocket::open({.address = local});
    if (!socket) {
        return nullptr;
    }
    std::unique_ptr<ControlChannel> channel(new ControlChannel(
        std::move(*socket), {.address = device, .port = wire::kGvcpPort}, settings));
    return channel->mWaker.isValid() ? std::move(channel) : nullptr;
}

ControlChannel::ControlChannel(net::UdpSocket socket, net::Endpoint device,
                               const LinkSettings& settings)
    : mSocket(std::move(socket)),
      mDevice(device),
      mSettings(settings),
      mRequestId(randomRequestId())
{
}

ControlValue<wire::Bytes> ControlChannel::execute(const Command& command, TimePoint deadline)
{
    for (std::uint32_t retries = 0;; ++retries) {
        Exchange done = exchange(command, deadline);
        // BUSY says that the command was not run, so that it may be asked anew. But if it was sent
        // twice, the first one may run now, and be what the device is busy with.
        const bool askAgain = done.answer.result().refused(wire::GvcpStatus::Busy) &&
                              retries < mSettings.commandRetryCount &&
                              (done.sendings == 1 || !writes(command.code));
        if (!askAgain) {
            return std::move(done.answer);
        }
        if (!sleep(kBusyPause)) {
            return ControlStatus::NotConnected;
        }
    }
}

ControlChannel::Exchange ControlChannel::exchange(const Command& command, TimePoint deadline)
{
    Exchange done{.answer = ControlStatus::Timeout};
    {
        const Turn turn(mTurns, deadline);
        if (!turn.granted()) {
            return {.answer = mClosed ? ControlStatus::NotConnected : ControlStatus::Timeout};
        }
        done = sendUntilAnswered(command, std::nullopt, deadline);
    }
    if (done.triesUsedUp && mSettings.disconnectOnAnswerTimeout != 0) {
        close();
    }
    return done;
}

ControlChannel::Exchange
ControlChannel::sendUntilAnswered(const Command& command, std::optional<milliseconds> answerTimeout,
                                  TimePoint deadline)
{
    mRequestId = wire::nextRequestId(mRequestId);
    mPendingAcks = 0;
    const wire::Bytes datagram =
        wire::commandDatagram(command.code, wire::kGvcpAckRequired, mRequestId, command.payload);
    std::uint32_t sendings = 0;
    while (sendings <= mSettings.commandRetryCount) {
        if (Clock::now() >= deadline) {
            return {.answer = ControlStatus::Timeout, .sendings = sendings};
        }
        if (!mSocket.send(datagram, mDevice)) {
            return {.answer = ControlStatus::NetworkError, .sendings = sendings};
        }
        ++sendings;
        const milliseconds wait =
            answerTimeout.value_or(milliseconds(mSettings.answerTimeout.load()));
        if (Answer answer = awaitAnswer(command, std::min(deadline, Clock::now() + wait))) {
            return {.answer = std::move(*answer), .sendings = sendings};
        }
    }
    return {.answer = ControlStatus::Timeout, .sendings = sendings, .triesUsedUp = true};
}

ControlChannel::Answer ControlChannel::awaitAnswer(const Command& command, TimePoint deadline)
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
            return ControlStatus::NotConnected;
        case net::ReceiveStatus::Failed:
            return ControlStatus::NetworkError;
        case net::ReceiveStatus::Data:
            break;
        }
        const auto ack = wire::decodeAck(wire::ByteView(buffer).first(received.size));
        if (received.source != mDevice || !ack || ack->header.requestId != mRequestId) {
            continue;
        }
        if (ack->header.command == wire::GvcpCommand::PendingAck) {
            deadline = std::max(deadline, promisedEnd(ack->payload));
        } else if (Answer answer = answerIn(*ack, command)) {
            mAnsweredUntil = Clock::now();
            return answer;
        }
    }
}

ControlChannel::TimePoint ControlChannel::promisedEnd(wire::ByteView payload)
{
    const auto pending = wire::decodePendingAck(payload);
    const TimePoint now = Clock::now();
    if (!pending || ++mPendingAcks > kMaxPendingAcks) {
        return now;
    }
    const TimePoint end = now + std::min(pending->timeToCompletion, kPendingAckCap);
    mAnsweredUntil = end;
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

ControlResult ControlChannel::executeLast(const Command& command)
{
    mTurns.drain();
    mWaker.clear();
    return sendUntilAnswered(command, kLastAnswerTimeout, TimePoint::max()).answer.result();
}

} // namespace gige::control
