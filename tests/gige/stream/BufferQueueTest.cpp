#include "BufferQueue.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>

namespace gige::stream
{

namespace
{

using namespace std::chrono_literals;

constexpr auto kPatience = 20s; // never reached unless something is broken

class BufferQueueTest : public testing::Test
{
  protected:
    Retrieved retrieve(std::chrono::milliseconds timeout = 0ms)
    {
        return queue.retrieve(timeout, queue.wakeCount());
    }

    BufferQueue queue;
    std::array<StreamBuffer, 3> buffers;
};

TEST_F(BufferQueueTest, KeepsTheOrderOnBothWays)
{
    for (StreamBuffer& buffer : buffers) {
        EXPECT_TRUE(queue.queue(buffer, Time{}));
    }
    for (StreamBuffer& buffer : buffers) {
        EXPECT_EQ(queue.take(), &buffer);
    }
    EXPECT_EQ(queue.take(), nullptr);
    for (StreamBuffer& buffer : buffers) {
        queue.complete(buffer);
    }
    for (StreamBuffer& buffer : buffers) {
        const Retrieved retrieved = retrieve();
        EXPECT_EQ(retrieved.status, RetrieveStatus::Buffer);
        EXPECT_EQ(retrieved.buffer, &buffer);
    }
    EXPECT_EQ(retrieve().status, RetrieveStatus::TimedOut);
}

TEST_F(BufferQueueTest, RefusesABufferUntilItIsRetrieved)
{
    EXPECT_TRUE(queue.queue(buffers[0], Time{}));
    EXPECT_FALSE(queue.queue(buffers[0], Time{}));
    queue.take();
    EXPECT_FALSE(queue.queue(buffers[0], Time{}));
    queue.complete(buffers[0]);
    EXPECT_FALSE(queue.queue(buffers[0], Time{}));
    EXPECT_EQ(retrieve().buffer, &buffers[0]);
    EXPECT_TRUE(queue.queue(buffers[0], Time{}));
}

TEST_F(BufferQueueTest, TellsSinceWhenTheFirstWaits)
{
    EXPECT_EQ(queue.waitingSince(), std::nullopt);
    queue.queue(buffers[0], Time{5s});
    queue.queue(buffers[1], Time{7s});
    EXPECT_EQ(queue.waitingSince(), Time{5s});
    queue.take();
    EXPECT_EQ(queue.waitingSince(), Time{7s});
}

TEST_F(BufferQueueTest, ABufferJustUsedIsTakenBeforeThoseThatWait)
{
    queue.queue(buffers[0], Time{5s});
    EXPECT_TRUE(queue.queueFirst(buffers[1], Time{7s}));
    EXPECT_FALSE(queue.queueFirst(buffers[1], Time{7s}));
    EXPECT_EQ(queue.waitingSince(), Time{5s});
    EXPECT_EQ(queue.take(), &buffers[1]);
    EXPECT_EQ(queue.take(), &buffers[0]);
    EXPECT_EQ(queue.take(), nullptr);
}

TEST_F(BufferQueueTest, KeepsTheOrderBehindABufferJustUsed)
{
    EXPECT_TRUE(queue.queueFirst(buffers[0], Time{}));
    queue.queue(buffers[1], Time{});
    EXPECT_EQ(queue.take(), &buffers[0]);
    EXPECT_EQ(queue.take(), &buffers[1]);
}

TEST_F(BufferQueueTest, AbortCompletesWhatIsQueued)
{
    queue.queue(buffers[0], Time{});
    queue.queue(buffers[1], Time{});
    buffers[0].setInfo({.result = BlockResult::Ok, .blockId = 7});
    queue.abort();
    EXPECT_EQ(queue.take(), nullptr);
    for (StreamBuffer* const buffer : {&buffers[0], &buffers[1]}) {
        const Retrieved retrieved = retrieve();
        EXPECT_EQ(retrieved.buffer, buffer);
        EXPECT_EQ(retrieved.buffer->info(), BlockInfo{.result = BlockResult::Aborted});
    }
}

TEST_F(BufferQueueTest, ReleasedBuffersCanBeQueuedAgain)
{
    queue.queue(buffers[0], Time{});
    queue.queue(buffers[1], Time{});
    queue.complete(*queue.take());
    queue.releaseAll();
    EXPECT_EQ(queue.take(), nullptr);
    EXPECT_EQ(retrieve().status, RetrieveStatus::TimedOut);
    EXPECT_TRUE(queue.queue(buffers[0], Time{}));
    EXPECT_TRUE(queue.queue(buffers[1], Time{}));
}

TEST_F(BufferQueueTest, RetrievalWaitsForACompletion)
{
    queue.queue(buffers[0], Time{});
    std::thread completing([&] { queue.complete(*queue.take()); });
    EXPECT_EQ(retrieve(kPatience).buffer, &buffers[0]);
    completing.join();
}

TEST_F(BufferQueueTest, WakeEndsAWaitingRetrieval)
{
    std::atomic<bool> ended = false;
    std::thread waiting([&] {
        EXPECT_EQ(retrieve(kPatience).status, RetrieveStatus::Woken);
        ended = true;
    });
    while (!ended) { // the retrieval may begin after a wake, and then waits for the next
        queue.wakeRetrievals();
        std::this_thread::sleep_for(1ms);
    }
    waiting.join();
}

TEST_F(BufferQueueTest, WakeBeforeTheRetrievalCountsFromTheCountGiven)
{
    queue.queue(buffers[0], Time{});
    queue.complete(*queue.take());
    const std::uint64_t wakes = queue.wakeCount();
    queue.wakeRetrievals();
    EXPECT_EQ(queue.retrieve(kPatience, wakes).status, RetrieveStatus::Woken);
    EXPECT_EQ(queue.retrieve(kPatience, queue.wakeCount()).buffer, &buffers[0]);
}

} // namespace

} // namespace gige::stream
