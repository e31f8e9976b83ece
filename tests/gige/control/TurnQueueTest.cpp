#include "TurnQueue.h"

#include "TestClock.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace gige::control
{
namespace
{

using std::chrono::milliseconds;

/// The system's, which tells how often somebody has begun to wait by it.
class WatchedClock final : public Clock
{
  public:
    [[nodiscard]] TimePoint now() const override { return systemClock().now(); }
    void wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
              TimePoint until) override
    {
        ++mWaits;
        systemClock().wait(lock, changed, until);
    }

    void awaitWaits(int count) const
    {
        while (mWaits < count) {
            std::this_thread::yield();
        }
    }

  private:
    std::atomic<int> mWaits{0};
};

TEST(TurnQueue, GrantsTurnsInTheOrderOfAsking)
{
    WatchedClock clock;
    TurnQueue queue(clock);
    ASSERT_TRUE(queue.enter(clock.now()));
    std::vector<int> order;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&clock, &queue, &order, i] {
            const Turn turn(queue, clock.now() + std::chrono::seconds(30));
            ASSERT_TRUE(turn.granted());
            order.push_back(i);
        });
        clock.awaitWaits(i + 1);
    }
    queue.leave();
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(order, (std::vector{0, 1, 2, 3}));
}

TEST(TurnQueue, ATurnNotGrantedInTimeIsNotOwedLater)
{
    TestClock clock;
    TurnQueue queue(clock);
    ASSERT_TRUE(queue.enter(clock.now()));
    EXPECT_FALSE(queue.enter(clock.now() + milliseconds(10)));
    queue.leave();
    EXPECT_TRUE(queue.enter(clock.now()));
}

TEST(TurnQueue, ClosingEndsWaitingAndRefusesLaterTurns)
{
    WatchedClock clock;
    TurnQueue queue(clock);
    ASSERT_TRUE(queue.enter(clock.now()));
    std::thread waiting([&] { EXPECT_FALSE(queue.enter(clock.now() + std::chrono::hours(1))); });
    clock.awaitWaits(1);
    queue.close();
    waiting.join();
    EXPECT_FALSE(queue.enter(clock.now() + std::chrono::hours(1)));
    EXPECT_FALSE(queue.sleepUntil(clock.now() + std::chrono::hours(1)));
    queue.leave();
    queue.drain();
}

TEST(TurnQueue, SleepingTakesNoTurn)
{
    TestClock clock;
    TurnQueue queue(clock);
    EXPECT_TRUE(queue.sleepUntil(clock.now() + milliseconds(5)));
    EXPECT_TRUE(queue.enter(clock.now()));
}

} // namespace
} // namespace gige::control
