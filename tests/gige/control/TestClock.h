#ifndef TELVO_TESTS_CONTROL_TESTCLOCK_H
#define TELVO_TESTS_CONTROL_TESTCLOCK_H

#include "Clock.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <set>

namespace gige::control
{

/// Time that passes only by being waited for: it stands still while any of those who wait by it is
/// busy; once all wait, it is the earliest time that one of them waits for.
/// Threads: any; mLock guards all members.
class TestClock : public Clock
{
  public:
    [[nodiscard]] TimePoint now() const override;
    void wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
              TimePoint until) override;

    /// How many threads wait by it; one at first.
    void setThreads(std::size_t threads);
    /// One thread less, if there are several.
    void leave();

    /// The test waits so long itself. When nobody else does, it rests for some real milliseconds,
    /// in which the others may end.
    void run(Duration time);
    /// It is later now, whoever waits.
    void advance(Duration time);

  private:
    void passIfAllWait();

    mutable std::mutex mLock;
    std::condition_variable mPassed;
    TimePoint mNow{std::chrono::hours(1)};
    std::size_t mThreads = 1;
    std::multiset<TimePoint> mWaitedFor;
};

} // namespace gige::control

#endif
