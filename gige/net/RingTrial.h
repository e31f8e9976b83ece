#ifndef TELVO_GIGE_NET_RINGTRIAL_H
#define TELVO_GIGE_NET_RINGTRIAL_H

#include "RingUse.h"

#include <chrono>
#include <cstddef>

namespace gige::net
{

/// Single datagrams in a row, within kTrialWindow, that make the ring worth its memory.
constexpr std::size_t kWorthwhile = 1000;
constexpr std::chrono::seconds kTrialWindow{1};
/// Pause after the ring turned out to be of no use.
constexpr std::chrono::seconds kTrialPause{10};
/// A ring that brought no full packet for so long is given up.
constexpr std::chrono::seconds kRingSilence{1};
/// So are rings beside which the socket got that many.
constexpr std::size_t kMostAstray = 64;

/// Decides when the ring is to be tried and when it is given up. Pure, with the time handed in.
class RingTrial
{
  public:
    using Clock = std::chrono::steady_clock;

    explicit RingTrial(RingUse use) : mUse(use) {}

    /// What came by the socket while the ring is closed. @return whether to try the ring now
    bool noteReceived(std::size_t single, std::size_t joined, std::size_t longest,
                      Clock::time_point now);
    /// Bytes of the longest datagram of those that made the ring worth trying.
    std::size_t longest() const { return mLongest; }

    /// The ring is in use from now on.
    void noteBegun(Clock::time_point now);
    /// What the ring brought. @param longest  bytes of the longest datagram
    void noteRing(std::size_t longest, Clock::time_point now);
    /// Datagrams that came by the socket although the ring is in use.
    void noteAstray(std::size_t count) { mAstray += count; }
    bool isUseless(Clock::time_point now) const;
    /// The ring is closed.
    void noteEnded(Clock::time_point now);
    /// It never showed what the socket brought.
    void noteFailed(Clock::time_point now) { mNotBefore = now + kTrialPause; }

  private:
    RingUse mUse;
    std::size_t mSingle = 0; // in a row, in this window
    std::size_t mLongest = 0;
    Clock::time_point mWindow;     // when it began
    Clock::time_point mNotBefore;  // no trial before that
    Clock::time_point mFullPacket; // when the ring brought the last one
    std::size_t mAstray = 0;
};

} // namespace gige::net

#endif
