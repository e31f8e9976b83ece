#ifndef TELVO_CAMERA_PACER_H
#define TELVO_CAMERA_PACER_H

#include "BatchSender.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>

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

/// What holds packets back. For each packet the slowest of these counts; 0: no such limit.
struct Pace {
    std::chrono::nanoseconds delay{0}; ///< from the start of a packet to the start of the next
    std::uint64_t bytesPerSecond = 0;  ///< ceiling for IP datagrams
    std::uint64_t linkRate = 0;        ///< bits a second of the cable
};

/// Says which packets may go when. No packet goes before its time; those whose time has come go
/// together, since no sleep is as short as a packet: at most kMostWakeUps of these batches a
/// second. Sleeping too long is made up for, but not a stall of more than kMostCredit, so that no
/// flood follows: at a gigabit, what comes at once is at most the 250 kB that a port of a switch
/// holds. After an idle time the cable starts anew.
class Pacer
{
  public:
    using Clock = std::chrono::steady_clock;

    static constexpr std::size_t kMostPackets = 1024; ///< of one batch
    static constexpr int kMostWakeUps = 20'000;       ///< a second
    static constexpr std::chrono::milliseconds kMostCredit{2};

    void set(const Pace& pace) { mPace = pace; }
    /// How many packets from the front may go now; books them. 0: none before wakeUp().
    [[nodiscard]] std::size_t take(Clock::time_point now,
                                   std::span<const gige::net::PacketSlices> packets);
    /// When it is worth to ask again.
    [[nodiscard]] Clock::time_point wakeUp(Clock::time_point now) const;

  private:
    [[nodiscard]] std::chrono::nanoseconds timeOf(const gige::net::PacketSlices& packet) const;

    Pace mPace;
    Clock::time_point mNext; // when the next packet may start
};

} // namespace camera

#endif
