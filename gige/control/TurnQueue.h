#ifndef TELVO_GIGE_CONTROL_TURNQUEUE_H
#define TELVO_GIGE_CONTROL_TURNQUEUE_H

#include "Clock.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>

namespace gige::control
{

/// A lock that is granted in the order of asking. A host that reads features in a tight loop would
/// win a plain mutex again and again, and the heartbeat would never get its turn.
/// Threads: any; mLock guards all members.
class TurnQueue
{
  public:
    using TimePoint = Clock::TimePoint;

    /// @param clock  borrowed for the object's life
    explicit TurnQueue(Clock& clock) : mClock(clock) {}

    /// Waits for the turn. @return false: the time passed, or the queue is closed
    [[nodiscard]] bool enter(TimePoint deadline);
    /// Ends the turn that enter() gave.
    void leave();
    /// Ends all waiting and refuses every later turn. The turn that runs now is not affected.
    void close();
    /// Waits until no turn runs. After close(), none will run again.
    void drain();
    /// Waits without asking for a turn. @return false: the queue is closed
    [[nodiscard]] bool sleepUntil(TimePoint end);

  private:
    Clock& mClock;
    std::mutex mLock;
    std::condition_variable mChanged;
    std::deque<std::uint64_t> mTickets; // the front one has its turn
    std::uint64_t mNextTicket = 0;
    bool mClosed = false;
};

/// One turn for the life of the object.
class Turn
{
  public:
    Turn(TurnQueue& queue, TurnQueue::TimePoint deadline)
        : mQueue(queue), mGranted(queue.enter(deadline))
    {
    }
    ~Turn()
    {
        if (mGranted) {
            mQueue.leave();
        }
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    [[nodiscard]] bool granted() const { return mGranted; }

  private:
    TurnQueue& mQueue;
    bool mGranted;
};

} // namespace gige::control

#endif
