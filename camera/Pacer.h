#ifndef TELVO_CAMERA_PACER_H
#define TELVO_CAMERA_PACER_H

#include "BatchSender.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>

namespace camera
{

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
