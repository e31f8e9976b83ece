// Starting, pausing and resuming live mode.
#include "ModeTest.h"

#include <algorithm>

namespace
{

class LiveModeTest : public ModeTest
{
  protected:
    /// The host's stop tells the mode: in live mode it begins with its line.
    void expectLiveMode()
    {
        s.forget();
        EXPECT_EQ(expStopLiveMode(kCamera), 0);
        EXPECT_EQ(s.takeCalls().at(0), "log Stopping live mode.");
    }

    void expectPlaybackMode()
    {
        s.forget();
        EXPECT_EQ(expStopLiveMode(kCamera), -1);
        EXPECT_EQ(s.takeCalls(), Texts{});
    }
};

const Texts kUpToFrameSize =
    Texts{"log Start live mode"} + kStopPlayback +
    Texts{"Get AcquisitionMode", "AcquisitionMode.SetValue Continuous", "log Frame size: 1310720"};

TEST_F(LiveModeTest, RunsItsStepsInOrder)
{
    EXPECT_EQ(expStartLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), (kUpToFrameSize + kLiveSource + pipelineOf("1310720", "12") + kPacing +
                              Texts{"log Max frames count 0", "AcquisitionStart.Execute"}));
    expectLiveMode();
}

TEST_F(LiveModeTest, StartsTheThreadBeforeTheCamera)
{
    Texts order;
    s.onCall([&](const std::string& call) {
        if (call == "CreateThread" || call == "AcquisitionStart.Execute" ||
            call == "log Max frames count 0") {
            order.push_back(call);
        }
    });
    EXPECT_EQ(expStartLiveMode(kCamera), 0);
    EXPECT_EQ(order, (Texts{"log Max frames count 0", "CreateThread", "AcquisitionStart.Execute"}));
    settle();
    EXPECT_EQ(s.takeKernelCalls(), Texts{"CreateThread"});
}

TEST_F(LiveModeTest, FailsWithoutAThreadAndCanBeStartedOnceThereIsOne)
{
    s.answer("CreateThread", {Code::NotEnoughMemory});
    EXPECT_EQ(expStartLiveMode(kCamera), -1);
    const Texts calls = s.takeCalls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "AcquisitionStart.Execute"), 0);
    EXPECT_EQ(expStartLiveMode(kCamera), 0);
}

TEST_F(LiveModeTest, WritesItsLinesByteForByte)
{
    EXPECT_EQ(expStartLiveMode(kCamera), 0);
    EXPECT_EQ(
        s.takeLog(),
        (Texts{"Start live mode\r\n", "Stopping PlaybackMode.\r\n", "PlaybackMode stopped.\r\n",
               "Frame size: 1310720\r\n", "-- GEN changeAquisitionSource: Live\r\n",
               "-- GEN setInterPacketDelay 2000\r\n", "-- GEN SetOutputDatarate Value: 3\r\n",
               "Max frames count 0\r\n"}));
}

TEST_F(LiveModeTest, StopsPlaybackAndFailsWithoutAConnection)
{
    s.dropConnection();
    EXPECT_EQ(expStartLiveMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), Texts{"log Start live mode"} + kStopPlayback);
    EXPECT_EQ(s.takeKernelCalls(), Texts{});
}

TEST_F(LiveModeTest, StaysInLiveModeWhenTheSourceCannotBeSwitched)
{
    s.answer("AcquisitionSource.SetValue", {Code::Busy});
    EXPECT_EQ(expStartLiveMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), (kUpToFrameSize + Texts{"AcquisitionSource.SetValue Live",
                                                     "log -- GEN changeAquisitionSource Error"}));
    EXPECT_EQ(s.takeKernelCalls(), Texts{});
    expectLiveMode();
}

TEST_F(LiveModeTest, FailsWithACameraThatHasNoSource)
{
    s.camera().remove("AcquisitionSource");
    rebind();
    EXPECT_EQ(expStartLiveMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), kUpToFrameSize + Texts{"log -- GEN changeAquisitionSource Error"});
}

TEST_F(LiveModeTest, StartsWithoutTheContinuousMode)
{
    s.answer("AcquisitionMode.SetValue", {Code::NotAvailable});
    EXPECT_EQ(expStartLiveMode(kCamera), 0);
    s.camera().remove("AcquisitionMode");
    EXPECT_EQ(expStartLiveMode(kCamera), 0);
}

TEST_F(LiveModeTest, IgnoresThatTheCameraRefusesItsCommands)
{
    s.answerAlways("AcquisitionStop.Execute", Code::Busy);
    s.answerAlways("AcquisitionStart.Execute", Code::Busy);
    s.answerAlways("PvStream.AbortQueuedBuffers", Code::GenericError);
    EXPECT_EQ(expStartLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls().back(), "AcquisitionStart.Execute");
}

TEST_F(LiveModeTest, UsesTheGeometryOfTheMoment)
{
    std::uint32_t width = 640;
    ASSERT_EQ(expSetWidth(&width, kCamera), 0);
    s.forget();
    EXPECT_EQ(expStartLiveMode(kCamera), 0);
    const Texts calls = s.takeCalls();
    EXPECT_EQ(calls.at(7), "log Frame size: 655360");
    EXPECT_EQ(Texts(calls.begin() + 10, calls.begin() + 13), pipelineOf("655360", "25"));
}

struct BufferCount {
    std::int64_t width;
    std::int64_t height;
    const char* size;
    const char* count;
};

class LiveBufferCountTest : public LiveModeTest, public ::testing::WithParamInterface<BufferCount>
{
};

TEST_P(LiveBufferCountTest, FitsTheMemory)
{
    useImageSize(GetParam().width, GetParam().height);
    EXPECT_EQ(expStartLiveMode(kCamera), 0);
    const Texts calls = s.takeCalls();
    EXPECT_EQ(Texts(calls.begin() + 10, calls.begin() + 13),
              pipelineOf(GetParam().size, GetParam().count));
}

INSTANTIATE_TEST_SUITE_P(Sizes, LiveBufferCountTest,
                         ::testing::Values(BufferCount{256, 256, "65536", "256"},
                                           BufferCount{256, 255, "65280", "256"},
                                           BufferCount{257, 256, "65792", "255"},
                                           BufferCount{1000, 100, "100000", "167"},
                                           BufferCount{4096, 4096, "16777216", "1"}));

TEST_F(LiveModeTest, GivesTheResultOfAThreadWithoutBuffers)
{
    useImageSize(5000, 4000);
    EXPECT_EQ(expStartLiveMode(kCamera), -2);
    const Texts calls = s.takeCalls();
    EXPECT_EQ(Texts(calls.begin() + 10, calls.end()),
              pipelineOf("20000000", "0") +
                  Texts{"log !! Error Initialize acquisition thread. Can't set buffer count."});
    EXPECT_EQ(s.takeKernelCalls(), Texts{});
    expectLiveMode();
}

TEST_F(LiveModeTest, GivesTheResultOfAThreadWithoutStream)
{
    s.dropStreams();
    EXPECT_EQ(expStartLiveMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(),
              kUpToFrameSize + kLiveSource +
                  Texts{"log !! Error Initialize acquisition thread. Stream not open."});
    EXPECT_EQ(s.takeKernelCalls(), Texts{});
}

TEST_F(LiveModeTest, KeepsAThreadThatCouldNotBeInitialised)
{
    s.answer("PvPipeline.SetBufferCount", {Code::NotEnoughMemory});
    ASSERT_EQ(expStartLiveMode(kCamera), -2);
    s.forget();
    EXPECT_EQ(expPauseLiveMode(1, kCamera), 0); // it does not run: nothing to pause
    EXPECT_EQ(s.takeCalls(), Texts{});
    EXPECT_EQ(expPauseLiveMode(0, kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{"AcquisitionStart.Execute"});
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeKernelCalls(), Texts{}); // nothing to wait for
}

TEST_F(LiveModeTest, RejectsAnImageWithoutPixelsBeforeTheModeChanges)
{
    useImageSize(0, 1024);
    EXPECT_EQ(expStartLiveMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), (Texts{"log Start live mode"} + kStopPlayback +
                              Texts{"Get AcquisitionMode", "AcquisitionMode.SetValue Continuous",
                                    "log Frame size: 0"}));
    expectPlaybackMode();
}

TEST_F(LiveModeTest, StartsAnewWhateverTheMode)
{
    startRecord();
    EXPECT_EQ(expStartLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), (kUpToFrameSize + kLiveSource + Texts{"PvPipeline.Stop"} +
                              pipelineOf("1310720", "12", "PvPipeline#2") + kPacing +
                              Texts{"log Max frames count 0", "AcquisitionStart.Execute"}));
    settle();
    EXPECT_EQ(s.takeKernelCalls(),
              (Texts{"WaitForSingleObject 5000", "CloseHandle", "CreateThread"}));
    expectLiveMode();
}

TEST_F(LiveModeTest, PausesTheCameraAlone)
{
    startLive();
    EXPECT_EQ(expPauseLiveMode(1, kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{"AcquisitionStop.Execute"});
    settle(); // still waiting for buffers
    EXPECT_EQ(s.takeWorkerCalls(), Texts{});
    EXPECT_EQ(s.takeKernelCalls(), Texts{});
}

TEST_F(LiveModeTest, PausesWithAnyByteButZero)
{
    startLive();
    EXPECT_EQ(expPauseLiveMode(255, kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{"AcquisitionStop.Execute"});
}

TEST_F(LiveModeTest, ResumesTheCamera)
{
    startLive();
    ASSERT_EQ(expPauseLiveMode(1, kCamera), 0);
    s.forget();
    EXPECT_EQ(expPauseLiveMode(0, kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{"AcquisitionStart.Execute"});
    expectLiveMode();
}

TEST_F(LiveModeTest, HasNothingToPauseOutsideLiveMode)
{
    EXPECT_EQ(expPauseLiveMode(1, kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(LiveModeTest, CannotBeResumedWithoutAThread)
{
    EXPECT_EQ(expPauseLiveMode(0, kCamera), -1);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

} // namespace
