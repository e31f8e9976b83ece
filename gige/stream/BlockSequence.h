#ifndef TELVO_GIGE_STREAM_BLOCKSEQUENCE_H
#define TELVO_GIGE_STREAM_BLOCKSEQUENCE_H

#include "GvspHeader.h"
#include "StreamSettings.h"

#include <cstdint>
#include <optional>

namespace gige::stream
{

/// How many blocks `id` comes after `reference`; negative: before it. Standard ids run from 1 to
/// 65535 and then from 1 again, so of the two ways round the shorter counts.
constexpr std::int64_t blockDistance(std::uint64_t reference, std::uint64_t id, bool extendedIds)
{
    const auto difference = static_cast<std::int64_t>(id - reference);
    if (extendedIds) {
        return difference;
    }
    constexpr std::int64_t kCycle = 65535;
    if (difference > kCycle / 2) {
        return difference - kCycle;
    }
    return difference < -kCycle / 2 ? difference + kCycle : difference;
}

/// What a packet of no open block is.
enum class BlockOrder : std::uint8_t {
    Next,    // of a block after the newest
    Late,    // of a block that has ended
    Restart, // the device counts its blocks anew
};

/// Follows the block ids of one device.
class BlockSequence
{
  public:
    /// Late and repeated packets have ids that are not new, and so have those of a restarted
    /// device; but the former come soon, and with old timestamps.
    BlockOrder judge(const wire::GvspHeader& header, wire::ByteView body, Time now) const;

    /// A block begins; it is the newest now.
    void begin(const wire::GvspHeader& header, BlockOrder order);
    void noteLeader(std::uint64_t blockId, std::uint64_t timestamp);
    void noteComplete(std::uint64_t blockId);
    void notePacket(Time now) { mLastPacket = now; }

    Time lastPacket() const { return mLastPacket; }
    /// How many blocks the newest comes after `blockId`, which is of the present count.
    std::int64_t distanceToNewest(std::uint64_t blockId) const
    {
        return mNewestId ? blockDistance(blockId, *mNewestId, mExtendedIds) : 0;
    }

  private:
    bool isRestart(const wire::GvspHeader& header, wire::ByteView body, std::int64_t distance,
                   Time now) const;

    std::optional<std::uint64_t> mNewestId;
    bool mExtendedIds = false;
    bool mMayContinue = false; // not all packets of the newest block have come
    std::uint64_t mNewestTimestamp = 0;
    Time mLastPacket;
};

} // namespace gige::stream

#endif
