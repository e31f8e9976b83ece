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

void BlockAssembler::onPacket(const wire::GvspHeader& header, wire::ByteView body, Time now)
{
    if (isError(header.status)) {
        onErrorPacket(header);
        return;
    }
    Slot* const target = isBlockPacket(header.format) ? slotFor(header, body, now) : nullptr;
    mSequence.notePacket(now);
    if (target == nullptr) {
        ++mStatistics.packetsIgnored;
        return;
    }
    const Placement placement = place(*target, header, body);
    if (placement == Placement::Stored) {
        target->block.touch(now);
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
    for (std::size_t age = 0; age < mOpenCount; ++age) {
        const Slot& open = slot(age);
        if (age == 0) {
            takeEarlier(next, limitOf(open.block));
        }
        if (mSettings.maximumPendingResends > 0 && !open.block.isFinished()) {
            takeEarlier(next, open.resends.nextTime(open.block));
        }
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
    const BlockOrder order =
        found != nullptr ? BlockOrder::Restart : mSequence.judge(header, body, now);
    if (order == BlockOrder::Late) {
        return nullptr;
    }
    if (order == BlockOrder::Restart) {
        abandonAll();
    }
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
    const auto behind = static_cast<std::uint64_t>(distance);
    for (std::size_t age = std::min<std::uint64_t>(behind + 1, mOpenCount); age-- > 0;) {
        if (slot(age).block.id() == header.blockId) {
            return &slot(age);
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
    mHint = closed.block.hint();
    mStatistics.packetsResent += closed.resends.forgetArrived(closed.block);
    if (result == BlockResult::Ok) {
        ++mStatistics.blocksReceived;
        mSequence.noteComplete(info.blockId);
    } else if (result != BlockResult::Aborted) {
        ++mStatistics.blocksFailed;
        mStatistics.packetsMissing += info.missingPackets;
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

/// A packet without usable data: mostly the answer to a resend request.
void BlockAssembler::onErrorPacket(const wire::GvspHeader& header)
{
    ++mStatistics.packetsIgnored;
    Slot* const target = findOpen(header);
    if (target == nullptr) {
        return;
    }
    switch (header.status) {
    case GvcpStatus::PacketUnavailable:
    case GvcpStatus::PacketRemoved:
        target->resends.giveUp(header.packetId);
        break;
    case GvcpStatus::PacketAndPreviousRemoved:
        target->resends.giveUpThrough(header.packetId);
        break;
    case GvcpStatus::DataOverrun:
        target->block.setDamaged();
        break;
    default: // such as PacketNotYetAvailable: asked again when it is due
        break;
    }
}

void BlockAssembler::requestResends(Time now)
{
    const std::uint32_t limit = mSettings.maximumPendingResends;
    if (limit == 0) {
        return;
    }
    std::uint32_t pending = 0;
    for (std::size_t age = 0; age < mOpenCount; ++age) {
        if (slot(age).block.isFinished()) {
            continue; // waits for those before it
        }
        mStatistics.packetsResent += slot(age).resends.forgetArrived(slot(age).block);
        pending += slot(age).resends.pending();
    }
    for (std::size_t age = 0; age < mOpenCount; ++age) {
        const OpenBlock& block = slot(age).block;
        if (block.isFinished()) {
            continue;
        }
        ResendPlanner& resends = slot(age).resends;
        const std::uint32_t before = resends.pending();
        const bool cutOff = age + 1 < mOpenCount;
        mRanges.clear();
        resends.plan(block, mSettings, cutOff, limit - std::min(pending, limit), now, mRanges);
        pending += resends.pending() - before;
        for (const PacketRange& range : mRanges) {
            mHost.requestResend({block.id(), block.extendedIds(), range});
        }
    }
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
