#ifndef TELVO_GIGE_STREAM_OPENBLOCK_H
#define TELVO_GIGE_STREAM_OPENBLOCK_H

#include "GvspLeader.h"
#include "StreamBuffer.h"
#include "StreamSettings.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace gige::stream
{

enum class [[nodiscard]] Placement : std::uint8_t{Stored, Duplicate, Refused};

/// What the previous block tells about the next.
struct BlockHint {
    std::size_t dataSize = 0;     // bytes per full data packet; 0: not known
    std::uint64_t blockBytes = 0; // 0: not known
};

/// One block on its way into its buffer: places packets in any order and knows which are there.
/// Reused from block to block, so that only growing packet counts allocate.
class OpenBlock
{
  public:
    void begin(StreamBuffer& buffer, std::uint64_t id, bool extendedIds, Time now,
               const BlockHint& hint);

    /// Packet id 0.
    Placement addLeader(const wire::GvspLeader& leader);
    /// @param packetId  from 1; the place of the data is (packetId - 1) * bytes per full packet
    Placement addData(std::uint32_t packetId, wire::ByteView data);
    /// @param packetId  from 1: the number of data packets and one
    Placement addTrailer(std::uint32_t packetId);
    /// The device has told that it lost data of this block.
    void setDamaged() { mDamaged = true; }
    void touch(Time now) { mLastPacket = now; }

    StreamBuffer& buffer() const { return *mBuffer; }
    std::uint64_t id() const { return mId; }
    bool extendedIds() const { return mExtendedIds; }
    Time firstPacketTime() const { return mFirstPacket; }
    Time lastPacketTime() const { return mLastPacket; }
    const std::optional<wire::GvspLeader>& leader() const { return mLeader; }

    /// Nothing more is awaited: every packet is there, or it ended and is longer than the buffer.
    bool isFinished() const
    {
        return mTrailerId != 0 && (mTooLong || (mLeader && mDataCount == mTrailerId - 1));
    }
    bool isTooLong() const { return mTooLong; }
    /// Whether the missing packets would make it whole.
    bool mayComplete() const { return !mTooLong && !mDamaged; }
    /// Ok, ImageError or BufferTooSmall.
    BlockResult result() const;

    bool has(std::uint32_t packetId) const;
    /// The first packet from `from` on that is not there; `end` if there is none before that.
    std::uint32_t findMissing(std::uint32_t from, std::uint32_t end) const;
    /// The first that is there.
    std::uint32_t findReceived(std::uint32_t from, std::uint32_t end) const;
    /// The largest packet id received.
    std::uint32_t highestId() const { return mHighestId; }
    /// Whether a packet before the largest id is missing.
    bool hasGaps() const { return packetCount() <= mHighestId; }
    /// The trailer's packet id: received, or computed from what is known; 0: not known.
    std::uint32_t expectedTrailerId() const;
    /// Packets not there, as far as the block's length is known.
    std::uint32_t missingPackets() const;
    /// For the next block: this one's packet size, and its length if it is complete.
    BlockHint hint() const;
    BlockInfo info(BlockResult result) const;

  private:
    /// Different packets that are there.
    std::uint64_t packetCount() const
    {
        return std::uint64_t{mDataCount} + (mLeader ? 1 : 0) + (mTrailerId != 0 ? 1 : 0);
    }
    void chooseDataSize(std::uint32_t packetId, std::size_t size);
    bool growDataSize(std::size_t size);
    void mark(std::uint32_t packetId);
    std::uint32_t findData(bool received, std::uint32_t from, std::uint32_t end) const;
    void checkLength();
    std::uint64_t expectedBytes() const;

    StreamBuffer* mBuffer = nullptr;
    std::uint64_t mId = 0;
    bool mExtendedIds = false;
    Time mFirstPacket;
    Time mLastPacket;
    BlockHint mHint;

    std::optional<wire::GvspLeader> mLeader;
    std::uint32_t mTrailerId = 0; // 0: not there yet
    std::uint32_t mDataCount = 0; // different data packets
    std::uint32_t mHighestId = 0;
    std::uint32_t mShortId = 0; // data packet that is not full; only the last may be so
    std::size_t mDataSize = 0;  // bytes per full data packet; 0: no data yet
    std::uint64_t mEnd = 0;     // bytes, up to the last one received
    bool mTooLong = false;
    bool mDamaged = false;
    std::vector<std::uint64_t> mReceived; // bit packetId - 1 of the data packets
};

} // namespace gige::stream

#endif
