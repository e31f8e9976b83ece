#include "StreamReceiver.h"

#include "GvcpPayloads.h"
#include "PacketArithmetic.h"
#include "StackLog.h"
#include "StartThread.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace gige::stream
{

namespace
{

/// Between two attempts to receive from a socket that fails.
constexpr std::chrono::milliseconds kFailurePause{10};
/// Longest time that a flush drops packets for, when they keep coming.
constexpr std::chrono::milliseconds kFlushTime{100};
constexpr std::size_t kPacketHeaders = 36; // bytes, of IP, UDP and the stream

net::Timeout timeoutUntil(std::optional<Time> time)
{
    if (!time) {
        return std::nullopt;
    }
    const auto left = std::chrono::ceil<std::chrono::microseconds>(*time - Clock::now());
    return std::max(left, std::chrono::microseconds(0));
}

} // namespace

std::unique_ptr<StreamReceiver> StreamReceiver::open(const StreamConfig& config,
                                                     std::error_code& error)
{
    auto socket = net::UdpSocket::open(config.local, {}, error);
    if (!socket) {
        return nullptr;
    }
    std::unique_ptr<StreamReceiver> receiver(new StreamReceiver(config, std::move(*socket)));
    if (!receiver->mWaker.isValid()) {
        error = std::make_error_code(std::errc::too_many_files_open);
        return nullptr;
    }
    if (!net::startThread(receiver->mThread, [self = receiver.get()] { self->run(); })) {
        error = std::make_error_code(std::errc::resource_unavailable_try_again);
        return nullptr;
    }
    return receiver;
}

StreamReceiver::StreamReceiver(const StreamConfig& config, net::UdpSocket socket)
    : mDevice(config.device),
      mChannel(config.channel),
      mDevicePort(config.devicePort),
      mSocket(std::move(socket)),
      mSocketBuffer(mSocket.setReceiveBuffer(kSocketBufferSize)),
      mGathering(mSocketBuffer),
      mReport(config.device)
{
    if (mSocketBuffer < kSocketBufferSize) {
        log::say(net::toText(mDevice), log::smallBuffer(mSocketBuffer, kSocketBufferSize));
    }
    apply(config.settings);
    mQueueWakes = config.settings.firstPacketTimeout.count() > 0;
    mBatches.useRing(config.ring, config.device);
}

StreamReceiver::~StreamReceiver()
{
    if (mThread.joinable()) {
        mStop = true;
        mWaker.wake();
        mThread.join();
    }
    // What was being filled joins the completed ones, which are then let go with all others.
    mAssembler.abort();
    mQueue.releaseAll();
}

void StreamReceiver::setSettings(const StreamSettings& settings)
{
    mQueueWakes = settings.firstPacketTimeout.count() > 0;
    command([&](Commands& commands) { commands.settings = settings; });
}

bool StreamReceiver::queue(StreamBuffer& buffer)
{
    return wakeIf(mQueue.queue(buffer, Clock::now()));
}

bool StreamReceiver::queueFirst(StreamBuffer& buffer)
{
    return wakeIf(mQueue.queueFirst(buffer, Clock::now()));
}

/// A buffer that was queued may change until when the receiving thread waits.
bool StreamReceiver::wakeIf(bool queued)
{
    mIsFed.store(true, std::memory_order_relaxed);
    if (queued && mQueueWakes) {
        mWaker.wake();
    }
    return queued;
}

void StreamReceiver::setAcquiring(bool acquiring)
{
    mAcquiring = acquiring ? Acquiring::Begins : Acquiring::Ends;
    mWaker.wake();
}

void StreamReceiver::abortQueued()
{
    command([](Commands& commands) { commands.abort = true; });
}

void StreamReceiver::flushPackets()
{
    command([](Commands& commands) { commands.flush = true; });
}

/// Has the receiving thread carry out a command, and waits for it.
template <typename Change>
void StreamReceiver::command(Change change)
{
    std::unique_lock lock(mCommandLock);
    change(mCommands);
    const std::uint64_t ticket = ++mCommandsGiven;
    mHasCommands = true;
    mWaker.wake();
    mCommandServed.wait(lock, [&] { return mCommandsServed >= ticket; });
}

void StreamReceiver::run()
{
    while (!mStop) {
        serveCommands();
        serveAcquiring();
        try {
            receiveNext();
        } catch (const std::bad_alloc&) {
            std::this_thread::sleep_for(kFailurePause); // the packets are lost
        }
    }
    report(Clock::now());
}

void StreamReceiver::receiveNext()
{
    const net::ReceiveStatus status = mBatches.receive(timeToWait(), &mWaker);
    const Time now = Clock::now();
    Taken taken;
    if (status == net::ReceiveStatus::Data) {
        mReport.notePackets(now);
        taken = placeReceived(now);
    } else if (status == net::ReceiveStatus::Woken) {
        mWaker.clear();
    } else if (status == net::ReceiveStatus::Failed) {
        std::this_thread::sleep_for(kFailurePause);
    }
    mAssembler.onTime(now);
    mStatistics.publish(mAssembler.statistics());
    mRingInUse.store(mBatches.isRingInUse(), std::memory_order_relaxed);
    if (now >= mReport.nextTime()) {
        report(now);
    }
    gather(taken, now);
}

net::Timeout StreamReceiver::timeToWait()
{
    const Time report = mReport.nextTime();
    const Time next = std::min(mAssembler.nextTime().value_or(Time::max()), report);
    return timeoutUntil(next == Time::max() ? std::nullopt : std::optional(next));
}

void StreamReceiver::report(Time now)
{
    mReport.setFed(mIsFed);
    mReport.tell(totals(), now);
}

StreamReport::Totals StreamReceiver::totals() const
{
    const std::size_t dataSize = mAssembler.dataSize();
    return {.counted = mAssembler.statistics(),
            .blocksTooLong = mBlocksTooLong,
            .lost = mAssembler.lost(),
            .resends = resends(),
            .isRingInUse = mBatches.isRingInUse(),
            .packetSize = dataSize == 0 ? 0 : dataSize + kPacketHeaders};
}

Resends StreamReceiver::resends() const
{
    if (mPendingResends == 0) {
        return Resends::Off;
    }
    return mDeviceResends ? Resends::On : Resends::NotByDevice;
}

void StreamReceiver::serveAcquiring()
{
    if (mAcquiring.load(std::memory_order_relaxed) == Acquiring::Unchanged) {
        return;
    }
    if (mAcquiring.exchange(Acquiring::Unchanged) == Acquiring::Begins) {
        mReport.expectPackets(Clock::now());
    } else {
        mReport.expectNoPackets();
    }
}

Taken StreamReceiver::placeReceived(Time now)
{
    Taken taken;
    mBatches.forEach([&](wire::ByteView datagram, const net::Endpoint& source) {
        onDatagram(datagram, source, now);
        ++taken.packets;
        taken.bytes += datagram.size();
    });
    return taken;
}

/// Lets packets gather, as long as that delays nothing.
void StreamReceiver::gather(const Taken& taken, Time now)
{
    auto pause = mGathering.pauseAfter(taken, mAssembler.packetsToCome(), now);
    if (pause.count() == 0 || mBatches.mayHaveMore()) {
        return;
    }
    if (const auto due = timeoutUntil(mAssembler.nextTime())) {
        pause = std::min(pause, *due);
    }
    if (mBatches.pause(pause, mWaker) == net::ReceiveStatus::Woken) {
        mWaker.clear();
    }
}

void StreamReceiver::serveCommands()
{
    if (!mHasCommands) {
        return;
    }
    {
        const std::lock_guard lock(mCommandLock);
        // Before they are taken: a command given from here on sets it again.
        mHasCommands = false;
        const Commands commands = std::exchange(mCommands, {});
        if (commands.settings) {
            apply(*commands.settings);
        }
        if (commands.flush) {
            dropReceived();
        }
        if (commands.abort) {
            report(Clock::now()); // those that find no buffer from here on are not missed
            mIsFed = false;
            mAssembler.abort();
            mQueue.abort();
        }
        // Whoever gave the command reads what came of it.
        mStatistics.publish(mAssembler.statistics());
        mCommandsServed = mCommandsGiven;
    }
    mCommandServed.notify_all();
}

void StreamReceiver::apply(const StreamSettings& settings)
{
    mPendingResends = settings.maximumPendingResends;
    mAssembler.setSettings(settings);
    mGathering.setLimits(settings.maximumPendingResends > 0 ? kLimitsWithResends
                                                            : kLimitsWithoutResends);
}

void StreamReceiver::dropReceived()
{
    const Time limit = Clock::now() + kFlushTime;
    while (Clock::now() < limit &&
           mBatches.receive(std::chrono::microseconds(0), nullptr) == net::ReceiveStatus::Data) {
        mBatches.forEach(
            [this](wire::ByteView, const net::Endpoint&) { mAssembler.countIgnored(); });
    }
}

void StreamReceiver::onDatagram(wire::ByteView datagram, const net::Endpoint& source, Time now)
{
    const auto header = isFromDevice(source) ? wire::decodeGvspHeader(datagram) : std::nullopt;
    if (!header) {
        mAssembler.countIgnored();
        return;
    }
    // A device that tells no port (SCSP) is known by its first packet's.
    if (mDevicePort.load(std::memory_order_relaxed) == 0) {
        mDevicePort = source.port;
    }
    // Fired while the packet size was sought (bit 31 of SCPS); of no block.
    if (wire::isTestPacket(*header)) {
        return;
    }
    mAssembler.onPacket(*header, datagram.subspan(header->size()), now);
}

bool StreamReceiver::isFromDevice(const net::Endpoint& source) const
{
    const std::uint16_t port = mDevicePort.load(std::memory_order_relaxed);
    return source.address == mDevice && (port == 0 || port == source.port);
}

void StreamReceiver::complete(StreamBuffer& buffer)
{
    mBlocksTooLong += buffer.info().result == BlockResult::BufferTooSmall ? 1U : 0U;
    // First, so that whoever retrieves the buffer finds it counted.
    mStatistics.publish(mAssembler.statistics());
    mQueue.complete(buffer);
}

void StreamReceiver::requestResend(const ResendRequest& request)
{
    mRequestId = wire::nextRequestId(mRequestId);
    std::array<std::uint8_t, wire::kMaxPacketResendDatagram> datagram{};
    const std::size_t size = wire::encodeDatagram({.extendedIds = request.extendedIds,
                                                   .channel = mChannel,
                                                   .blockId = request.blockId,
                                                   .firstPacket = request.packets.first,
                                                   .lastPacket = request.packets.last},
                                                  mRequestId, datagram);
    // A request that cannot be sent is one that is not answered: it is repeated.
    (void)mSocket.send(wire::ByteView(datagram).first(size), {mDevice, wire::kGvcpPort});
}

} // namespace gige::stream
