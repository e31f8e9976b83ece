#ifndef TELVO_TOOLS_TELVO_LOSSPLACES_H
#define TELVO_TOOLS_TELVO_LOSSPLACES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace telvo
{

/// Lost packets by their place in the picture, in tenths of it.
using LostByTenth = std::array<std::int64_t, 10>;

/// Finds the packets that are missing from pictures: a buffer is marked before a picture comes, and
/// where a mark is left, no packet came.
class LossPlaces
{
  public:
    /// @param packetBytes  of the picture in a packet
    explicit LossPlaces(std::size_t packetBytes) : mPacketBytes(packetBytes) {}

    void mark(std::span<std::uint8_t> buffer) const;
    /// Takes account of a picture that came into a marked buffer.
    void count(std::span<const std::uint8_t> picture);

    const LostByTenth& lost() const { return mLost; }

  private:
    std::size_t mPacketBytes;
    LostByTenth mLost{};
};

} // namespace telvo

#endif
