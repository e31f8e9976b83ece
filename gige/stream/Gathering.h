#ifndef TELVO_GIGE_STREAM_GATHERING_H
#define TELVO_GIGE_STREAM_GATHERING_H

#include "StreamSettings.h"

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace gige::stream
{

/// How long a pause may be.
struct PauseLimits {
    std::chrono::microseconds usual;
    std::chrono::microseconds steady; // in a stream whose last blocks came at an even rate
};

/// While resends are on. With what the system adds to a sleep, a request goes out at most 0.5 ms
/// later than without pauses.
constexpr PauseLimits kLimitsWithResends{std::chrono::microseconds(400),
                                         std::chrono::microseconds(400)};
/// Without, a picture is complete at most 1 ms later, should its end come early. That of a steady
/// stream does not; where it happens after all, one picture is late, and the limit is the usual one
/// again.
constexpr PauseLimits kLimitsWithoutResends{std::chrono::microseconds(800),
                                            std::chrono::microseconds(3000)};
/// Below this a sleep takes longer than it should.
constexpr std::chrono::microseconds kShortestGathering{40};
/// A pause that gathers fewer packets costs as much as it saves.
constexpr double kFewestGathered = 3;
/// Most that a pause gathers, bytes: much more would no longer be in a core's second-level cache.
constexpr std::size_t kMostGathered = 512 * 1024;

/// What one receive brought.
struct Taken {
    std::size_t packets = 0;
    std::size_t bytes = 0;
};

/// Decides how long the receiving thread lets packets gather before it takes them, since waking up
/// for each costs more than taking it. It pauses only within a block, by the rate at which that
/// comes, and not for its end: the block's last packet is waited for as it comes. Pure, with the
/// time handed in.
class Gathering
{
  public:
    /// @param capacity  bytes that the system keeps meanwhile
    explicit Gathering(std::size_t capacity);

    void setLimits(const PauseLimits& limits) { mLimits = limits; }

    /// @param toCome  packets of the newest open block that are still to come; 0: not known
    /// @param now     when the packets were taken
    /// @return how long to pause; 0: wait for the next packet
    std::chrono::microseconds pauseAfter(const Taken& taken, std::uint32_t toCome, Time now);

  private:
    void measure(const Taken& taken, Time now);
    bool isHurried(const Taken& taken, double seconds) const;
    std::chrono::microseconds longestPause() const;
    std::chrono::microseconds choosePause(std::uint32_t toCome) const;

    const double mMostBytes;
    PauseLimits mLimits = kLimitsWithoutResends;
    // Sums over the last receives within a block, the older the less.
    double mSeconds = 0;
    double mPackets = 0;
    double mBytes = 0;
    Time mLastTaken;
    bool mWithinBlock = false; // after the last receive
    int mSteadyBlocks = 0;     // since packets last came much faster than before
};

} // namespace gige::stream

#endif
