#ifndef TELVO_CAMERA_BLOCKPACKETS_H
#define TELVO_CAMERA_BLOCKPACKETS_H

#include "BatchSender.h"
#include "GvspHeader.h"
#include "StreamOrder.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace camera
{

/// One block cut into packets: leader, data, trailer. Only headers are made; the data stay where
/// they are. Buffers are used again from block to block. Not thread-safe.
class BlockPackets
{
  public:
    /// @param data  the block's bytes; borrowed while the packets are used
    void make(const StreamOrder& order, std::span<const std::uint8_t> data);

    /// Packets 0..last().
    [[nodiscard]] std::span<const gige::net::PacketSlices> all() const { return mPackets; }
    [[nodiscard]] std::uint32_t last() const
    {
        return static_cast<std::uint32_t>(mPackets.size() - 1);
    }
    /// Marks a packet as sent again on request.
    void markResent(std::uint32_t packetId);

  private:
    void addHeader(const StreamOrder& order, gige::wire::GvspFormat format);

    std::vector<std::uint8_t> mHeaders; // leader, data headers, trailer, one after the other
    std::vector<std::size_t> mHeaderEnds;
    std::vector<gige::net::PacketSlices> mPackets;
    bool mExtendedIds = false;
};

} // namespace camera

#endif
