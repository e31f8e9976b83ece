#include "BlockAssembler.h"

#include <algorithm>

namespace gige::stream
{

namespace
{

using wire::GvcpStatus;
using wire::GvspFormat;

bool isBlockPacket(GvspFormat format)
{
    return format == GvspFormat::Leader || format == GvspFormat::Payload ||
           format == GvspFormat::Trailer;
}

void takeEarlier(std::optional<Time>& next, std::optional<Time> other)
{
    if (other) {
        next = next ? std::min(*next, *other) : *other;
    }
}

} // namespace

void BlockAssembler::setSettings(const StreamSettings& settings)
{
    mSettings = settings;
    for (std::size_t age = 0; age < mOpenCount; ++age) {
        wakeResends(slot(age));
    }
}

void BlockAssembler::onPacket(const wire::GvspHeader& header, wire::ByteView body, Time now)
{
    // Its body is no data, so that it neither opens a block nor keeps one alive.
    if (isError(header.status)) {
        onErrorPacket(header);
        return;
    }
    Slot* const target = isBlockPacket(header.format) ? slotFor(header, body, now) : nullptr;
    // After it was judged: the silence before a packet is what tells a restart from a late one.
    mSequence.notePacket(now);
    if (target == nullptr) {
        ++mStatistics.packetsIgnored;
        return;
    }
    const Placement placement = place(*target, header, body);
    if (placement == Placement::Stored) {
        onStored(*target, header.packetId, now);
    }
    count(placement, header, body.size());
    if (target->block.isFinished()) {
        closeSettled();
    }
}

void BlockAssembler::onTime(Time now)
{
    closeSettled();
    while (mOpenCount > 0) {
        // The oldest one's limit only: those behind it are completed after it anyway.
        const auto limit = limitOf(slot(0).block);
        if (!limit || now < *limit) {
            break;
        }
        closeOldest();
        closeSettled();
    }
    requestResends(now);
    closeSettled();
    limitFirstPacketWait(now);
}

std::optional<Time> BlockAssembler::nextTime()
{
    std::optional<Time> next = firstPacketLimit();
    if (mOpenCount > 0) {
        takeEarlier(next, limitOf(slot(0).block));
    }
    if (mSettings.maximumPendingResends > 0) {
        takeEarlier(next, mTurns.next());
    }
    return next;
}

std::uint32_t BlockAssembler::packetsToCome() const
{
    if (mOpenCount == 0) {
        return 0;
    }
    const OpenBlock& newest = slot(mOpenCount - 1).block;
    const std::uint32_t last = newest.expectedTrailerId();
    return last > newest.highestId() ? last - newest.highestId() : 0;
}

void BlockAssembler::abort()
{
    while (mOpenCount > 0) {
        closeOldest(BlockResult::Aborted);
    }
}

/// The open block that the packet belongs to, or a new one; null if it belongs nowhere.
BlockAssembler::Slot* BlockAssembler::slotFor(const wire::GvspHeader& header, wire::ByteView body,
                                              Time now)
{
    Slot* const found = findOpen(header);
    if (found != nullptr && !isOtherLeader(*found, header, body)) {
        return found;
    }
    // A device that starts anew counts from 1 again, and may meet an open block of its own.
    const BlockOrder order =
        found != nullptr ? BlockOrder::Restart : mSequence.judge(header, body, now);
    if (order == BlockOrder::Late) {
        return nullptr;
    }
    if (order == BlockOrder::Restart) {
        abandonAll();
    }
    // The second block before this one has had its time now, and gives its slot back.
    mSequence.begin(header, order);
    closeSettled();
    return open(header, now);
}

BlockAssembler::Slot* BlockAssembler::findOpen(const wire::GvspHeader& header)
{
    if (mOpenCount == 0 || slot(0).block.extendedIds() != header.extendedIds) {
        return nullptr;
    }
    const std::int64_t distance =
        blockDistance(slot(0).block.id(), header.blockId, header.extendedIds);
    if (distance < 0) {
        return nullptr;
    }
    // Right there, but for blocks that were lost altogether.
    std::size_t begin = 0;
    std::size_t end = std::min<std::uint64_t>(static_cast<std::uint64_t>(distance) + 1, mOpenCount);
    for (std::size_t age = end - 1; begin < end; age = begin + (end - begin) / 2) {
        const std::uint64_t id = slot(age).block.id();
        if (id == header.blockId) {
            return &slot(age);
        }
        if (blockDistance(slot(0).block.id(), id, header.extendedIds) < distance) {
            begin = age + 1;
        } else {
            end = age;
        }
    }
    return nullptr;
}

/// A second leader under the id of an open block, and no repetition of its own.
bool BlockAssembler::isOtherLeader(const Slot& slot, const wire::GvspHeader& header,
                                   wire::ByteView body)
{
    if (header.format != GvspFormat::Leader || !slot.block.leader()) {
        return false;
    }
    const auto leader = wire::decodeLeader(body);
    return leader && leader->timestamp != slot.block.leader()->timestamp;
}

/// Begins a block in the next buffer; null if none is queued.
BlockAssembler::Slot* BlockAssembler::open(const wire::GvspHeader& header, Time now)
{
    if (mOpenCount == mSlots.size()) {
        closeOldest();
        closeSettled();
    }
    StreamBuffer* const buffer = mHost.takeBuffer();
    if (buffer == nullptr) {
        ++mStatistics.blocksDropped;
        return nullptr;
    }
    if (mOpenCount > 0) {
        wakeResends(slot(mOpenCount - 1)); // it is cut off
    }
    Slot& opened = slot(mOpenCount++);
    opened.block.begin(*buffer, header.blockId, header.extendedIds, now, mHint);
    opened.resends.begin();
    if (mOpenCount > 2 && !mHost.waitingSince()) {
        // Else the next block, and all of it, would be lost for want of a buffer.
        closeOldest();
        closeSettled();
    }
    return &opened;
}

void BlockAssembler::abandonAll()
{
    while (mOpenCount > 0) {
        closeOldest();
    }
}

void BlockAssembler::closeSettled()
{
    while (mOpenCount > 0 && isSettled(slot(0))) {
        closeOldest();
    }
}

/// A block ends when it is finished; incomplete, when the second block after it has begun, or as
/// soon after that as resends cannot complete it.
bool BlockAssembler::isSettled(const Slot& slot) const
{
    if (slot.block.isFinished()) {
        return true;
    }
    const bool mayHeal = mSettings.maximumPendingResends > 0 && slot.block.mayComplete() &&
                         !slot.resends.hasGivenUp();
    return !mayHeal && mSequence.distanceToNewest(slot.block.id()) > 1;
}

void BlockAssembler::closeOldest()
{
    closeOldest(resultOf(slot(0)));
}

void BlockAssembler::closeOldest(BlockResult result)
{
    Slot& closed = slot(0);
    const BlockInfo info = closed.block.info(result);
    // Blocks of one stream are alike: what is known of this one places the packets of the next even
    // if its leader is lost.
    mHint = closed.block.hint();
    endResends(closed);
    if (result == BlockResult::Ok) {
        ++mStatistics.blocksReceived;
        mSequence.noteComplete(info.blockId);
    } else if (result != BlockResult::Aborted) {
        ++mStatistics.blocksFailed;
        mStatistics.packetsMissing += info.missingPackets;
        if (result != BlockResult::BufferTooSmall) {
            mTally.addMissing(closed.block);
        }
    }
    mOldest = (mOldest + 1) % mSlots.size();
    --mOpenCount;
    StreamBuffer& buffer = closed.block.buffer();
    buffer.setInfo(info);
    mHost.complete(buffer);
}

BlockResult BlockAssembler::resultOf(const Slot& slot)
{
    const BlockResult result = slot.block.result();
    // A host tells by this whether more resends would have helped.
    return result == BlockResult::ImageError && slot.resends.hasAsked()
               ? BlockResult::ResendsFailure
               : result;
}

Placement BlockAssembler::place(Slot& slot, const wire::GvspHeader& header, wire::ByteView body)
{
    if (header.format == GvspFormat::Payload) {
        return slot.block.addData(header.packetId, body);
    }
    if (header.format == GvspFormat::Trailer) {
        return slot.block.addTrailer(header.packetId);
    }
    const auto leader = wire::decodeLeader(body);
    if (!leader || header.packetId != 0) {
        return Placement::Refused;
    }
    mSequence.noteLeader(header.blockId, leader->timestamp);
    return slot.block.addLeader(*leader);
}

void BlockAssembler::count(Placement placement, const wire::GvspHeader& header, std::size_t bytes)
{
    switch (placement) {
    case Placement::Stored:
        ++mStatistics.packetsReceived;
        mStatistics.bytesReceived += header.format == GvspFormat::Payload ? bytes : 0;
        break;
    case Placement::Duplicate:
        ++mStatistics.packetsDuplicated;
        break;
    case Placement::Refused:
        ++mStatistics.packetsIgnored;
        break;
    }
}

void BlockAssembler::onStored(Slot& slot, std::uint32_t packetId, Time now)
{
    slot.block.touch(now);
    changeResends(slot, [&](ResendPlanner& resends) {
        if (resends.noteArrived(packetId)) {
            ++mStatistics.packetsResent;
            mTally.addCame(slot.block, packetId);
        }
    });
    if (slot.block.isFinished()) {
        endResends(slot);
    }
    wakeResends(slot);
}

/// A packet without usable data: mostly the answer to a resend request.
void BlockAssembler::onErrorPacket(const wire::GvspHeader& header)
{
    ++mStatistics.packetsIgnored;
    Slot* const target = findOpen(header);
    if (target == nullptr) {
        return;
    }
    switch (header.status) {
        // 0x800C, 0x8012: the device keeps this packet no longer, or never had it.
    case GvcpStatus::PacketUnavailable:
    case GvcpStatus::PacketRemoved:
        changeResends(*target, [&](ResendPlanner& resends) { resends.giveUp(header.packetId); });
        break;
        // 0x8011: its memory has been overwritten up to here.
    case GvcpStatus::PacketAndPreviousRemoved:
        changeResends(*target,
                      [&](ResendPlanner& resends) { resends.giveUpThrough(header.packetId); });
        break;
        // 0x800D: the sensor was faster than the device could send; the block has a hole that no
        // resend fills.
    case GvcpStatus::DataOverrun:
        target->block.setDamaged();
        break;
    default: // such as PacketNotYetAvailable: asked again when it is due
        break;
    }
}

/// The oldest block first, as far as the budget goes.
void BlockAssembler::requestResends(Time now)
{
    if (mSettings.maximumPendingResends == 0) {
        return;
    }
    const auto next = [&](std::size_t index) {
        return mTurns.first(index, now, resendBudget() > 0);
    };
    // The slots are a ring that may run over their end.
    for (std::size_t i = next(mOldest); i < mSlots.size(); i = next(i + 1)) {
        requestResends(i, now);
    }
    for (std::size_t i = next(0); i < mOldest; i = next(i + 1)) {
        requestResends(i, now);
    }
}

void BlockAssembler::requestResends(std::size_t index, Time now)
{
    Slot& open = mSlots[index];
    // Nothing comes by itself behind the beginning of the next block.
    const bool cutOff = &open != &slot(mOpenCount - 1);
    changeResends(open, [&](ResendPlanner& resends) {
        resends.plan(open.block, mSettings, cutOff, resendBudget(), now, mRanges);
    });
    mTurns.wait(index, open.resends.nextTime(open.block),
                open.resends.wantsBudget() && !open.block.isTooLong(), now);
    for (const PacketRange& range : mRanges) {
        mHost.requestResend({open.block.id(), open.block.extendedIds(), range});
    }
}

/// Has the block looked at for resends the next time, unless it only waits for those before it.
void BlockAssembler::wakeResends(const Slot& slot)
{
    if (!slot.block.isFinished()) {
        mTurns.wake(indexOf(slot));
    }
}

void BlockAssembler::endResends(Slot& slot)
{
    changeResends(slot, [](ResendPlanner& resends) { resends.stop(); });
    mTurns.forget(indexOf(slot));
}

/// Packets that may newly come under re-request.
std::uint32_t BlockAssembler::resendBudget() const
{
    const std::uint32_t limit = mSettings.maximumPendingResends;
    return limit - std::min(mPendingResends, limit);
}

/// Whatever is done to a block's resends, the sum of the pending ones follows.
template <typename Change>
void BlockAssembler::changeResends(Slot& slot, Change change)
{
    const std::uint32_t before = slot.resends.pending();
    change(slot.resends);
    mPendingResends += slot.resends.pending() - before;
}

/// A buffer that waits too long for a block to begin is given back.
void BlockAssembler::limitFirstPacketWait(Time now)
{
    const auto limit = firstPacketLimit();
    StreamBuffer* const buffer = limit && now >= *limit ? mHost.takeBuffer() : nullptr;
    if (buffer != nullptr) {
        mWaitingFrom = now;
        buffer->setInfo({.result = BlockResult::TimedOut});
        mHost.complete(*buffer);
    }
}

std::optional<Time> BlockAssembler::firstPacketLimit()
{
    if (mSettings.firstPacketTimeout.count() == 0 || mOpenCount > 0) {
        return std::nullopt;
    }
    const auto since = mHost.waitingSince();
    if (!since) {
        return std::nullopt;
    }
    // A host may queue long before it starts the camera, and buffers time out one after the other,
    // not all at once.
    return std::max({*since, mSequence.lastPacket(), mWaitingFrom}) + mSettings.firstPacketTimeout;
}

std::optional<Time> BlockAssembler::limitOf(const OpenBlock& block) const
{
    std::optional<Time> limit;
    if (mSettings.imageTimeout.count() > 0) {
        limit = block.firstPacketTime() + mSettings.imageTimeout;
    }
    if (mSettings.packetTimeout.count() > 0) {
        takeEarlier(limit, block.lastPacketTime() + mSettings.packetTimeout);
    }
    return limit;
}

} // namespace gige::stream
