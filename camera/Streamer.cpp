#include "Streamer.h"

#include "PacketArithmetic.h"

#include <algorithm>
#include <array>
#include <thread>
#include <utility>

namespace camera
{

using namespace gige::wire;
using gige::net::PacketSlices;

namespace
{

constexpr std::chrono::milliseconds kPatience{5};      // until resend requests are looked at again
constexpr std::chrono::milliseconds kLongestPause{20}; // between looks at the stop flag
constexpr std::size_t kBlocksKept = 256;               // for resends
constexpr std::size_t kMostResends = 4096;             // requests that wait

std::size_t bytesOf(std::span<const PacketSlices> packets)
{
    std::size_t bytes = 0;
    for (const PacketSlices& packet : packets) {
        bytes += packet.size();
    }
    return bytes;
}

} // namespace

Streamer::Streamer(gige::net::UdpSocket& socket, const CameraOptions& options, Device& device,
                   Faults& faults, CameraLog& log)
    : mSocket(socket),
      mOptions(options),
      mDevice(device),
      mFaults(faults),
      mLog(log),
      mSender(socket, options.send)
{
}

void Streamer::run()
{
    while (!mStop) {
        serveResends();
        sendInTurn(mDevice.nextBlock(kPatience));
    }
}

void Streamer::stop()
{
    mStop = true;
    mDevice.wake();
}

std::span<const std::uint8_t> Streamer::BlockMaker::make(const StreamOrder& order)
{
    if (order.info) {
        mInfo.assign(std::size_t{order.view.width} * order.view.height, 0);
        std::copy_n(order.info->begin(), std::min(mInfo.size(), order.info->size()), mInfo.begin());
        return mInfo;
    }
    if (!mRenderer || mRenderer->view() != order.view) {
        mRenderer.emplace(order.view);
    }
    return mRenderer->render(order.stamp);
}

/// The next block, and behind it one that was held back, which does not wait for more than one
/// turn.
void Streamer::sendInTurn(const std::optional<StreamOrder>& order)
{
    const std::optional<StreamOrder> heldBack = std::exchange(mHeldBack, std::nullopt);
    if (order) {
        const std::optional<FrameFault> fault = mFaults.onFrame(order->position);
        if (fault && fault->kind == FrameFaultKind::Reorder) {
            mHeldBack = order;
        } else {
            sendBlock(*order, fault);
        }
    }
    if (heldBack) {
        sendBlock(*heldBack, std::nullopt);
    }
}

void Streamer::sendBlock(StreamOrder order, const std::optional<FrameFault>& fault)
{
    mLog.leftOut += order.leftOut;
    const auto is = [&fault](FrameFaultKind kind) { return fault && fault->kind == kind; };
    if (is(FrameFaultKind::Lose)) {
        return;
    }
    if (is(FrameFaultKind::JumpCounter)) {
        order.stamp.number += fault->amount;
    }
    remember(order);
    mPackets.make(order, mMaker.make(order));
    mPacer.set({.delay = std::chrono::nanoseconds(order.channel.delay),
                .bytesPerSecond = order.bytesPerSecond,
                .linkRate = mOptions.linkRate});
    if (is(FrameFaultKind::StopMiddle) || is(FrameFaultKind::Silence)) {
        const std::size_t count = std::min<std::size_t>(fault->amount, mPackets.last());
        sendPackets(order, mPackets.all().first(count));
        sleepUntil(Pacer::Clock::now() + fault->pause);
    } else if (mFaults.disturbsPackets()) {
        sendDisturbed(order);
    } else {
        sendPackets(order, mPackets.all());
    }
    ++mLog.blocks;
    if (is(FrameFaultKind::Repeat)) {
        order.blockId = mDevice.takeBlockId();
        remember(order);
        mPackets.make(order, mMaker.make(order));
        sendPackets(order, mPackets.all());
        ++mLog.blocks;
    }
}

void Streamer::sendPackets(const StreamOrder& order, std::span<const PacketSlices> packets)
{
    while (!packets.empty() && !mStop && !mFaults.isSilent()) {
        const std::size_t count = sendDue(order.channel.destination, packets);
        mLog.bytes += bytesOf(packets.first(count));
        packets = packets.subspan(count);
        serveResends();
    }
}

/// Waits until the first packet may go. @return how many went with it
std::size_t Streamer::sendDue(const gige::net::Endpoint& destination,
                              std::span<const PacketSlices> packets)
{
    auto now = Pacer::Clock::now();
    std::size_t count = mPacer.take(now, packets);
    while (count == 0 && !mStop) {
        sleepUntil(mPacer.wakeUp(now));
        now = Pacer::Clock::now();
        count = mPacer.take(now, packets);
    }
    mLog.packets += mSender.send(destination, packets.first(count));
    return count;
}

void Streamer::sendDisturbed(const StreamOrder& order)
{
    mFaults.packetSteps(mPackets.last(), mSteps);
    const auto packets = mPackets.all();
    std::size_t next = 0;
    while (next < mSteps.size() && !mStop) {
        sleepUntil(Pacer::Clock::now() + mSteps[next].pauseBefore);
        // As many as follow each other undisturbed go together.
        const std::uint32_t first = mSteps[next].packetId;
        std::size_t count = 1;
        while (next + count < mSteps.size() && mSteps[next + count].packetId == first + count &&
               mSteps[next + count].pauseBefore.count() == 0) {
            ++count;
        }
        sendPackets(order, packets.subspan(first, count));
        next += count;
    }
}

void Streamer::sleepUntil(Pacer::Clock::time_point end)
{
    while (!mStop && Pacer::Clock::now() < end) {
        std::this_thread::sleep_until(std::min(end, Pacer::Clock::now() + kLongestPause));
    }
}

void Streamer::sendTestPacket(const StreamChannel& channel)
{
    if (!channel.isOpen()) {
        return;
    }
    std::vector<std::uint8_t> packet(channel.packetSize - kIpUdpHeaderSize);
    encode(GvspHeader{.extendedIds = channel.extendedIds}, packet);
    ++mLog.testPackets;
    mSocket.setDontFragment(channel.dontFragment);
    (void)mSocket.send(packet, channel.destination); // too large shows at the host
}

void Streamer::remember(const StreamOrder& order)
{
    mSent.push_back(order);
    if (mResendMade == order.blockId) {
        mResendMade.reset(); // block ids begin anew
    }
    if (mSent.size() > kBlocksKept) {
        mSent.pop_front();
    }
}

void Streamer::resend(const PacketResend& request)
{
    const std::scoped_lock lock(mLock);
    if (mResends.size() < kMostResends) {
        mResends.push_back(request);
        mHasResends = true;
    }
}

void Streamer::serveResends()
{
    if (!mHasResends) {
        return;
    }
    std::vector<PacketResend> requests;
    {
        const std::scoped_lock lock(mLock);
        requests.swap(mResends);
        mHasResends = false;
    }
    for (const PacketResend& request : requests) {
        serve(request);
    }
}

void Streamer::serve(const PacketResend& request)
{
    const auto sent =
        std::ranges::find(mSent.rbegin(), mSent.rend(), request.blockId, &StreamOrder::blockId);
    if (sent == mSent.rend() || request.channel != 0) {
        refuse(request);
        return;
    }
    makeForResend(*sent);
    const std::uint32_t last = std::min(request.lastPacket, mResendPackets.last());
    for (std::uint32_t id = request.firstPacket; id <= last && !mFaults.isSilent(); ++id) {
        if (!mFaults.losesResend()) {
            mResendPackets.markResent(id);
            const auto packet = mResendPackets.all().subspan(id, 1);
            mLog.resentPackets += sendDue(sent->channel.destination, packet);
        }
    }
}

/// Most requests are for several packets of the same block.
void Streamer::makeForResend(const StreamOrder& order)
{
    if (mResendMade != order.blockId) {
        mResendPackets.make(order, mResendMaker.make(order));
        mResendMade = order.blockId;
    }
}

void Streamer::refuse(const PacketResend& request)
{
    const StreamChannel channel = mDevice.channel();
    if (!channel.isOpen() || mFaults.isSilent()) {
        return;
    }
    std::array<std::uint8_t, kGvspExtendedHeaderSize> packet{};
    const GvspHeader header{.status = GvcpStatus::PacketUnavailable,
                            .blockId = request.blockId,
                            .extendedIds = request.extendedIds,
                            .packetId = request.firstPacket};
    const std::size_t size = encode(header, packet);
    (void)mSocket.send(std::span(packet).first(size), channel.destination);
}

} // namespace camera
