#include "LossPlaces.h"

#include <algorithm>

namespace telvo
{

namespace
{

/// Few enough to cost nothing, more than a picture has in common with the mark by chance.
constexpr std::size_t kMarkBytes = 16;

std::uint8_t markAt(std::size_t place)
{
    constexpr std::uint32_t kSpread = 2654435761; // 2^32 divided by the golden ratio
    return static_cast<std::uint8_t>((static_cast<std::uint32_t>(place) * kSpread) >> 24);
}

bool isMarked(std::span<const std::uint8_t> packet)
{
    for (std::size_t i = 0; i < packet.size(); ++i) {
        if (packet[i] != markAt(i)) {
            return false;
        }
    }
    return true;
}

} // namespace

void LossPlaces::mark(std::span<std::uint8_t> buffer) const
{
    for (std::size_t from = 0; from < buffer.size(); from += mPacketBytes) {
        const std::size_t size = std::min({kMarkBytes, mPacketBytes, buffer.size() - from});
        for (std::size_t i = 0; i < size; ++i) {
            buffer[from + i] = markAt(i);
        }
    }
}

void LossPlaces::count(std::span<const std::uint8_t> picture)
{
    for (std::size_t from = 0; from < picture.size(); from += mPacketBytes) {
        const std::size_t size = std::min({kMarkBytes, mPacketBytes, picture.size() - from});
        if (isMarked(picture.subspan(from, size))) {
            ++mLost[from * mLost.size() / picture.size()];
        }
    }
}

} // namespace telvo
