// Collecting a block: good and excess frames, the counter check, aborts, and the waits' ends.
#include "BlockTransferTest.h"

#include <algorithm>

namespace
{

class BlockResultTest : public BlockTransferTest
{
  protected:
    void expectNothing(const Block& block, std::uint32_t status) const
    {
        EXPECT_EQ(block.data, nullptr);
        EXPECT_EQ(block.frames, kUntouched);
        EXPECT_EQ(block.status, status);
    }

    /// Asks for a block, feeds it and collects it.
    Block receive(std::initializer_list<std::uint16_t> counters)
    {
        EXPECT_EQ(request(0, static_cast<std::uint32_t>(counters.size())), 0);
        feed(counters);
        s.forget();
        return collect();
    }

    const std::uint8_t* info(std::uint32_t index)
    {
        return expGetRecordedFrameBlockInfo(nullptr, index, &header, &flags, &extra, kCamera);
    }

    std::uint64_t header = kUntouched;
    std::uint8_t flags = kUntouched;
    std::uint8_t extra = kUntouched;
};

const std::string kLine = "======> CQuorGrabber::getRecordedFrameBlockResult: ";

TEST_F(BlockResultTest, GivesTheFramesOneBehindTheOther)
{
    start();
    ASSERT_EQ(request(0, 2), 0);
    s.pipelineFeed().feedFrame(frame(1, 0xAA));
    s.pipelineFeed().feedFrame(frame(2, 0xBB));
    const Block block = collect();
    ASSERT_NE(block.data, nullptr);
    EXPECT_EQ(block.status, 0U);
    EXPECT_EQ(block.frames, 2);
    EXPECT_TRUE(std::equal(block.data, block.data + kFrameSize, frame(1, 0xAA).data()));
    EXPECT_TRUE(
        std::equal(block.data + kFrameSize, block.data + 2 * kFrameSize, frame(2, 0xBB).data()));
    EXPECT_EQ(block.data[2 * kFrameSize], 0);
}

TEST_F(BlockResultTest, HandsEveryBufferBackAndSaysWhenItIsComplete)
{
    start();
    ASSERT_EQ(request(0, 2), 0);
    feed({1, 2});
    EXPECT_EQ(s.takeWorkerCalls(), (Texts{
                                       "PvPipeline.ReleaseBuffer",
                                       "PvPipeline.RetrieveNextBuffer INFINITE",
                                       "PvPipeline.ReleaseBuffer",
                                       "log      Acquired 2 frames",
                                       "PvPipeline.RetrieveNextBuffer INFINITE",
                                   }));
}

TEST_F(BlockResultTest, WaitsWithoutLimit)
{
    start();
    ASSERT_EQ(request(0, 1), 0);
    s.takeKernelCalls();
    at("WaitForSingleObject INFINITE", {[this] { s.pipelineFeed().feedFrame(frame(1)); }});
    EXPECT_EQ(collect().frames, 1);
    const Texts kernel = s.takeKernelCalls();
    EXPECT_EQ(std::count(kernel.begin(), kernel.end(), "WaitForSingleObject INFINITE"), 1);
}

TEST_F(BlockResultTest, WaitsAgainWhenTheWaitFails)
{
    start();
    ASSERT_EQ(request(0, 1), 0);
    feed({1});
    s.takeKernelCalls();
    s.answer("WaitForSingleObject", {Code::GenericError, Code::GenericError});
    EXPECT_EQ(collect().status, 0U);
    EXPECT_EQ(s.takeKernelCalls(), times(3, {"WaitForSingleObject INFINITE"}));
}

TEST_F(BlockResultTest, AFailedWaitGivesOneOnceAborted)
{
    start();
    ASSERT_EQ(request(0, 1), 0);
    s.answer("WaitForSingleObject", {Code::GenericError});
    at("WaitForSingleObject INFINITE", {[] { expAbortCurrentFrameBlockRequest(kCamera); }});
    expectNothing(collect(), 1);
}

TEST_F(BlockResultTest, CopiesTheWholeBlockEvenBehindItsFrames)
{
    start();
    receive({1, 2});
    const Block block = receive({3});
    EXPECT_EQ(block.frames, 1);
    EXPECT_EQ(block.data[4], 3);
    EXPECT_EQ(block.data[kFrameSize + 4], 2);
}

TEST_F(BlockResultTest, FramesBehindTheBlockAreCountedWithoutALine)
{
    ASSERT_EQ(connect(), 0);
    ASSERT_EQ(initialize(), 0); // 1280 x 1024: four frames fit
    ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    ASSERT_EQ(request(0, 5), 0);
    s.forget();
    feed({1, 2, 3, 4, 5});
    EXPECT_EQ(s.takeWorkerLog(), Texts{"     Acquired 5 frames\r\n"});
    const Block block = collect();
    ASSERT_NE(block.data, nullptr);
    EXPECT_EQ(block.frames, 5);
    EXPECT_EQ(block.data[3 * 1310720 + 4], 4);
    EXPECT_EQ(block.data[4 * 1310720 + 4], 0);
}

TEST_F(BlockResultTest, ExcessFramesAreCountedAndReported)
{
    start();
    ASSERT_EQ(request(0, 2), 0);
    s.forget();
    feed({1, 2, 0x1234, 7});
    EXPECT_EQ(s.takeWorkerCalls(),
              (Texts{
                  "PvPipeline.ReleaseBuffer",
                  "PvPipeline.RetrieveNextBuffer INFINITE",
                  "PvPipeline.ReleaseBuffer",
                  "log      Acquired 2 frames",
                  "PvPipeline.RetrieveNextBuffer INFINITE",
                  "log =============> fehler CQuorReadoutThread::Function - Ignore excess frame "
                  "(count = 4660), acquired 3 frames, requested were 2",
                  "PvPipeline.ReleaseBuffer",
                  "PvPipeline.RetrieveNextBuffer INFINITE",
                  "log =============> fehler CQuorReadoutThread::Function - Ignore excess frame "
                  "(count = 7), acquired 4 frames, requested were 2",
                  "PvPipeline.ReleaseBuffer",
                  "PvPipeline.RetrieveNextBuffer INFINITE",
              }));
}

TEST_F(BlockResultTest, ABlockWithExcessFramesIsAskedForAgain)
{
    start();
    ASSERT_EQ(request(10, 2), 0);
    feed({1, 2, 3});
    s.forget();
    at("StreamSequenceStart.Execute", {[this] {
           s.pipelineFeed().feedFrame(frame(21));
           s.pipelineFeed().feedFrame(frame(22));
       }});
    const Block block = collect();
    EXPECT_EQ(block.status, 0U);
    EXPECT_EQ(block.frames, 2);
    EXPECT_EQ(block.data[4], 21);
    EXPECT_EQ(block.data[kFrameSize + 4], 22);
    EXPECT_EQ(s.takeCalls(),
              (Texts{
                  "log \nError: Acquired (3) more frames than ordered (2) Reorder frames!",
                  "log \nRequest frames: 10 - 11",
                  "StreamEndNumber.SetValue 11",
                  "StreamStartNumber.SetValue 10",
                  "StreamSequenceStart.Execute",
              }));
}

TEST_F(BlockResultTest, CountersWithoutAGapAreNotReported)
{
    start();
    receive({65534, 65535, 0, 1});
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(BlockResultTest, AGapIsReportedInGermanAndTheBlockIsGivenAllTheSame)
{
    start();
    const Block block = receive({10, 12});
    EXPECT_EQ(block.status, 0U);
    EXPECT_EQ(block.frames, 2);
    ASSERT_NE(block.data, nullptr);
    EXPECT_EQ(block.data[kFrameSize + 4], 12);
    EXPECT_EQ(s.takeLog(),
              (Texts{
                  "======> CQuorGrabber::getRecordedFrameBlockResult: Sequenzfehler, Vorg\xE4"
                  "nger frame = 10, Nachfolger frame = 12, )\r\n",
                  "======> CQuorGrabber::getRecordedFrameBlockResult: Framesize = 128, Frames im "
                  "Block: 2, Anzahl der Sequenzfehler = 1)\r\n",
                  "======> CQuorGrabber::getRecordedFrameBlockResult: Frame Nr. 0 im Block hat "
                  "Framcounter = 10\r\n",
                  "======> CQuorGrabber::getRecordedFrameBlockResult: Frame Nr. 1 im Block hat "
                  "Framcounter = 12\r\n",
              }));
}

TEST_F(BlockResultTest, ACounterOfZeroIsAcceptedButNotWhatFollowsIt)
{
    start();
    receive({10, 0, 5});
    EXPECT_EQ(s.takeLog(),
              (Texts{
                  kLine + "Sequenzfehler, Vorg\xE4nger frame = 0, Nachfolger frame = 5, )\r\n",
                  kLine + "Framesize = 128, Frames im Block: 3, Anzahl der Sequenzfehler = 1)\r\n",
                  kLine + "Frame Nr. 0 im Block hat Framcounter = 10\r\n",
                  kLine + "Frame Nr. 1 im Block hat Framcounter = 0\r\n",
                  kLine + "Frame Nr. 2 im Block hat Framcounter = 5\r\n",
              }));
}

TEST_F(BlockResultTest, AllGapsAreReportedBeforeTheFrames)
{
    start();
    receive({10, 12, 12});
    EXPECT_EQ(s.takeLog(),
              (Texts{
                  kLine + "Sequenzfehler, Vorg\xE4nger frame = 10, Nachfolger frame = 12, )\r\n",
                  kLine + "Sequenzfehler, Vorg\xE4nger frame = 12, Nachfolger frame = 12, )\r\n",
                  kLine + "Framesize = 128, Frames im Block: 3, Anzahl der Sequenzfehler = 2)\r\n",
                  kLine + "Frame Nr. 0 im Block hat Framcounter = 10\r\n",
                  kLine + "Frame Nr. 1 im Block hat Framcounter = 12\r\n",
                  kLine + "Frame Nr. 2 im Block hat Framcounter = 12\r\n",
              }));
}

TEST_F(BlockResultTest, FrameZeroIsComparedWithTheBlockBefore)
{
    start();
    receive({500, 501});
    EXPECT_EQ(s.takeLog(), Texts{});
    receive({502, 503});
    EXPECT_EQ(s.takeLog(), Texts{});
    receive({505});
    EXPECT_EQ(s.takeLog(),
              (Texts{
                  kLine + "Sequenzfehler, Vorg\xE4nger frame = 503, Nachfolger frame = 505, )\r\n",
                  kLine + "Framesize = 128, Frames im Block: 1, Anzahl der Sequenzfehler = 1)\r\n",
                  kLine + "Frame Nr. 0 im Block hat Framcounter = 505\r\n",
              }));
}

TEST_F(BlockResultTest, FrameZeroOfTheFirstBlockAfterAStartIsNotCompared)
{
    start();
    receive({500});
    ASSERT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    receive({900, 901});
    EXPECT_EQ(s.takeLog(), Texts{});
}

TEST_F(BlockResultTest, AnAbortEndsTheWait)
{
    start();
    ASSERT_EQ(request(0, 2), 0);
    s.forget();
    at("WaitForSingleObject INFINITE",
       {[] { EXPECT_EQ(expAbortCurrentFrameBlockRequest(kCamera), 0); }});
    expectNothing(collect(), 1);
    EXPECT_EQ(s.takeCalls(), Texts{"log Current request aborted!"});
}

TEST_F(BlockResultTest, AfterAnAbortEveryResultIsOneUntilTheNextRequest)
{
    start();
    ASSERT_EQ(request(0, 2), 0);
    EXPECT_EQ(expAbortCurrentFrameBlockRequest(kCamera), 0);
    expectNothing(collect(), 1);
    expectNothing(collect(), 1);
    EXPECT_EQ(receive({7}).status, 0U);
}

TEST_F(BlockResultTest, FramesOfAnAbortedRequestAreStillCounted)
{
    start();
    ASSERT_EQ(request(0, 2), 0);
    expAbortCurrentFrameBlockRequest(kCamera);
    s.forget();
    feed({1, 2});
    EXPECT_EQ(s.takeWorkerLog(), Texts{"     Acquired 2 frames\r\n"});
    expectNothing(collect(), 1);
}

TEST_F(BlockResultTest, ALateCompletionOfAnAbortedRequestIsNotTheNextOnes)
{
    start();
    ASSERT_EQ(request(0, 2), 0);
    expAbortCurrentFrameBlockRequest(kCamera);
    feed({1, 2});
    expectNothing(collect(), 1);
    ASSERT_EQ(request(10, 1), 0);
    at("WaitForSingleObject INFINITE", {[this] { s.pipelineFeed().feedFrame(frame(42)); }});
    const Block block = collect();
    EXPECT_EQ(block.status, 0U);
    EXPECT_EQ(block.frames, 1);
    EXPECT_EQ(block.data[4], 42);
}

TEST_F(BlockResultTest, ALateSignalOfAnAbortedRequestIsNotTheNextOnes)
{
    start();
    ASSERT_EQ(request(0, 2), 0);
    expAbortCurrentFrameBlockRequest(kCamera);
    at("log      Acquired 2 frames", {[this] { EXPECT_EQ(request(10, 1), 0); }});
    feed({1, 2});
    at("WaitForSingleObject INFINITE", {[] {}, [this] { s.pipelineFeed().feedFrame(frame(42)); }});
    const Block block = collect();
    EXPECT_EQ(block.status, 0U);
    EXPECT_EQ(block.frames, 1);
    EXPECT_EQ(block.data[4], 42);
}

TEST_F(BlockResultTest, AbortWithoutATransferDoesNothing)
{
    prepare();
    EXPECT_EQ(expAbortCurrentFrameBlockRequest(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{});
    EXPECT_EQ(s.takeKernelCalls(), Texts{});
}

TEST_F(BlockResultTest, AStopEndsTheWait)
{
    start();
    ASSERT_EQ(request(0, 2), 0);
    at("WaitForSingleObject INFINITE", {[] { EXPECT_EQ(expStopFrameBlockTransfer(kCamera), 0); }});
    expectNothing(collect(), 0xFFFFFFFF);
}

TEST_F(BlockResultTest, ALostLinkEndsTheWait)
{
    start();
    ASSERT_EQ(request(0, 2), 0);
    s.forget();
    at("WaitForSingleObject INFINITE", {[this] { s.notifyLinkLost(); }});
    expectNothing(collect(), 1);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"log Connection to device lost!", "log Current request aborted!"}));
}

TEST_F(BlockResultTest, IsNullWithTheLinkLostAndTheStatusUntouched)
{
    start();
    ASSERT_EQ(request(0, 1), 0);
    feed({1});
    s.notifyLinkLost();
    s.forget();
    expectNothing(collect(), kUntouched);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(BlockResultTest, IsNullAtOnceWithoutARequest)
{
    start();
    s.takeKernelCalls();
    expectNothing(collect(), 0xFFFFFFFF);
    EXPECT_EQ(s.takeKernelCalls(), Texts{});
}

TEST_F(BlockResultTest, IsNullWithoutATransfer)
{
    prepare();
    expectNothing(collect(), 0xFFFFFFFF);
}

TEST_F(BlockResultTest, InfoDecodesTheHeaderWhereTheFrameLies)
{
    start();
    ASSERT_EQ(request(0, 2), 0);
    s.pipelineFeed().feedFrame(frame(1));
    s.pipelineFeed().feedFrame({0xFF, 0xFF, 0xFF, 0xFF, 0x02, 0x00, 0xFF, 0x5A, 0x01, 0x23, 0x45,
                                0x67, 0x89, 0xAB, 0xCD, 0xEF});
    const Block block = collect();
    ASSERT_NE(block.data, nullptr);
    EXPECT_EQ(info(1), block.data + kFrameSize);
    EXPECT_EQ(header, 0x00CDAB8967452301U);
    EXPECT_EQ(flags, 0xA5);
    EXPECT_EQ(extra, 0xEF);
}

TEST_F(BlockResultTest, InfoReadsBehindTheFramesCollectedButNotBehindTheBlock)
{
    start();
    const Block block = receive({1});
    EXPECT_EQ(info(22656), block.data + 22656 * kFrameSize);
    EXPECT_EQ(header, 0U);
    EXPECT_EQ(flags, 0xFF);
    EXPECT_EQ(extra, 0);
    flags = kUntouched;
    EXPECT_EQ(info(22658), nullptr);
    EXPECT_EQ(flags, kUntouched);
}

TEST_F(BlockResultTest, InfoIsNullWithTheLinkLost)
{
    start();
    receive({1});
    s.notifyLinkLost();
    EXPECT_EQ(info(0), nullptr);
    EXPECT_EQ(flags, kUntouched);
}

TEST_F(BlockResultTest, InfoIsNullWithoutATransfer)
{
    prepare();
    EXPECT_EQ(info(0), nullptr);
    EXPECT_EQ(flags, kUntouched);
}

TEST_F(BlockResultTest, IgnoresTheFirstArguments)
{
    start();
    ASSERT_EQ(request(0, 1), 0);
    feed({1});
    int anything = 0;
    std::int64_t frames = 0;
    std::uint32_t status = kUntouched;
    const std::uint8_t* const data =
        expGetRecordedFrameBlockResult(&anything, &frames, &status, kCamera);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(expGetRecordedFrameBlockInfo(&anything, 0, &header, &flags, &extra, kCamera), data);
    EXPECT_EQ(anything, 0);
}

} // namespace
