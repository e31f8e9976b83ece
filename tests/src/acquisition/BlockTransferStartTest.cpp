// Frames per block; the beginning and the end of a block transfer.
#include "BlockTransferTest.h"

namespace
{

const Texts kStopsPlayback{
    "log Start Frame Block Transfer.", "log Stopping PlaybackMode.", "AcquisitionStop.Execute",
    "PvStream.AbortQueuedBuffers",     "log PlaybackMode stopped.",  "AcquisitionStop.Execute",
};
const std::string kFrameSizeLine =
    "log Frame size 256  Used block size: 5800320,  Frames per buffer 22657";
const Texts kFillsPipeline{
    "PvStream.FlushPacketQueue", "PvPipeline.SetBufferSize 256", "PvPipeline.SetBufferCount 1024",
    "Get StreamStartNumber",     "Get StreamEndNumber",          "Get StreamSequenceStart",
    "Get AcquisitionStart",      "Get AcquisitionStop",
};
const Texts kClearsRange{"StreamStartNumber.SetValue 0", "StreamEndNumber.SetValue 0"};

Texts begins(int mode)
{
    return {"PvPipeline.Start", "AcquisitionStart.Execute",
            "log Readout Thread initialized! Width 16 Height 16 Buffersize 5800320 Queue Size 1024 "
            "Mode " +
                std::to_string(mode)};
}

class FrameBlockSizeTest : public InitializedGrabberTest
{
  protected:
    std::uint32_t framesFor(std::int64_t width, std::int64_t height)
    {
        s.camera().integer("Width").value(width);
        s.camera().integer("Height").value(height);
        std::uint32_t read = 0;
        EXPECT_EQ(expGetWidth(&read, kCamera), 0);
        EXPECT_EQ(expGetHeight(&read, kCamera), 0);
        std::uint32_t frames = 99;
        EXPECT_EQ(expGetFrameBlockSize(&frames, kCamera), 0);
        return frames;
    }
};

TEST_F(FrameBlockSizeTest, IsWhatFitsTheBlock)
{
    EXPECT_EQ(framesFor(1280, 1024), 4U);
    EXPECT_EQ(framesFor(2048, 2048), 1U);
    EXPECT_EQ(framesFor(640, 480), 18U);
}

TEST_F(FrameBlockSizeTest, IsOneForAFrameLargerThanTheBlock)
{
    EXPECT_EQ(framesFor(4096, 2048), 1U);
}

TEST_F(FrameBlockSizeTest, IsAtMostAThousand)
{
    EXPECT_EQ(framesFor(16, 16), 1000U);
    EXPECT_EQ(framesFor(5800, 1), 1000U);
    EXPECT_EQ(framesFor(5801, 1), 999U);
}

TEST_F(FrameBlockSizeTest, FailsWithoutAnImageSize)
{
    s.camera().integer("Width").value(0);
    std::uint32_t read = 99;
    EXPECT_EQ(expGetWidth(&read, kCamera), 0);
    std::uint32_t frames = 99;
    EXPECT_EQ(expGetFrameBlockSize(&frames, kCamera), -1);
    EXPECT_EQ(frames, 99U);
}

TEST_F(FrameBlockSizeTest, DoesNotLookAtTheConnection)
{
    s.loseLink();
    std::uint32_t frames = 99;
    EXPECT_EQ(expGetFrameBlockSize(&frames, kCamera), 0);
    EXPECT_EQ(frames, 4U);
}

class BlockTransferStartTest : public BlockTransferTest
{
};

TEST_F(BlockTransferStartTest, RunsItsStepsInOrder)
{
    prepare();
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              kStopsPlayback + Texts{kFrameSizeLine} + kFillsPipeline + kClearsRange + begins(0));
}

TEST_F(BlockTransferStartTest, ThreadSetsTheLinkThenWaitsForFrames)
{
    prepare(settings(0, 40, 5));
    ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    EXPECT_EQ(s.takeWorkerCalls(), (Texts{
                                       "log ReadoutThread started!",
                                       "Get GevSCPD",
                                       "GevSCPD.SetValue 40",
                                       "Sleep 100",
                                       "log -- GEN setInterPacketDelay 40",
                                       "log -------------------> ReadoutThread: set interpacket "
                                       "delay: 40",
                                       "Get InternalDataRate",
                                       "InternalDataRate.IsAvailable",
                                       "log -- GEN SetOutputDatarate Value: 5",
                                       "InternalDataRate.SetValue 5",
                                       "PvPipeline.RetrieveNextBuffer INFINITE",
                                   }));
}

TEST_F(BlockTransferStartTest, FailsWithoutAThreadAndCanBeStartedOnceThereIsOne)
{
    prepare();
    s.answer("CreateThread", {Code::NotEnoughMemory});
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), -1);
    EXPECT_EQ(expGetRecordedFrameBlock(nullptr, 0, 0, 1, kCamera), -1);
    EXPECT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), 0);
}

TEST_F(BlockTransferStartTest, SelectsTheFirstSequence)
{
    s.camera().boolean("MultisequenceAvailable").value(true);
    prepare();
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), (kStopsPlayback +
                              Texts{"Get StreamSequenceSelector", "StreamSequenceSelector.GetMin",
                                    "StreamSequenceSelector.GetMax",
                                    "StreamSequenceSelector.SetValue 0", kFrameSizeLine} +
                              kFillsPipeline + kClearsRange + begins(0)));
}

TEST_F(BlockTransferStartTest, FailsWhenTheSequenceIsRefused)
{
    s.camera().boolean("MultisequenceAvailable").value(true);
    prepare();
    s.answer("StreamSequenceSelector.SetValue", {Code::Busy});
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), -1);
    EXPECT_EQ(s.takeCalls(),
              (kStopsPlayback + Texts{"Get StreamSequenceSelector", "StreamSequenceSelector.GetMin",
                                      "StreamSequenceSelector.GetMax",
                                      "StreamSequenceSelector.SetValue 0"}));
}

TEST_F(BlockTransferStartTest, FailsWhenNotConnected)
{
    prepare();
    s.dropConnection();
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), Texts{"log Start Frame Block Transfer."});
}

TEST_F(BlockTransferStartTest, FailsWithoutAnImageSize)
{
    prepare();
    s.camera().integer("Width").value(0);
    std::uint32_t width = 99;
    ASSERT_EQ(expGetWidth(&width, kCamera), 0);
    s.forget();
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), -1);
    EXPECT_EQ(s.takeCallsWithoutLookups(), kStopsPlayback);
}

TEST_F(BlockTransferStartTest, FailsWithTheStreamClosed)
{
    prepare();
    s.dropStreams();
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), -1);
    EXPECT_EQ(s.takeCalls(),
              (kStopsPlayback +
               Texts{kFrameSizeLine, "log !! Error Initialize readout thread. Stream not open."}));
    EXPECT_EQ(s.takeWorkerCalls(), Texts{});
}

TEST_F(BlockTransferStartTest, FailsWithMinus2WhenTheBufferCountIsRefused)
{
    prepare();
    s.answer("PvPipeline.SetBufferCount", {Code::NotEnoughMemory});
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), -2);
    EXPECT_EQ(s.takeCalls(),
              (kStopsPlayback +
               Texts{kFrameSizeLine, "PvStream.FlushPacketQueue", "PvPipeline.SetBufferSize 256",
                     "PvPipeline.SetBufferCount 1024",
                     "log !! Error Initialize readout thread. Can't set buffer count."}));
    EXPECT_EQ(s.takeWorkerCalls(), Texts{});
}

TEST_F(BlockTransferStartTest, KeepsTheThreadObjectWhoseInitialisationFailedUntilTheNextStart)
{
    prepare();
    s.answer("PvPipeline.SetBufferCount", {Code::NotEnoughMemory});
    ASSERT_EQ(expStartFrameBlockTransfer(kCamera), -2);
    s.forget();
    EXPECT_EQ(expAbortCurrentFrameBlockRequest(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{"log Current request aborted!"});
    EXPECT_EQ(request(0, 2), -1);
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(request(0, 1), 0);
    feed({1});
    EXPECT_EQ(collect().status, 0U);
}

TEST_F(BlockTransferStartTest, MakesABlockOfOneLargeFrameAndTwoBuffers)
{
    s.camera().integer("Width").range(16, 4096);
    s.camera().integer("Height").range(1, 2048);
    s.camera().integer("Width").value(4096);
    s.camera().integer("Height").value(2048);
    ASSERT_EQ(connect(), 0);
    ASSERT_EQ(initialize(), 0);
    s.forget();
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCallsWithoutLookups(),
              (kStopsPlayback +
               Texts{"log Frame size 8388608  Used block size: 8388608,  Frames per buffer 1",
                     "PvStream.FlushPacketQueue", "PvPipeline.SetBufferSize 8388608",
                     "PvPipeline.SetBufferCount 2"} +
               kClearsRange +
               Texts{"PvPipeline.Start", "AcquisitionStart.Execute",
                     "log Readout Thread initialized! Width 4096 Height 2048 Buffersize 8388608 "
                     "Queue Size 2 Mode 0"}));
}

TEST_F(BlockTransferStartTest, UsesAsManyBuffersOfTheDefaultSizeAs16MiBHold)
{
    ASSERT_EQ(connect(), 0);
    ASSERT_EQ(initialize(), 0);
    s.forget();
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCallsWithoutLookups(),
              (kStopsPlayback +
               Texts{"log Frame size 1310720  Used block size: 5800320,  Frames per buffer 4",
                     "PvStream.FlushPacketQueue", "PvPipeline.SetBufferSize 1310720",
                     "PvPipeline.SetBufferCount 12"} +
               kClearsRange +
               Texts{"PvPipeline.Start", "AcquisitionStart.Execute",
                     "log Readout Thread initialized! Width 1280 Height 1024 Buffersize 5800320 "
                     "Queue Size 12 Mode 0"}));
}

TEST_F(BlockTransferStartTest, FlushesTheSerialLineForRequestsOverIt)
{
    prepare(serial());
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              (kStopsPlayback + Texts{kFrameSizeLine} + kFillsPipeline + kClearsRange +
               Texts{"PvSerialPortIPEngine.FlushRxBuffer", "log - Flush serial com"} + begins(1)));
}

TEST_F(BlockTransferStartTest, UsesFeaturesWithTheSerialLineClosed)
{
    s.answerAlways("PvSerialPortIPEngine.Open", Code::NotAvailable);
    prepare(serial());
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              kStopsPlayback + Texts{kFrameSizeLine} + kFillsPipeline + kClearsRange + begins(0));
}

TEST_F(BlockTransferStartTest, UsesFeaturesForAnyOtherRequestMode)
{
    prepare(settings(2));
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              kStopsPlayback + Texts{kFrameSizeLine} + kFillsPipeline + kClearsRange + begins(0));
}

TEST_F(BlockTransferStartTest, LeavesTheRangeAloneWhenOneOfItsNumbersIsMissing)
{
    s.camera().remove("StreamEndNumber");
    prepare();
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kStopsPlayback + Texts{kFrameSizeLine} + kFillsPipeline + begins(0));
}

const Texts kEndsTransfer{
    "log Stopping BlockTransferMode.",
    "AcquisitionStop.Execute",
    "PvPipeline.Stop",
    "Sleep 500",
    "CameraState.GetValue",
    "log BlockTransferMode stopped.",
};

TEST_F(BlockTransferStartTest, StopEndsTheThreadAndStartsPlaybackWithTheDefaultLinkSettings)
{
    start(settings(0, 40, 5));
    EXPECT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCallsWithoutLookups(), (kEndsTransfer + Texts{
                                                                "log Starting PlaybackMode!",
                                                                "AcquisitionStop.Execute",
                                                                "PvStream.FlushPacketQueue",
                                                                "GevSCPD.SetValue 2000",
                                                                "Sleep 100",
                                                                "log -- GEN setInterPacketDelay "
                                                                "2000",
                                                                "InternalDataRate.IsAvailable",
                                                                "log -- GEN SetOutputDatarate "
                                                                "Value: 5",
                                                                "InternalDataRate.SetValue 5",
                                                                "AcquisitionStart.Execute",
                                                                "log PlaybackMode started!",
                                                            }));
}

TEST_F(BlockTransferStartTest, InPlaybackAfterTheStopThereIsNothingToStop)
{
    start();
    ASSERT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    s.forget();
    EXPECT_EQ(expStopFrameBlockTransfer(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(BlockTransferStartTest, PlaybackIsNotStartedOverALostLink)
{
    start();
    at("log BlockTransferMode stopped.", {[this] { s.notifyLinkLost(); }});
    EXPECT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCallsWithoutLookups(), (kEndsTransfer + Texts{"log Connection to device lost!",
                                                                  "log Starting PlaybackMode!"}));
}

TEST_F(BlockTransferStartTest, PlaybackIsNotStartedWithoutAConnection)
{
    start();
    at("log BlockTransferMode stopped.", {[this] { s.dropConnection(); }});
    EXPECT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCallsWithoutLookups(), kEndsTransfer + Texts{"log Starting PlaybackMode!"});
}

TEST_F(BlockTransferStartTest, ThreadSaysHowManyFullSecondsItRan)
{
    prepare();
    s.setTick(5000);
    ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    s.setTick(7999);
    s.forget();
    ASSERT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeWorkerLog(), Texts{"\nReadoutThread stopped. Duration: 2 seconds\r\n"});
}

} // namespace
