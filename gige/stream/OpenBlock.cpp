#include "OpenBlock.h"

#include "PacketArithmetic.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <utility>

namespace gige::stream
{

namespace
{

constexpr std::uint32_t kBitsPerWord = 64;
/// The largest id stands for "to the end" in resend requests.
constexpr std::uint32_t kMaxPacketId = std::numeric_limits<std::uint32_t>::max() - 1;

} // namespace

void OpenBlock::begin(StreamBuffer& buffer, std::uint64_t id, bool extendedIds, Time now,
                      const BlockHint& hint)
{
    mBuffer = &buffer;
    mId = id;
    mExtendedIds = extendedIds;
    mFirstPacket = now;
    mLastPacket = now;
    mHint = hint;
    mLeader.reset();
    mTrailerId = 0;
    mDataCount = 0;
    mHighestId = 0;
    mShortId = 0;
    mDataSize = 0;
    mEnd = 0;
    mTooLong = false;
    mDamaged = false;
    // Keeps its memory: the receive path allocates none.
    mReceived.clear();
}

Placement OpenBlock::addLeader(const wire::GvspLeader& leader)
{
    if (mLeader) {
        return Placement::Duplicate;
    }
    mLeader = leader;
    return Placement::Stored;
}

Placement OpenBlock::addData(std::uint32_t packetId, wire::ByteView data)
{
    // Packet 0 is the leader, and no data come behind the trailer.
    if (packetId == 0 || packetId > kMaxPacketId || data.empty() ||
        (mTrailerId != 0 && packetId >= mTrailerId)) {
        return Placement::Refused;
    }
    if (has(packetId)) {
        return Placement::Duplicate;
    }
    if (mDataSize == 0) {
        chooseDataSize(packetId, data.size());
    } else if (data.size() > mDataSize && !growDataSize(data.size())) {
        mDamaged = true;
        return Placement::Refused;
    }
    // One short packet is regular, at the end. Of two, one has lost a part.
    if (data.size() < mDataSize) {
        mDamaged = mDamaged || mShortId != 0;
        mShortId = packetId;
    }
    mHighestId = std::max(mHighestId, packetId);
    const std::uint64_t offset = wire::dataOffset(packetId, mDataSize);
    const std::uint64_t capacity = mBuffer->memory().size();
    if (offset + data.size() > capacity) {
        mTooLong = true;
    }
    // The front of a block that is too long is the host's all the same.
    if (offset < capacity) {
        mark(packetId);
        const auto size =
            static_cast<std::size_t>(std::min<std::uint64_t>(data.size(), capacity - offset));
        std::memcpy(mBuffer->memory().data() + offset, data.data(), size);
        mEnd = std::max(mEnd, offset + size);
    }
    return Placement::Stored;
}

Placement OpenBlock::addTrailer(std::uint32_t packetId)
{
    if (packetId == 0 || packetId > kMaxPacketId) {
        return Placement::Refused;
    }
    if (mTrailerId != 0) {
        return mTrailerId == packetId ? Placement::Duplicate : Placement::Refused;
    }
    // The trailer has the highest id of its block.
    mDamaged = mDamaged || mHighestId >= packetId;
    mTrailerId = packetId;
    mHighestId = std::max(mHighestId, packetId);
    checkLength();
    return Placement::Stored;
}

BlockResult OpenBlock::result() const
{
    if (mTooLong) {
        return BlockResult::BufferTooSmall;
    }
    // The short packet has to be the last, else the places of the others are wrong.
    const bool consistent = !mDamaged && (mShortId == 0 || mShortId + 1 == mTrailerId);
    return isFinished() && consistent ? BlockResult::Ok : BlockResult::ImageError;
}

bool OpenBlock::has(std::uint32_t packetId) const
{
    if (packetId == 0) {
        return mLeader.has_value();
    }
    if (packetId == mTrailerId) {
        return true;
    }
    const std::uint32_t bit = packetId - 1;
    const std::size_t word = bit / kBitsPerWord;
    return word < mReceived.size() && ((mReceived[word] >> (bit % kBitsPerWord)) & 1) != 0;
}

std::uint32_t OpenBlock::findMissing(std::uint32_t from, std::uint32_t end) const
{
    if (from == 0 && from < end && !mLeader) {
        return 0;
    }
    // The leader and the trailer have no bit of their own.
    const std::uint32_t found = findData(false, std::max(from, 1U), end);
    return found < end && found == mTrailerId ? findData(false, found + 1, end) : found;
}

std::uint32_t OpenBlock::findReceived(std::uint32_t from, std::uint32_t end) const
{
    if (from == 0 && from < end && mLeader) {
        return 0;
    }
    const std::uint32_t found = findData(true, std::max(from, 1U), end);
    return mTrailerId >= from && mTrailerId != 0 ? std::min(found, mTrailerId) : found;
}

std::uint32_t OpenBlock::expectedTrailerId() const
{
    if (mTrailerId != 0) {
        return mTrailerId;
    }
    const std::size_t dataSize = mDataSize != 0 ? mDataSize : mHint.dataSize;
    const std::uint64_t bytes = expectedBytes();
    if (dataSize == 0 || bytes == 0) {
        return 0;
    }
    // What is longer than the buffer has no place in it anyway.
    const std::uint64_t count =
        wire::dataPacketCount(std::min<std::uint64_t>(bytes, mBuffer->memory().size()), dataSize);
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>(std::max<std::uint64_t>(count, mHighestId), kMaxPacketId) + 1);
}

std::uint32_t OpenBlock::missingPackets() const
{
    if (mTooLong) {
        return 0; // what lies behind the buffer's end is not counted
    }
    const std::uint64_t all = std::uint64_t{std::max(expectedTrailerId(), mHighestId)} + 1;
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>(all - std::min(packetCount(), all), kMaxPacketId));
}

BlockHint OpenBlock::hint() const
{
    return {.dataSize = mDataSize != 0 ? mDataSize : mHint.dataSize,
            .blockBytes = result() == BlockResult::Ok ? mEnd : mHint.blockBytes};
}

BlockInfo OpenBlock::info(BlockResult result) const
{
    BlockInfo info{
        .result = result, .blockId = mId, .bytes = mEnd, .missingPackets = missingPackets()};
    if (mLeader) {
        info.timestamp = mLeader->timestamp;
        info.payloadType = mLeader->type;
        info.image = mLeader->image;
    }
    return info;
}

/// The first data packet fixes the size, unless it looks like the short one at the block's end.
void OpenBlock::chooseDataSize(std::uint32_t packetId, std::size_t size)
{
    const bool isLast = packetId > 1 && size < mHint.dataSize &&
                        wire::dataOffset(packetId, mHint.dataSize) + size == expectedBytes();
    const std::size_t dataSize = isLast ? mHint.dataSize : size;
    const std::size_t packets = mBuffer->memory().size() / dataSize + 1;
    mReceived.assign(packets / kBitsPerWord + 1, 0); // first: there may be no memory
    mDataSize = dataSize;
    checkLength();
}

/// A longer packet came: the only one so far was the short one, and moves to its right place.
bool OpenBlock::growDataSize(std::size_t size)
{
    // Of several packets of one length that length is the full one, and the longer one is damaged.
    if (mDataCount != 1 || mShortId != 0 || mTooLong) {
        return false;
    }
    // The trailer's id, once known, is the highest; the packet before it is the last with data.
    const std::uint32_t moved = mHighestId == mTrailerId ? mTrailerId - 1 : mHighestId;
    if (!has(moved)) {
        return false;
    }
    const std::uint64_t from = wire::dataOffset(moved, mDataSize);
    const std::uint64_t to = wire::dataOffset(moved, size);
    const std::size_t shortSize = std::exchange(mDataSize, size);
    mShortId = moved;
    mEnd = 0;
    if (to + shortSize > mBuffer->memory().size()) {
        mTooLong = true;
        return true;
    }
    std::memmove(mBuffer->memory().data() + to, mBuffer->memory().data() + from, shortSize);
    mEnd = to + shortSize;
    return true;
}

void OpenBlock::mark(std::uint32_t packetId)
{
    const std::uint32_t bit = packetId - 1;
    mReceived[bit / kBitsPerWord] |= std::uint64_t{1} << (bit % kBitsPerWord);
    ++mDataCount;
}

/// The first data packet from `from` on, 1 or more, that has been received or has not been; `end`
/// if there is none before that. Word by word.
std::uint32_t OpenBlock::findData(bool received, std::uint32_t from, std::uint32_t end) const
{
    std::uint64_t id = from;
    while (id < end) {
        const std::uint64_t bit = id - 1;
        if (bit / kBitsPerWord >= mReceived.size()) {
            return received ? end : static_cast<std::uint32_t>(id);
        }
        const std::uint64_t word = mReceived[bit / kBitsPerWord];
        const std::uint64_t wanted = (received ? word : ~word) >> (bit % kBitsPerWord);
        if (wanted != 0) {
            id += static_cast<std::uint64_t>(std::countr_zero(wanted));
            break;
        }
        id += kBitsPerWord - bit % kBitsPerWord;
    }
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(id, end));
}

/// A block whose last data packet begins behind the buffer's end does not fit.
void OpenBlock::checkLength()
{
    if (mTrailerId > 1 && mDataSize != 0 &&
        wire::dataOffset(mTrailerId - 1, mDataSize) >= mBuffer->memory().size()) {
        mTooLong = true;
    }
}

/// Bytes of the block as its leader tells, else as long as the previous one; 0: not known.
std::uint64_t OpenBlock::expectedBytes() const
{
    if (mLeader && mLeader->image && !mLeader->type.hasChunks) {
        return wire::imageBytes(*mLeader->image);
    }
    if (mLeader && mLeader->payloadSize) {
        return *mLeader->payloadSize;
    }
    return mHint.blockBytes;
}

} // namespace gige::stream
