#ifndef TELVO_CAMERA_ETHERNETCABLE_H
#define TELVO_CAMERA_ETHERNETCABLE_H

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace camera
{

// What an Ethernet frame has besides the IP datagram, in bytes (IEEE 802.3, clauses 3 and 4).
inline constexpr std::size_t kPreamble = 8;         ///< with the start-of-frame delimiter
inline constexpr std::size_t kEthernetHeader = 14;  ///< two addresses and the type
inline constexpr std::size_t kShortestContent = 46; ///< shorter datagrams are padded
inline constexpr std::size_t kFrameCheckSequence = 4;
inline constexpr std::size_t kInterFrameGap = 12; ///< 96 bit times of silence

/// Bytes that an IP datagram takes on the cable, the gap behind it included.
constexpr std::uint64_t bytesOnCable(std::size_t datagramBytes)
{
    return kPreamble + kEthernetHeader + std::max(datagramBytes, kShortestContent) +
           kFrameCheckSequence + kInterFrameGap;
}

/// How long an IP datagram occupies the cable. @param linkRate  bits a second, not 0
constexpr std::chrono::nanoseconds timeOnCable(std::size_t datagramBytes, std::uint64_t linkRate)
{
    constexpr std::uint64_t kBitsTimesSecond = 8 * std::uint64_t{1'000'000'000};
    // Rounded up: no cable is faster than its rate.
    const std::uint64_t time =
        (bytesOnCable(datagramBytes) * kBitsTimesSecond + linkRate - 1) / linkRate;
    return std::chrono::nanoseconds(time);
}

} // namespace camera

#endif
