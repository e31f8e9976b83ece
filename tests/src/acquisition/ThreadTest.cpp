// Worker threads in general.
#include "Thread.h"
#include "StandIn.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace
{

const Texts kEnded{"WaitForSingleObject 5000", "CloseHandle"};

/// Its body counts its runs and, unless told to end at once, lasts until a stop is requested.
class CountingThread : public Thread
{
  public:
    explicit CountingThread(std::atomic<int>& runs, bool endsAtOnce = false)
        : mRuns(runs), mEndsAtOnce(endsAtOnce)
    {
    }
    ~CountingThread() override { finish(); }
    DWORD Function() override
    {
        ++mRuns;
        while (!mEndsAtOnce && !isStopRequested()) {
            std::this_thread::yield();
        }
        return 42;
    }

  private:
    std::atomic<int>& mRuns;
    bool mEndsAtOnce;
};

class ThreadTest : public ::testing::Test
{
  protected:
    StandIn s;
    std::atomic<int> runs{0};
};

TEST_F(ThreadTest, RunsItsBodyUntilItIsStopped)
{
    CountingThread thread(runs);
    EXPECT_FALSE(thread.isRunning());
    thread.start();
    EXPECT_TRUE(thread.isRunning());
    EXPECT_FALSE(thread.isStopRequested());
    EXPECT_TRUE(thread.stop());
    EXPECT_TRUE(thread.isStopRequested());
    EXPECT_FALSE(thread.isRunning());
    EXPECT_EQ(thread.exitCode(), 42U);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(s.takeKernelCalls(), Texts{"CreateThread"} + kEnded);
}

TEST_F(ThreadTest, CanBeStartedAgain)
{
    CountingThread thread(runs);
    thread.start();
    EXPECT_TRUE(thread.stop());
    thread.start();
    EXPECT_FALSE(thread.isStopRequested());
    EXPECT_TRUE(thread.stop());
    EXPECT_EQ(runs, 2);
}

TEST_F(ThreadTest, CountsAsRunningUntilItIsStoppedThoughItsBodyHasEnded)
{
    CountingThread thread(runs, true);
    thread.start();
    while (thread.exitCode() != 42U) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(thread.isRunning());
    EXPECT_TRUE(thread.stop());
    EXPECT_FALSE(thread.isRunning());
}

TEST_F(ThreadTest, IsStoppedByItsDestruction)
{
    {
        CountingThread thread(runs);
        thread.start();
    }
    EXPECT_EQ(s.takeKernelCalls(), Texts{"CreateThread"} + kEnded);
}

TEST_F(ThreadTest, IsNotStoppedTwice)
{
    {
        CountingThread thread(runs);
        thread.start();
        EXPECT_TRUE(thread.stop());
        s.forget();
    }
    EXPECT_EQ(s.takeKernelCalls(), Texts{});
}

TEST_F(ThreadTest, DoesNotRunWithoutTheSystemsLeave)
{
    s.answer("CreateThread", {Code::NotEnoughMemory});
    CountingThread thread(runs);
    thread.start();
    EXPECT_FALSE(thread.isRunning());
    EXPECT_EQ(s.takeKernelCalls(), Texts{"CreateThread"});
    EXPECT_EQ(runs, 0);
}

} // namespace
