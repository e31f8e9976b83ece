// Leaving a mode: the commands, the waits, the results, and what is left of it.
#include "ModeTest.h"

#include <algorithm>
#include <functional>
#include <future>
#include <mutex>

namespace
{

class StopModeTest : public ModeTest
{
  protected:
    /// Idle is only left behind by a recording that stays in standby.
    void reachIdle()
    {
        s.camera().boolean("RecordStandby").value(true);
        startRecord();
        ASSERT_EQ(expStopRecordMode(kCamera), 3);
        s.forget();
    }

    void startBlockTransfer()
    {
        ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
        settle();
        s.forget();
    }

    void enableFlashAfterRecord(bool enable)
    {
        ASSERT_EQ(expEnableFlashWriteAfterRecordStop(enable ? 1 : 0, kCamera), 0);
        s.forget();
    }

    /// Runs `action` at the n-th sleep of a poll.
    void atPoll(int n, const std::function<void()>& action)
    {
        mPolls = 0;
        s.onCall([=, this](const std::string& call) {
            if (call == "Sleep 500" && ++mPolls == n) {
                action();
            }
        });
    }

  private:
    int mPolls = 0;
};

const Texts kStopsRecord{"log Stopping record mode.", "RecordStop.Execute", "PvPipeline.Stop"};
const Texts kLeavesRecord = Texts{"AcquisitionStop.Execute"} + kMemorySource +
                            Texts{"log Record mode stopped."} + kStartPlayback;
const Texts kStopsLive{"log Stopping live mode.", "AcquisitionStop.Execute", "PvPipeline.Stop"};
const Texts kLeavesLive = Texts{"AcquisitionStop.Execute"} + kMemorySource +
                          Texts{"log Live mode stopped."} + kStartPlayback;
const Texts kStopsBlockTransfer{"log Stopping BlockTransferMode.", "AcquisitionStop.Execute",
                                "PvPipeline.Stop"};
const Texts kLinkLost{"log Connection to device lost!"};
const Texts kStopsWithoutCamera{"log Stopping current mode - Connection to device lost!"};
const Texts kStoppedWithoutCamera{"log Stopped current mode - Connection to device lost -"};
const Texts kJoined{"WaitForSingleObject 5000", "CloseHandle"};

// --- nothing to stop ------------------------------------------------------------------------

TEST_F(StopModeTest, HasNothingToStopWhenIdle)
{
    reachIdle();
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(expStopRecordMode(kCamera), 0);
    EXPECT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(GrabberTest, IsIdleBeforeItIsInitialised)
{
    ASSERT_EQ(connect(), 0);
    s.forget();
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(StopModeTest, DoesNotStopPlayback)
{
    EXPECT_EQ(expStopLiveMode(kCamera), -1);
    EXPECT_EQ(expStopRecordMode(kCamera), -1);
    EXPECT_EQ(expStopFrameBlockTransfer(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

// --- live mode ------------------------------------------------------------------------------

TEST_F(StopModeTest, StopsLiveMode)
{
    startLive();
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kStopsLive + kPoll + kLeavesLive);
    EXPECT_EQ(s.takeWorkerCalls(), Texts{"log Acquisition thread stopped!"});
    EXPECT_EQ(s.takeKernelCalls(), kJoined);
    EXPECT_EQ(expStopLiveMode(kCamera), -1); // in playback
}

TEST_F(StopModeTest, JoinsTheThreadBetweenTheStopCommandAndTheWait)
{
    startLive();
    Texts order;
    std::mutex mutex;
    s.onCall([&](const std::string& call) {
        const std::lock_guard lock(mutex);
        if (call != "log Acquisition thread stopped!") { // any time before CloseHandle
            order.push_back(call);
        }
    });
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    ASSERT_GE(order.size(), 7U);
    const auto begin =
        std::find(order.begin(), order.end(), std::string("AcquisitionStop.Execute"));
    ASSERT_GE(order.end() - begin, 5);
    EXPECT_EQ(Texts(begin, begin + 5),
              (Texts{"AcquisitionStop.Execute", "PvPipeline.Stop", "WaitForSingleObject 5000",
                     "CloseHandle", "PvDevice.IsConnected"}));
}

TEST_F(StopModeTest, IsTheSameOperationUnderItsThreeNames)
{
    for (auto* const stop : {expStopLiveMode, expStopRecordMode, expStopFrameBlockTransfer}) {
        startLive();
        EXPECT_EQ(stop(kCamera), 0);
        EXPECT_EQ(s.takeCalls().at(0), "log Stopping live mode.");
    }
}

TEST_F(StopModeTest, WaitsWithoutLimitUntilTheCameraIsIdle)
{
    startLive();
    setCameraState("Live");
    atPoll(200, [this] { setCameraState("Idle"); });
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kStopsLive + times(200, kPoll) + kLeavesLive);
}

TEST_F(StopModeTest, WaitsOnWhenTheStateCannotBeRead)
{
    startLive();
    s.answer("CameraState.GetValue", {Code::Timeout, Code::Busy});
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kStopsLive + times(3, kPoll) + kLeavesLive);
}

TEST_F(StopModeTest, StopsLiveModeOfACameraThatRefusesEverything)
{
    startLive();
    s.answerAlways("AcquisitionStop.Execute", Code::Busy);
    s.answerAlways("AcquisitionStart.Execute", Code::Busy);
    s.answerAlways("AcquisitionSource.SetValue", Code::Busy);
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              (kStopsLive + kPoll +
               Texts{"AcquisitionStop.Execute", "AcquisitionSource.SetValue Memory",
                     "log -- GEN changeAquisitionSource Error", "log Live mode stopped."} +
               kStartPlayback));
}

TEST_F(StopModeTest, EndsTheWaitForTheCameraWhenTheLinkIsLost)
{
    startLive();
    setCameraState("Live");
    atPoll(3, [this] { s.loseLink(); });
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    // Idle, since playback is not started.
    EXPECT_EQ(s.takeCalls(), (kStopsLive + times(2, kPoll) + Texts{"Sleep 500"} + kLinkLost +
                              Texts{"AcquisitionStop.Execute"} + kMemorySource +
                              Texts{"log Live mode stopped.", "log Starting PlaybackMode!"}));
}

TEST_F(StopModeTest, EndsTheWaitForTheCameraWhenOnlyTheFlagTellsOfTheLoss)
{
    startLive();
    setCameraState("Live");
    atPoll(1, [this] { s.notifyLinkLost(); });
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              (kStopsLive + Texts{"Sleep 500"} + kLinkLost + Texts{"AcquisitionStop.Execute"} +
               kMemorySource + Texts{"log Live mode stopped.", "log Starting PlaybackMode!"}));
}

TEST_F(StopModeTest, EndsTheWaitForTheCameraWhenTheDeviceIsNoLongerConnected)
{
    startLive();
    setCameraState("Live");
    atPoll(2, [this] { s.dropConnection(); });
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              (kStopsLive + kPoll + Texts{"Sleep 500", "AcquisitionStop.Execute"} + kMemorySource +
               Texts{"log Live mode stopped.", "log Starting PlaybackMode!"}));
}

TEST_F(StopModeTest, SkipsTheWaitWhenTheLinkIsLostBeforeIt)
{
    startLive();
    s.onCall([this](const std::string& call) {
        if (call == "CloseHandle") {
            s.notifyLinkLost();
        }
    });
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              (kStopsLive + kLinkLost + Texts{"AcquisitionStop.Execute"} + kMemorySource +
               Texts{"log Live mode stopped.", "log Starting PlaybackMode!"}));
}

TEST_F(StopModeTest, FreesTheImages)
{
    startLive();
    s.pipelineFeed().feedFrame({1, 2, 3});
    settle();
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    std::uint32_t result = 0;
    std::uint32_t flag = 0;
    std::uint8_t status = 0;
    std::uint8_t last = 0;
    EXPECT_EQ(expGetSingleImage(&result, &flag, &status, &last, kCamera), nullptr);
    EXPECT_EQ(static_cast<std::int32_t>(result), -3);
}

TEST_F(StopModeTest, GivesAThreadFiveSecondsAndGoesOn)
{
    startLive();
    std::promise<void> busy;
    std::promise<void> released;
    s.onCall([&busy, release = released.get_future().share()](const std::string& call) {
        if (call == "PvPipeline.ReleaseBuffer") {
            busy.set_value();
            release.wait();
        }
    });
    s.pipelineFeed().feedFrame({1});
    busy.get_future().wait();
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kStopsLive + kPoll + kLeavesLive);
    EXPECT_EQ(s.takeKernelCalls(), Texts{"WaitForSingleObject 5000"});
    released.set_value();
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0); // the object lives until its thread has ended
    EXPECT_EQ(s.takeKernelCalls(), (Texts{"WaitForSingleObject INFINITE", "CloseHandle"}));
    EXPECT_EQ(s.takeWorkerCalls().back(), "log Acquisition thread stopped!");
}

// --- block transfer -------------------------------------------------------------------------

TEST_F(StopModeTest, StopsBlockTransferWithoutASecondStopCommandOrASourceSwitch)
{
    startBlockTransfer();
    EXPECT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kStopsBlockTransfer + kPoll + Texts{"log BlockTransferMode stopped."} +
                                 kStartPlayback);
    const Texts kernel = s.takeKernelCalls();
    EXPECT_EQ(std::count(kernel.begin(), kernel.end(), "WaitForSingleObject 5000"), 1);
    EXPECT_EQ(expStopFrameBlockTransfer(kCamera), -1); // in playback
}

TEST_F(StopModeTest, WaitsForTheCameraAfterABlockTransfer)
{
    startBlockTransfer();
    s.camera().enumeration("CameraState").next({"Live", "Recording", "FlashWrite", "Other"});
    EXPECT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kStopsBlockTransfer + times(5, kPoll) +
                                 Texts{"log BlockTransferMode stopped."} + kStartPlayback);
}

// --- record mode ----------------------------------------------------------------------------

TEST_F(StopModeTest, StopsRecordMode)
{
    startRecord();
    EXPECT_EQ(expStopRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kStopsRecord + kPoll + kLeavesRecord);
    EXPECT_EQ(s.takeWorkerCalls(), Texts{"log Acquisition thread stopped!"});
    EXPECT_EQ(s.takeKernelCalls(), kJoined);
    EXPECT_EQ(expStopRecordMode(kCamera), -1); // in playback
}

TEST_F(StopModeTest, TakesACameraThatStreamsAgainForIdleAfterARecording)
{
    startRecord();
    s.camera().enumeration("CameraState").next({"Recording", "Live"});
    EXPECT_EQ(expStopRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kStopsRecord + times(2, kPoll) + kLeavesRecord);
}

TEST_F(StopModeTest, LeavesACameraInStandbyAlone)
{
    s.camera().boolean("RecordStandby").value(true);
    startRecord();
    EXPECT_EQ(expStopRecordMode(kCamera), 3);
    EXPECT_EQ(s.takeCalls(),
              kStopsRecord + Texts{"log Record mode stopped. Record Standby Enabled"});
    EXPECT_EQ(expStopRecordMode(kCamera), 0); // idle
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(StopModeTest, GoesByTheStandbyAtTheRecordingsStart)
{
    startRecord();
    s.camera().boolean("RecordStandby").value(true);
    EXPECT_EQ(expStopRecordMode(kCamera), 0);
}

TEST_F(StopModeTest, ForgetsTheStandbyThatCannotBeReadAgain)
{
    reachIdle();
    s.answer("RecordStandby.GetValue", {Code::Timeout});
    startRecord();
    EXPECT_EQ(expStopRecordMode(kCamera), 0);
}

TEST_F(StopModeTest, LeavesTheStandbyAfterTheCopyToTheFlashCardWasStopped)
{
    s.camera().boolean("RecordStandby").value(true);
    startRecord();
    ASSERT_EQ(expStopWriteToFlash(kCamera), 0);
    s.forget();
    EXPECT_EQ(expStopRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kStopsRecord + kPoll + kLeavesRecord);
}

TEST_F(StopModeTest, KeepsTheStandbyWhenTheCopyIsStartedOnceMore)
{
    s.camera().boolean("RecordStandby").value(true);
    startRecord();
    ASSERT_EQ(expStopWriteToFlash(kCamera), 0);
    ASSERT_EQ(expStartWriteToFlash(kCamera), 0);
    EXPECT_EQ(expStopRecordMode(kCamera), 3);
}

TEST_F(StopModeTest, ForgetsAtARecordStartThatACopyWasStopped)
{
    s.camera().boolean("RecordStandby").value(true);
    ASSERT_EQ(expStopWriteToFlash(kCamera), 0);
    startRecord();
    EXPECT_EQ(expStopRecordMode(kCamera), 3);
}

TEST_F(StopModeTest, LeavesACameraAloneThatWritesToItsFlashCard)
{
    enableFlashAfterRecord(true);
    startRecord();
    s.camera()
        .enumeration("CameraState")
        .next({"Recording", "Recording", "Recording", "Recording"});
    setCameraState("FlashWrite");
    EXPECT_EQ(expStopRecordMode(kCamera), 2);
    const Texts poll{"Sleep 500", "CameraState.GetValue", "CameraState.GetValue"};
    EXPECT_EQ(s.takeCalls(), kStopsRecord + times(2, poll) + kPoll +
                                 Texts{"log Record mode stopped. Writing to SD card"});
    EXPECT_EQ(expStartRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{}); // in record mode still
}

TEST_F(StopModeTest, DoesNotWaitForACopyOfACameraThatIsIdle)
{
    enableFlashAfterRecord(true);
    startRecord();
    EXPECT_EQ(expStopRecordMode(kCamera), 2);
    EXPECT_EQ(s.takeCalls(),
              (kStopsRecord + Texts{"Sleep 500", "CameraState.GetValue", "CameraState.GetValue",
                                    "log Record mode stopped. Writing to SD card"}));
}

TEST_F(StopModeTest, StopsOnceMoreAfterTheCopy)
{
    enableFlashAfterRecord(true);
    startRecord();
    setCameraState("FlashWrite");
    ASSERT_EQ(expStopRecordMode(kCamera), 2);
    s.forget();
    setCameraState("Idle");
    EXPECT_EQ(expStopRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"log Stopping record mode.", "RecordStop.Execute"} + kPoll + kLeavesRecord));
    EXPECT_EQ(s.takeKernelCalls(), Texts{}); // the thread has ended with the first stop
}

TEST_F(StopModeTest, StaysInStandbyAfterTheCopy)
{
    s.camera().boolean("RecordStandby").value(true);
    enableFlashAfterRecord(true);
    startRecord();
    setCameraState("FlashWrite");
    EXPECT_EQ(expStopRecordMode(kCamera), 2);
    s.forget();
    EXPECT_EQ(expStopRecordMode(kCamera), 3);
    EXPECT_EQ(s.takeCalls(), (Texts{"log Stopping record mode.", "RecordStop.Execute",
                                    "log Record mode stopped. Record Standby Enabled"}));
}

TEST_F(StopModeTest, GoesByTheFlashSettingAtTheRecordingsStart)
{
    startRecord();
    enableFlashAfterRecord(true);
    EXPECT_EQ(expStopRecordMode(kCamera), 0);
    startRecord();
    enableFlashAfterRecord(false);
    EXPECT_EQ(expStopRecordMode(kCamera), 2);
}

TEST_F(StopModeTest, WaitsOnForTheCopyWhenTheStateCannotBeRead)
{
    enableFlashAfterRecord(true);
    startRecord();
    setCameraState("FlashWrite");
    s.answer("CameraState.GetValue", {Code::Timeout, Code::Timeout});
    EXPECT_EQ(expStopRecordMode(kCamera), 2);
    EXPECT_EQ(s.takeCalls(),
              (kStopsRecord + Texts{"Sleep 500", "CameraState.GetValue", "CameraState.GetValue"} +
               kPoll + Texts{"log Record mode stopped. Writing to SD card"}));
}

TEST_F(StopModeTest, EndsTheWaitForTheCopyWhenTheLinkIsLost)
{
    enableFlashAfterRecord(true);
    startRecord();
    setCameraState("Recording");
    atPoll(2, [this] { s.loseLink(); });
    EXPECT_EQ(expStopRecordMode(kCamera), 2);
    EXPECT_EQ(s.takeCalls(),
              (kStopsRecord +
               Texts{"Sleep 500", "CameraState.GetValue", "CameraState.GetValue", "Sleep 500"} +
               kLinkLost + Texts{"log Record mode stopped. Writing to SD card"}));
}

TEST_F(StopModeTest, SkipsTheWaitForTheCopyWhenTheLinkIsLostBeforeIt)
{
    enableFlashAfterRecord(true);
    startRecord();
    s.onCall([this](const std::string& call) {
        if (call == "CloseHandle") {
            s.notifyLinkLost();
        }
    });
    EXPECT_EQ(expStopRecordMode(kCamera), 2);
    EXPECT_EQ(s.takeCalls(),
              kStopsRecord + kLinkLost + Texts{"log Record mode stopped. Writing to SD card"});
}

// --- aborting -------------------------------------------------------------------------------

TEST_F(StopModeTest, AbortsARecording)
{
    startRecord();
    EXPECT_EQ(expAbortRecording(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), (Texts{"log Abort recording.", "AcquisitionStop.Execute"} +
                              kStopsRecord + kPoll + kLeavesRecord));
}

TEST_F(StopModeTest, DropsTheResultOfTheStopWhenItAborts)
{
    EXPECT_EQ(expAbortRecording(kCamera), 0); // -1 in playback
    EXPECT_EQ(s.takeCalls(), (Texts{"log Abort recording.", "AcquisitionStop.Execute"}));
    s.camera().boolean("RecordStandby").value(true);
    startRecord();
    EXPECT_EQ(expAbortRecording(kCamera), 0); // 3 in standby
    EXPECT_EQ(s.takeCalls().back(), "log Record mode stopped. Record Standby Enabled");
}

TEST_F(StopModeTest, AbortsLiveModeToo)
{
    startLive();
    EXPECT_EQ(expAbortRecording(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), (Texts{"log Abort recording.", "AcquisitionStop.Execute"} +
                              kStopsLive + kPoll + kLeavesLive));
}

// --- without a connection -------------------------------------------------------------------

TEST_F(StopModeTest, EndsTheAcquisitionThreadAloneWhenTheLinkIsLost)
{
    startLive();
    s.loseLink();
    s.forget();
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              kStopsWithoutCamera + Texts{"PvPipeline.Stop"} + kStoppedWithoutCamera);
    EXPECT_EQ(s.takeWorkerCalls(), Texts{"log Acquisition thread stopped!"});
    EXPECT_EQ(s.takeKernelCalls(), kJoined);
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kStopsWithoutCamera + kStoppedWithoutCamera);
    EXPECT_EQ(s.takeKernelCalls(), Texts{});
}

TEST_F(StopModeTest, GoesByTheNotificationOfALostLinkToo)
{
    startRecord();
    s.notifyLinkLost();
    s.forget();
    EXPECT_EQ(expStopRecordMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              kStopsWithoutCamera + Texts{"PvPipeline.Stop"} + kStoppedWithoutCamera);
}

TEST_F(StopModeTest, EndsTheReadoutThreadAloneWithoutAConnection)
{
    startBlockTransfer();
    s.dropConnection();
    EXPECT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              kStopsWithoutCamera + Texts{"PvPipeline.Stop"} + kStoppedWithoutCamera);
    const Texts kernel = s.takeKernelCalls();
    EXPECT_EQ(std::count(kernel.begin(), kernel.end(), "WaitForSingleObject 5000"), 1);
}

TEST_F(StopModeTest, LeavesPlaybackForIdleWithoutAConnection)
{
    s.dropConnection();
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kStopsWithoutCamera + kStoppedWithoutCamera);
}

TEST_F(StopModeTest, WritesTheLinesOfALostLinkByteForByte)
{
    s.dropConnection();
    s.forget();
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeLog(), (Texts{"Stopping current mode - Connection to device lost!\r\n",
                                  "Stopped current mode - Connection to device lost -\r\n"}));
}

TEST_F(StopModeTest, FreesTheImagesWithoutAConnection)
{
    startLive();
    s.pipelineFeed().feedFrame({1, 2, 3});
    settle();
    s.dropConnection();
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    std::uint8_t status = 0;
    std::uint8_t last = 0;
    EXPECT_EQ(expGetPreviewImage(&status, &last, kCamera), nullptr);
}

} // namespace
