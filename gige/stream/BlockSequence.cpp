#include "BlockSequence.h"

#include "GvspLeader.h"

namespace gige::stream
{

BlockOrder BlockSequence::judge(const wire::GvspHeader& header, wire::ByteView body, Time now) const
{
    if (!mNewestId) {
        return BlockOrder::Next;
    }
    // Between 16-bit and 64-bit ids there is no distance; a device changes over only when it
    // starts.
    if (header.extendedIds != mExtendedIds) {
        return BlockOrder::Restart;
    }
    const auto distance = blockDistance(*mNewestId, header.blockId, header.extendedIds);
    if (distance > 0) {
        return BlockOrder::Next;
    }
    if (header.isResent()) {
        return BlockOrder::Late; // its block was given up before the answer came
    }
    return isRestart(header, body, distance, now) ? BlockOrder::Restart : BlockOrder::Late;
}

void BlockSequence::begin(const wire::GvspHeader& header, BlockOrder order)
{
    mNewestId = header.blockId;
    mExtendedIds = header.extendedIds;
    // Until its last packet is there.
    mMayContinue = true;
    if (order == BlockOrder::Restart) {
        mNewestTimestamp = 0;
    }
}

void BlockSequence::noteLeader(std::uint64_t blockId, std::uint64_t timestamp)
{
    if (blockId == mNewestId) {
        mNewestTimestamp = timestamp;
    }
}

void BlockSequence::noteComplete(std::uint64_t blockId)
{
    if (blockId == mNewestId) {
        mMayContinue = false;
    }
}

/// @param distance  from the newest block, 0 or less
bool BlockSequence::isRestart(const wire::GvspHeader& header, wire::ByteView body,
                              std::int64_t distance, Time now) const
{
    // No packet is on its way for so many blocks.
    if (distance < -kLateBlocks) {
        return true;
    }
    const auto leader =
        header.format == wire::GvspFormat::Leader ? wire::decodeLeader(body) : std::nullopt;
    // A device that stalls within a block sends the rest of it even after a long silence.
    const bool mayBeRest = distance == 0 && mMayContinue && !leader;
    return (now - mLastPacket >= kRestartSilence && !mayBeRest) ||
           (leader && leader->timestamp > mNewestTimestamp);
}

} // namespace gige::stream
