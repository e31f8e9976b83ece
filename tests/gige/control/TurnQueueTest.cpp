#include "TurnQueue.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace gige::control
{
namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

TEST(TurnQueue, GrantsTurnsInTheOrderOfAsking)
{
    TurnQueue queue;
    ASSERT_TRUE(queue.enter(Clock::now()));
    std::vector<int> order;
    std::vector<std::thread> threads;
    std::atomic<int> started = 0;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&queue, &order, &started, i] {
            ++started;
            const Turn turn(queue, Clock::now() + std::chrono::seconds(30));
            ASSERT_TRUE(turn.granted());
            order.push_back(i);
        });
        while (started <= i) {
            std::this_thread::sleep_for(milliseconds(1));
        }
        std::this_thread::sleep_for(milliseconds(100)); // until it waits
    }
    queue.leave();
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(order, (std::vector{0, 1, 2, 3}));
}

TEST(TurnQueue, ATurnNotGrantedInTimeIsNotOwedLater)
{
    TurnQueue queue;
    ASSERT_TRUE(queue.enter(Clock::now()));
    EXPECT_FALSE(queue.enter(Clock::now() + milliseconds(10)));
    queue.leave();
    EXPECT_TRUE(queue.enter(Clock::now()));
}

TEST(TurnQueue, ClosingEndsWaitingAndRefusesLaterTurns)
{
    TurnQueue queue;
    ASSERT_TRUE(queue.enter(Clock::now()));
    std::thread waiting(
        [&queue] { EXPECT_FALSE(queue.enter(Clock::now() + std::chrono::hours(1))); });
    std::this_thread::sleep_for(milliseconds(20));
    queue.close();
    waiting.join();
    EXPECT_FALSE(queue.enter(Clock::now() + std::chrono::hours(1)));
    EXPECT_FALSE(queue.sleepUntil(Clock::now() + std::chrono::hours(1)));
    queue.leave();
    queue.drain();
}

TEST(TurnQueue, SleepingTakesNoTurn)
{
    TurnQueue queue;
    EXPECT_TRUE(queue.sleepUntil(Clock::now() + milliseconds(5)));
    EXPECT_TRUE(queue.enter(Clock::now()));
}

} // namespace
} // namespace gige::control
