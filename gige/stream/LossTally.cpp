#include "LossTally.h"

#include "OpenBlock.h"

#include <algorithm>

namespace gige::stream
{

void LossTally::addCame(const OpenBlock& block, std::uint32_t packetId)
{
    const std::uint64_t packets = std::uint64_t{block.expectedTrailerId()} + 1;
    if (packetId < packets) {
        add(packetId, std::uint64_t{packetId} + 1, packets);
    }
}

void LossTally::addMissing(const OpenBlock& block)
{
    const std::uint32_t end = block.expectedTrailerId() + 1;
    std::uint32_t first = block.findMissing(0, end);
    while (first < end) {
        const std::uint32_t next = block.findReceived(first, end);
        add(first, next, end);
        first = block.findMissing(next, end);
    }
}

/// A run of packets may be long, so that it is counted by tenths.
void LossTally::add(std::uint64_t first, std::uint64_t end, std::uint64_t packets)
{
    while (first < end) {
        const std::uint64_t tenth = first * mLost.size() / packets;
        const std::uint64_t nextTenth = ((tenth + 1) * packets + mLost.size() - 1) / mLost.size();
        const std::uint64_t until = std::min(end, nextTenth);
        mLost[tenth] += static_cast<std::int64_t>(until - first);
        first = until;
    }
}

} // namespace gige::stream
