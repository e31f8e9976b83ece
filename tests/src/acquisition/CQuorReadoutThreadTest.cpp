// The readout thread itself: what its waits hand out, and what its block holds.
#include "CQuorReadoutThread.h"
#include "BlockTransferTest.h"
#include "CQuorGrabber.h"

#include <algorithm>

namespace
{

class ReadoutThreadTest : public BlockTransferTest
{
  protected:
    void SetUp() override
    {
        ASSERT_EQ(mGrabber.connect(kMac, kIp, true, {}), ConnectResult::Connected);
    }

    /// @param blockSize  bytes
    void begin(std::uint32_t blockSize, std::int32_t frames)
    {
        ASSERT_EQ(thread.initialize(mGrabber.settings().link, 16, 16, blockSize, 0),
                  StartResult::Started);
        thread.start();
        ASSERT_EQ(thread.requestFrames({0, frames - 1}), Outcome::Done);
    }

    /// The result as hosts get it.
    std::int32_t waitForResult(std::int32_t* frames)
    {
        const ReadoutRequest::Ending ending = thread.waitForResult();
        *frames = ending.acquired.value_or(*frames);
        return static_cast<std::int32_t>(ending.result);
    }

    void expectByte(std::size_t offset, std::uint8_t value)
    {
        thread.readBlock([&](std::span<const std::uint8_t> block) {
            ASSERT_LT(offset, block.size());
            EXPECT_EQ(block[offset], value);
        });
    }

  private:
    CQuorGrabber mGrabber;

  protected:
    CQuorReadoutThread thread; // ends before the grabber
    std::int32_t acquired = kUntouched;
};

TEST_F(ReadoutThreadTest, AWaitGivesTheFramesOfACompleteRequest)
{
    begin(1024, 2);
    feed({1, 2});
    EXPECT_EQ(waitForResult(&acquired), 0);
    EXPECT_EQ(acquired, 2);
}

TEST_F(ReadoutThreadTest, AWaitEndedByAnAbortGivesTheFramesThatCame)
{
    begin(1024, 2);
    feed({1});
    at("WaitForSingleObject INFINITE", {[this] { thread.abortRequest(); }});
    EXPECT_EQ(waitForResult(&acquired), 1);
    EXPECT_EQ(acquired, 1);
}

TEST_F(ReadoutThreadTest, AWaitAfterAnAbortGivesNothing)
{
    begin(1024, 2);
    feed({1});
    thread.abortRequest();
    EXPECT_EQ(waitForResult(&acquired), 1);
    EXPECT_EQ(acquired, static_cast<std::int32_t>(kUntouched));
}

TEST_F(ReadoutThreadTest, AFailedWaitGivesNothingOnceAborted)
{
    begin(1024, 2);
    feed({1});
    s.answer("WaitForSingleObject", {Code::GenericError});
    at("WaitForSingleObject INFINITE", {[this] { thread.abortRequest(); }});
    EXPECT_EQ(waitForResult(&acquired), 1);
    EXPECT_EQ(acquired, static_cast<std::int32_t>(kUntouched));
}

TEST_F(ReadoutThreadTest, AWaitEndedByTheThreadsEndGivesTheFramesThatCame)
{
    begin(1024, 2);
    feed({1});
    at("WaitForSingleObject INFINITE", {[this] { EXPECT_TRUE(thread.stop()); }});
    EXPECT_EQ(waitForResult(&acquired), -1);
    EXPECT_EQ(acquired, 1);
}

TEST_F(ReadoutThreadTest, TheEndSignalsTheResultStopsThePipelineAndReportsItsDuration)
{
    begin(1024, 2);
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    s.forget();
    EXPECT_TRUE(thread.stop());
    EXPECT_EQ(s.takeCalls(), Texts{"PvPipeline.Stop"});
    EXPECT_EQ(s.takeWorkerCalls(), Texts{"log \nReadoutThread stopped. Duration: 0 seconds"});
    const Texts kernel = s.takeKernelCalls();
    EXPECT_EQ(std::count(kernel.begin(), kernel.end(), "SetEvent"), 1);
    EXPECT_EQ(std::count(kernel.begin(), kernel.end(), "WaitForSingleObject 5000"), 1);
}

TEST_F(ReadoutThreadTest, AFrameIsStoredUpToTheBlocksLastByte)
{
    begin(512, 2);
    s.pipelineFeed().feedFrame(frame(1, 0xAA));
    s.pipelineFeed().feedFrame(frame(2, 0xBB));
    EXPECT_EQ(waitForResult(&acquired), 0);
    expectByte(255, 0xAA);
    expectByte(511, 0xBB);
}

TEST_F(ReadoutThreadTest, AFrameThatDoesNotFitWholeIsCountedButNotStored)
{
    begin(511, 2);
    s.pipelineFeed().feedFrame(frame(1, 0xAA));
    s.pipelineFeed().feedFrame(frame(2, 0xBB));
    EXPECT_EQ(waitForResult(&acquired), 0);
    EXPECT_EQ(acquired, 2);
    expectByte(255, 0xAA);
    expectByte(510, 0);
}

} // namespace
