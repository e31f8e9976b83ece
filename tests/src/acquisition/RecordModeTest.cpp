// Starting record mode, attaching to a running recording, aborting one.
#include "ModeTest.h"

#include <algorithm>

namespace
{

class RecordModeTest : public ModeTest
{
};

const Texts kReadStandby{"RecordStandby.GetValue", "log -- GEN isRecordStandbyEnabled 0"};
const Texts kStarted{"PvBuffer.Free",
                     "PvBuffer.Alloc 1310720",
                     "log Allocate single image buffer, Buffersize 1310720",
                     "AcquisitionStart.Execute",
                     "RecordStart.Execute",
                     "log Record mode started."};
const Texts kMaxFrames{"RecordMaxFramesPerSequence.GetValue", "log Max frames count 6400"};
const Texts kUpToStandby = Texts{"log Starting record mode"} + kStopPlayback + kLiveSource;

TEST_F(RecordModeTest, RunsItsStepsInOrder)
{
    EXPECT_EQ(expStartRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kUpToStandby + kReadStandby + pipelineOf("1310720", "12") + kPacing +
                                 kMaxFrames + kStarted);
}

TEST_F(RecordModeTest, StartsTheThreadBeforeTheCamera)
{
    Texts order;
    s.onCall([&](const std::string& call) {
        if (call == "CreateThread" || call == "AcquisitionStart.Execute" ||
            call == "PvBuffer.Alloc 1310720") {
            order.push_back(call);
        }
    });
    EXPECT_EQ(expStartRecordMode(kCamera), 0);
    EXPECT_EQ(order, (Texts{"CreateThread", "PvBuffer.Alloc 1310720", "AcquisitionStart.Execute"}));
}

TEST_F(RecordModeTest, FailsWithoutAThreadAndIsStoppedInOrder)
{
    s.answer("CreateThread", {Code::NotEnoughMemory});
    EXPECT_EQ(expStartRecordMode(kCamera), -1);
    const Texts calls = s.takeCalls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "RecordStart.Execute"), 0);
    EXPECT_EQ(expStopRecordMode(kCamera), 0);
    EXPECT_EQ(expStartRecordMode(kCamera), 0);
}

TEST_F(RecordModeTest, WritesItsLinesByteForByte)
{
    EXPECT_EQ(expStartRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeLog(),
              (Texts{"Starting record mode\r\n", "Stopping PlaybackMode.\r\n",
                     "PlaybackMode stopped.\r\n", "-- GEN changeAquisitionSource: Live\r\n",
                     "-- GEN isRecordStandbyEnabled 0\r\n", "-- GEN setInterPacketDelay 2000\r\n",
                     "-- GEN SetOutputDatarate Value: 3\r\n", "Max frames count 6400\r\n",
                     "Allocate single image buffer, Buffersize 1310720\r\n",
                     "Record mode started.\r\n"}));
}

TEST_F(RecordModeTest, DoesNothingWhileRecording)
{
    startRecord();
    EXPECT_EQ(expStartRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{});
    EXPECT_EQ(s.takeKernelCalls(), Texts{});
}

TEST_F(RecordModeTest, FailsWithoutAConnection)
{
    s.dropConnection();
    EXPECT_EQ(expStartRecordMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), Texts{"log Starting record mode"});
}

TEST_F(RecordModeTest, StaysInRecordModeWhenTheSourceCannotBeSwitched)
{
    s.answer("AcquisitionSource.SetValue", {Code::Busy});
    EXPECT_EQ(expStartRecordMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), (Texts{"log Starting record mode"} + kStopPlayback +
                              Texts{"AcquisitionSource.SetValue Live",
                                    "log -- GEN changeAquisitionSource Error"}));
    EXPECT_EQ(expStartRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{}); // in record mode already
}

TEST_F(RecordModeTest, StartsWhenTheStandbyCannotBeRead)
{
    s.answer("RecordStandby.GetValue", {Code::Timeout});
    EXPECT_EQ(expStartRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              (kUpToStandby +
               Texts{"RecordStandby.GetValue", "log -- GEN isRecordStandbyEnabled Error"} +
               pipelineOf("1310720", "12") + kPacing + kMaxFrames + kStarted));
}

TEST_F(RecordModeTest, LogsTheStandbyOfTheCamera)
{
    s.camera().boolean("RecordStandby").value(true);
    EXPECT_EQ(expStartRecordMode(kCamera), 0);
    const Texts calls = s.takeCalls();
    EXPECT_EQ(calls.at(kUpToStandby.size() + 1), "log -- GEN isRecordStandbyEnabled 1");
}

TEST_F(RecordModeTest, GivesTheResultOfAThreadWithoutBuffers)
{
    useImageSize(5000, 4000);
    EXPECT_EQ(expStartRecordMode(kCamera), -2);
    EXPECT_EQ(s.takeCalls(),
              kUpToStandby + kReadStandby + pipelineOf("20000000", "0") +
                  Texts{"log !! Error Initialize acquisition thread. Can't set buffer count."});
    EXPECT_EQ(s.takeKernelCalls(), Texts{});
}

TEST_F(RecordModeTest, GivesTheResultOfAThreadWithoutStream)
{
    s.dropStreams();
    EXPECT_EQ(expStartRecordMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(),
              kUpToStandby + kReadStandby +
                  Texts{"log !! Error Initialize acquisition thread. Stream not open."});
    EXPECT_EQ(s.takeKernelCalls(), Texts{});
}

TEST_F(RecordModeTest, RejectsAnImageWithoutPixelsBeforeTheModeChanges)
{
    useImageSize(1280, 0);
    EXPECT_EQ(expStartRecordMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), Texts{"log Starting record mode"});
    EXPECT_EQ(expStopRecordMode(kCamera), -1); // in playback still
}

TEST_F(RecordModeTest, ReplacesTheSingleImageBuffer)
{
    useImageSize(64, 32);
    EXPECT_EQ(expStartRecordMode(kCamera), 0);
    const Texts calls = s.takeCalls();
    const auto freed = std::find(calls.begin(), calls.end(), "PvBuffer.Free");
    ASSERT_GE(calls.end() - freed, 3);
    EXPECT_EQ(Texts(freed, freed + 3),
              (Texts{"PvBuffer.Free", "PvBuffer.Alloc 2048",
                     "log Allocate single image buffer, Buffersize 2048"}));
}

TEST_F(RecordModeTest, IgnoresThatTheCameraRefusesItsCommands)
{
    s.answerAlways("AcquisitionStart.Execute", Code::Busy);
    s.answerAlways("RecordStart.Execute", Code::Busy);
    EXPECT_EQ(expStartRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls().back(), "log Record mode started.");
}

TEST_F(RecordModeTest, EndsTheThreadOfLiveMode)
{
    startLive();
    EXPECT_EQ(expStartRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kUpToStandby + kReadStandby + Texts{"PvPipeline.Stop"} +
                                 pipelineOf("1310720", "12", "PvPipeline#2") + kPacing +
                                 kMaxFrames + kStarted);
}

TEST_F(RecordModeTest, IsEnteredByAttachingToARunningRecording)
{
    setCameraState("Recording");
    ASSERT_EQ(initialize(), 1);
    settle();
    const Texts calls = s.takeCalls();
    for (const char* call : {"AcquisitionStop.Execute", "AcquisitionSource.SetValue Live",
                             "RecordStandby.GetValue", "RecordStart.Execute"}) {
        EXPECT_EQ(std::count(calls.begin(), calls.end(), call), 0) << call;
    }
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "AcquisitionStart.Execute"), 1);
    EXPECT_EQ(expStartRecordMode(kCamera), 0); // in record mode already
    EXPECT_EQ(s.takeCalls(), Texts{});
    setCameraState("Idle");
    EXPECT_EQ(expStopRecordMode(kCamera), 0);
}

TEST_F(RecordModeTest, TakesNoStandbyOverWhenItAttaches)
{
    s.camera().boolean("RecordStandby").value(true);
    setCameraState("Recording");
    ASSERT_EQ(initialize(), 1);
    settle();
    setCameraState("Idle");
    EXPECT_EQ(expStopRecordMode(kCamera), 0); // 3 with the standby
}

} // namespace
