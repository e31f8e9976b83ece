// The request that host and readout thread share, in every order in which the two, an abort and the
// thread's end can meet.
#include "ReadoutRequest.h"
#include "StandIn.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <functional>
#include <future>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace
{

using Ending = ReadoutRequest::Ending;

constexpr FrameRange kOneFrame{.first = 7, .last = 7};

class ReadoutRequestTest : public ::testing::Test
{
  protected:
    void order(const FrameRange& range)
    {
        request.begin();
        request.start(range);
        request.accept(range);
    }

    void receive(int frames)
    {
        for (int i = 0; i < frames; ++i) {
            request.count(request.progress());
            if (request.complete()) {
                request.signal();
            }
        }
    }

    static void expect(const Ending& ending, RequestResult result, std::optional<int> acquired)
    {
        EXPECT_EQ(ending.result, result);
        EXPECT_EQ(ending.acquired, acquired);
    }

    StandIn s;
    ReadoutRequest request;
};

TEST_F(ReadoutRequestTest, HandsOutTheFramesOfACompleteRequestOnce)
{
    order({.first = 10, .last = 12});
    receive(3);
    expect(request.await(), RequestResult::Complete, 3);
    expect(request.await(), RequestResult::ThreadEnded, std::nullopt);
}

TEST_F(ReadoutRequestTest, AnAbortIsHandedOutUntilTheNextRequest)
{
    order(kOneFrame);
    request.abort();
    expect(request.await(), RequestResult::Aborted, std::nullopt);
    expect(request.await(), RequestResult::Aborted, std::nullopt);
    order(kOneFrame);
    receive(1);
    expect(request.await(), RequestResult::Complete, 1);
}

TEST_F(ReadoutRequestTest, StaysAbortedWhenItIsSentAgain)
{
    order(kOneFrame);
    request.abort();
    request.start(kOneFrame);
    receive(1);
    expect(request.await(), RequestResult::Aborted, std::nullopt);
}

TEST_F(ReadoutRequestTest, ARequestThatTheCameraRefusedIsNotAwaited)
{
    order(kOneFrame); // never collected
    request.begin();
    request.start(kOneFrame);
    request.refuse();
    expect(request.await(), RequestResult::ThreadEnded, std::nullopt);
}

TEST_F(ReadoutRequestTest, ACameraThatRefusesARequestIsAskedForTheLastThatItTook)
{
    EXPECT_EQ(request.accepted().has_value(), false);
    order({.first = 3, .last = 4});
    request.begin();
    request.start(kOneFrame);
    request.refuse();
    ASSERT_TRUE(request.accepted());
    EXPECT_EQ(request.accepted()->first, 3);
    EXPECT_EQ(request.accepted()->last, 4);
}

TEST_F(ReadoutRequestTest, AnInterruptedRequestIsCompletedOnlyAfterItIsSentAgain)
{
    order(kOneFrame);
    EXPECT_TRUE(request.interrupt());
    EXPECT_FALSE(request.interrupt());
    request.count(request.progress());
    EXPECT_FALSE(request.complete());
    request.start(kOneFrame);
    EXPECT_EQ(request.progress().acquired, 0);
    receive(1);
    expect(request.await(), RequestResult::Complete, 1);
}

TEST_F(ReadoutRequestTest, AnExcessOfFramesStaysToBeAwaited)
{
    order(kOneFrame);
    receive(2);
    const Ending excess = request.await();
    EXPECT_TRUE(excess.isExcess());
    expect(excess, RequestResult::Complete, 2);
    request.start(kOneFrame);
    receive(1);
    const Ending whole = request.await();
    EXPECT_FALSE(whole.isExcess());
    expect(whole, RequestResult::Complete, 1);
}

TEST_F(ReadoutRequestTest, NothingIsAwaitedOnceTheThreadHasEnded)
{
    request.end();
    order(kOneFrame);
    expect(request.await(), RequestResult::ThreadEnded, std::nullopt);
}

TEST_F(ReadoutRequestTest, BeforeTheFirstRequestEveryFrameIsInExcess)
{
    EXPECT_EQ(request.progress().ordered, -1);
    receive(1);
    EXPECT_FALSE(request.complete());
    expect(request.await(), RequestResult::ThreadEnded, std::nullopt);
}

// Every order

/// A request was made and not collected; now a second one, frames, an abort and the thread's end
/// meet in one of the orders in which the steps of each actor follow each other. An oracle that
/// knows the order alone tells how the second request has to end.
class Meeting
{
  public:
    enum Actor { Host, Body, Aborter, Ender };
    using Order = std::vector<Actor>;

    void run(const Order& order)
    {
        mRequest.begin();
        mRequest.start(kOneFrame);
        mRequest.accept(kOneFrame);
        for (const Actor actor : order) {
            step(actor);
        }
        expectEnding();
    }

  private:
    static constexpr int kBodySteps = 4;

    void step(Actor actor)
    {
        switch (actor) {
        case Host:
            return hostStep(mHostSteps++);
        case Body:
            return bodyStep(mBodySteps++ % kBodySteps);
        case Aborter:
            mIsAborted = true;
            return mRequest.abort();
        case Ender:
            mHasEnded = true;
            return mRequest.end();
        }
    }

    void hostStep(int step)
    {
        if (step == 0) {
            mIsAborted = false;
            mRequest.begin();
        } else if (step == 1) {
            mAcquired = 0;
            mIsSecond = true;
            mRequest.start(kOneFrame);
        } else {
            mRequest.accept(kOneFrame);
        }
    }

    /// A frame, step by step, each of which the others may come between.
    void bodyStep(int step)
    {
        if (step == 0) {
            mIsFrameOfSecond = mIsSecond;
            mProgress = mRequest.progress();
        } else if (step == 1) {
            mAcquired += mIsFrameOfSecond == mIsSecond ? 1 : 0;
            mRequest.count(mProgress);
        } else if (step == 2) {
            mHasCompleted = mRequest.complete().has_value();
        } else if (mHasCompleted) {
            mRequest.signal();
        }
    }

    void expectEnding()
    {
        auto awaited = std::async(std::launch::async, [this] { return mRequest.await(); });
        if (isOver() && awaited.wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
            ADD_FAILURE() << "the end was lost";
        }
        if (!isOver()) {
            EXPECT_EQ(awaited.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
            mIsAborted = true;
        }
        mRequest.abort();
        const Ending ending = awaited.get();
        EXPECT_EQ(ending.result, expected());
        if (ending.result == RequestResult::Complete) {
            EXPECT_EQ(ending.acquired, mAcquired);
        }
    }

    bool isOver() const { return mIsAborted || mHasEnded || mAcquired > 0; }

    RequestResult expected() const
    {
        if (mIsAborted) {
            return RequestResult::Aborted;
        }
        return mHasEnded ? RequestResult::ThreadEnded : RequestResult::Complete;
    }

    ReadoutRequest mRequest;
    ReadoutRequest::Progress mProgress{};
    bool mHasCompleted = false;
    int mHostSteps = 0;
    int mBodySteps = 0;

    // The oracle's.
    bool mIsSecond = false;        // frames are the second request's
    bool mIsFrameOfSecond = false; // the one that the body holds
    int mAcquired = 0;             // of the current request
    bool mIsAborted = false;
    bool mHasEnded = false;
};

/// Runs every order of these steps. @return how many
int runEveryOrder(Meeting::Order steps)
{
    int orders = 0;
    std::sort(steps.begin(), steps.end());
    do {
        Meeting().run(steps);
        ++orders;
    } while (!testing::Test::HasFailure() && std::next_permutation(steps.begin(), steps.end()));
    return orders;
}

constexpr auto kHost = Meeting::Host;
constexpr auto kBody = Meeting::Body;

TEST_F(ReadoutRequestTest, EndsRightWheneverTheFrameOfAnEarlierRequestComes)
{
    EXPECT_EQ(runEveryOrder({kHost, kHost, kHost, kBody, kBody, kBody, kBody}), 35);
}

TEST_F(ReadoutRequestTest, EndsRightWheneverTwoFramesAndAnAbortCome)
{
    EXPECT_EQ(runEveryOrder({kHost, kHost, kHost, kBody, kBody, kBody, kBody, kBody, kBody, kBody,
                             kBody, Meeting::Aborter}),
              1980);
}

TEST_F(ReadoutRequestTest, EndsRightWheneverAFrameAnAbortAndTheThreadsEndCome)
{
    EXPECT_EQ(runEveryOrder({kHost, kHost, kHost, kBody, kBody, kBody, kBody, Meeting::Aborter,
                             Meeting::Ender}),
              2520);
}

// Threads

TEST_F(ReadoutRequestTest, NoEndIsLostWhileThreadsRunOnEachOther)
{
    constexpr int kRequests = 3000;
    std::atomic<bool> isOver = false;
    std::thread body([&] {
        while (!isOver) {
            const ReadoutRequest::Progress progress = request.progress();
            if (progress.acquired < progress.ordered) {
                request.count(progress);
            }
            if (request.complete()) {
                request.signal();
            }
        }
    });
    std::thread aborter([&] {
        while (!isOver) {
            request.abort();
            std::this_thread::yield();
        }
    });
    for (int i = 0; i < kRequests; ++i) {
        order({.first = 1, .last = 1 + i % 3});
        const Ending ending = request.await();
        EXPECT_NE(ending.result, RequestResult::ThreadEnded);
        if (ending.result == RequestResult::Complete) {
            EXPECT_EQ(ending.acquired, 1 + i % 3);
        }
    }
    isOver = true;
    body.join();
    aborter.join();
    order(kOneFrame);
    std::thread ender([&] { request.end(); });
    EXPECT_EQ(request.await().result, RequestResult::ThreadEnded);
    ender.join();
}

} // namespace
