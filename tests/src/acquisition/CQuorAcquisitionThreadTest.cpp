// The thread of live and record mode: its beginning and end, counting, and answers to errors.
#include "ModeTest.h"

namespace
{

class AcquisitionThreadTest : public ModeTest
{
  protected:
    /// A frame with this counter was retrieved and handled.
    void receive(std::uint16_t counter)
    {
        const auto low = static_cast<std::uint8_t>(counter & 0xFF);
        const auto high = static_cast<std::uint8_t>(counter >> 8);
        s.pipelineFeed().feedFrame({0xEE, 0xEE, 0xEE, 0xEE, low, high, 0xEE});
        settle();
    }

    /// What the worker did about a block that ended so, at this tick.
    Texts afterError(Code operation, std::uint32_t tick)
    {
        s.setTick(tick);
        s.takeWorkerCalls();
        s.pipelineFeed().feedError(operation);
        EXPECT_TRUE(s.pipelineFeed().waitUntilDrained());
        return s.takeWorkerCalls();
    }

    /// What the worker did about a retrieval that failed, at this tick.
    Texts afterFailure(Code retrieval, std::uint32_t tick)
    {
        s.setTick(tick);
        s.takeWorkerCalls();
        s.pipelineFeed().feedFailure(retrieval);
        EXPECT_TRUE(s.pipelineFeed().waitUntilDrained());
        return s.takeWorkerCalls();
    }

    std::int32_t count() { return expGetCurrentNumberOfImages(kCamera); }

    void useMaxFrames(std::int64_t count)
    {
        s.camera().integer("RecordMaxFramesPerSequence").value(count);
    }

    void useLinkSettings(std::uint32_t delay, std::uint32_t dataRate)
    {
        TelvoConnectionSettings settings{};
        settings.useSettings = 1;
        settings.defaultInterPacketDelay = delay;
        settings.outputDataRate = dataRate;
        ASSERT_EQ(initialize(settings), 0);
        s.forget();
    }
};

const Texts kRetrieve{"PvPipeline.RetrieveNextBuffer INFINITE"};
const Texts kRelease{"PvPipeline.ReleaseBuffer"};

Texts internalError(const std::string& code)
{
    return Texts{"log Internal acquisition state: " + code + "!"} + kRelease;
}

Texts dataRate(int value)
{
    const std::string text = std::to_string(value);
    return {"Get InternalDataRate", "InternalDataRate.IsAvailable",
            "log -- GEN SetOutputDatarate Value: " + text, "InternalDataRate.SetValue " + text};
}

Texts interPacketDelay(int value)
{
    const std::string text = std::to_string(value);
    return {"Get GevSCPD", "GevSCPD.SetValue " + text, "Sleep 100",
            "log -- GEN setInterPacketDelay " + text};
}

Texts externalError(const std::string& code)
{
    return {"log External acquisition state: " + code + "!"};
}

const Texts kRestart{"log Restart acquisition!", "AcquisitionStop.Execute", "Sleep 50",
                     "AcquisitionStart.Execute"};

// --- beginning and end ----------------------------------------------------------------------

TEST_F(AcquisitionThreadTest, StartsThePipelineAndRetrievesWithoutLimit)
{
    ASSERT_EQ(expStartLiveMode(kCamera), 0);
    settle();
    EXPECT_EQ(s.takeWorkerCalls(),
              Texts{"log Acquisition thread started!"} + Texts{"PvPipeline.Start"} + kRetrieve);
}

TEST_F(AcquisitionThreadTest, WritesItsLinesByteForByte)
{
    s.setTick(10000);
    ASSERT_EQ(expStartLiveMode(kCamera), 0);
    s.pipelineFeed().feedError(Code::ResendsFailure);
    s.pipelineFeed().feedFailure(Code::Timeout);
    settle();
    ASSERT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(
        s.takeWorkerLog(),
        (Texts{"Acquisition thread started!\r\n",
               "Internal acquisition state: RESENDS_FAILURE!\r\n",
               "-- GEN setInterPacketDelay 2200\r\n", "External acquisition state: TIMEOUT!\r\n",
               "Restart acquisition!\r\n", "Acquisition thread stopped!\r\n"}));
}

TEST_F(AcquisitionThreadTest, TakesTheLinkSettingsOfTheGrabber)
{
    useLinkSettings(1400, 9);
    ASSERT_EQ(expStartLiveMode(kCamera), 0);
    const Texts calls = s.takeCalls();
    EXPECT_EQ(Texts(calls.begin() + 13, calls.begin() + 21), interPacketDelay(1400) + dataRate(9));
}

TEST_F(AcquisitionThreadTest, StartsWhenTheCameraRefusesTheLinkSettings)
{
    s.answer("GevSCPD.SetValue", {Code::Busy});
    s.answer("InternalDataRate.SetValue", {Code::Busy});
    EXPECT_EQ(expStartLiveMode(kCamera), 0);
    const Texts calls = s.takeCalls();
    EXPECT_EQ(calls.at(16), "log -- GEN setInterPacketDelay Error");
    EXPECT_EQ(calls.back(), "AcquisitionStart.Execute");
}

TEST_F(AcquisitionThreadTest, TakesAnUnknownMaximumOfFramesForNone)
{
    s.answer("RecordMaxFramesPerSequence.GetValue", {Code::Timeout});
    ASSERT_EQ(expStartRecordMode(kCamera), 0);
    const Texts lines = s.takeLog();
    EXPECT_EQ(lines.at(lines.size() - 3), "Max frames count 0\r\n");
}

TEST_F(AcquisitionThreadTest, ReleasesAFrameAfterItWasHandedOver)
{
    startLive();
    const std::uint8_t* atRelease = nullptr;
    s.onCall([&](const std::string& call) {
        if (call == "PvPipeline.ReleaseBuffer") {
            std::uint8_t status = 0;
            std::uint8_t last = 0;
            atRelease = expGetPreviewImage(&status, &last, kCamera);
        }
    });
    receive(1);
    EXPECT_NE(atRelease, nullptr);
    EXPECT_EQ(s.takeWorkerCalls(), kRelease + kRetrieve);
}

// --- counting -------------------------------------------------------------------------------

TEST_F(AcquisitionThreadTest, CountsNothingWithoutAThread)
{
    EXPECT_EQ(count(), 0);
}

TEST_F(AcquisitionThreadTest, DoesNotCountInLiveMode)
{
    startLive();
    receive(5);
    EXPECT_EQ(count(), 0);
}

TEST_F(AcquisitionThreadTest, ReadsTheLittleEndianCounterOfARecording)
{
    startRecord();
    receive(0x0201);
    EXPECT_EQ(count(), 0x0201);
    receive(0x0302);
    EXPECT_EQ(count(), 0x0302);
}

TEST_F(AcquisitionThreadTest, CountsTheSkippedFirstFrameToo)
{
    startRecord();
    receive(1);
    EXPECT_EQ(count(), 1);
}

TEST_F(AcquisitionThreadTest, DoesNotCountADamagedFrame)
{
    startRecord();
    receive(7);
    s.pipelineFeed().feedError(Code::ResendsFailure, {0, 0, 0, 0, 9, 0});
    settle();
    EXPECT_EQ(count(), 7);
}

TEST_F(AcquisitionThreadTest, CountsAWrapBehindALargeCounter)
{
    useMaxFrames(65536);
    startRecord();
    receive(50001);
    EXPECT_EQ(count(), 50001);
    receive(10);
    EXPECT_EQ(count(), 65535 + 10); // 65,535 per wrap
    receive(20);
    EXPECT_EQ(count(), 65535 + 20);
    receive(65535);
    EXPECT_EQ(count(), 2 * 65535);
    receive(0);
    EXPECT_EQ(count(), 2 * 65535);
    receive(1);
    EXPECT_EQ(count(), 2 * 65535 + 1);
}

TEST_F(AcquisitionThreadTest, CountsNoWrapBehindACounterUpTo50000)
{
    useMaxFrames(65536);
    startRecord();
    receive(50000);
    receive(10);
    EXPECT_EQ(count(), 10);
}

TEST_F(AcquisitionThreadTest, CountsNoWrapBackToALargeCounter)
{
    useMaxFrames(65536);
    startRecord();
    receive(60000);
    receive(55000); // out of order
    EXPECT_EQ(count(), 55000);
    receive(54000);
    EXPECT_EQ(count(), 54000);
}

TEST_F(AcquisitionThreadTest, CountsNoWrapInASequenceThatCannotHoldOne)
{
    useMaxFrames(65535);
    startRecord();
    receive(50001);
    receive(10);
    EXPECT_EQ(count(), 10);
}

TEST_F(AcquisitionThreadTest, CountsEachRecordingFromZero)
{
    useMaxFrames(65536);
    startRecord();
    receive(60000);
    receive(1);
    ASSERT_EQ(expStopRecordMode(kCamera), 0);
    EXPECT_EQ(count(), 0);
    startRecord();
    EXPECT_EQ(count(), 0);
    s.pipelineFeed().feedFrame({0, 0, 0, 0, 3, 0});
    settle();
    EXPECT_EQ(count(), 3);
}

TEST_F(AcquisitionThreadTest, CountsARecordingThatItIsAttachedTo)
{
    setCameraState("Recording");
    ASSERT_EQ(initialize(), 1);
    receive(300);
    EXPECT_EQ(count(), 300);
    setCameraState("Idle");
}

// --- internal errors ------------------------------------------------------------------------

TEST_F(AcquisitionThreadTest, RaisesTheDataRateAfterADamagedImage)
{
    startLive();
    EXPECT_EQ(afterError(Code::ImageError, 10000),
              internalError("IMAGE_ERROR") + dataRate(4) + kRetrieve);
}

TEST_F(AcquisitionThreadTest, RaisesTheDelayAfterAnyOtherError)
{
    startLive();
    EXPECT_EQ(afterError(Code::ResendsFailure, 10000),
              internalError("RESENDS_FAILURE") + interPacketDelay(2200) + kRetrieve);
    EXPECT_EQ(afterError(Code::Timeout, 20000),
              internalError("TIMEOUT") + interPacketDelay(2400) + kRetrieve);
}

TEST_F(AcquisitionThreadTest, RaisesTheDataRateAgainAfterMoreThanASecond)
{
    startLive();
    afterError(Code::ImageError, 10000);
    EXPECT_EQ(afterError(Code::ImageError, 10000), internalError("IMAGE_ERROR") + kRetrieve);
    EXPECT_EQ(afterError(Code::ImageError, 11000), internalError("IMAGE_ERROR") + kRetrieve);
    EXPECT_EQ(afterError(Code::ImageError, 11001),
              internalError("IMAGE_ERROR") + dataRate(5) + kRetrieve);
    EXPECT_EQ(afterError(Code::ImageError, 12001), internalError("IMAGE_ERROR") + kRetrieve);
    EXPECT_EQ(afterError(Code::ImageError, 12002),
              internalError("IMAGE_ERROR") + dataRate(6) + kRetrieve);
}

TEST_F(AcquisitionThreadTest, RaisesTheDelayAgainAfterMoreThanASecond)
{
    startLive();
    afterError(Code::ResendsFailure, 10000);
    EXPECT_EQ(afterError(Code::ResendsFailure, 11000),
              internalError("RESENDS_FAILURE") + kRetrieve);
    EXPECT_EQ(afterError(Code::ResendsFailure, 11001),
              internalError("RESENDS_FAILURE") + interPacketDelay(2400) + kRetrieve);
}

TEST_F(AcquisitionThreadTest, TimesDataRateAndDelayEachByItself)
{
    startLive();
    afterError(Code::ImageError, 10000);
    EXPECT_EQ(afterError(Code::ResendsFailure, 10001),
              internalError("RESENDS_FAILURE") + interPacketDelay(2200) + kRetrieve);
    EXPECT_EQ(afterError(Code::ImageError, 11001),
              internalError("IMAGE_ERROR") + dataRate(5) + kRetrieve);
    EXPECT_EQ(afterError(Code::ResendsFailure, 11001),
              internalError("RESENDS_FAILURE") + kRetrieve);
}

TEST_F(AcquisitionThreadTest, TimesAcrossTheWrapOfTheTickCount)
{
    startLive();
    afterError(Code::ImageError, 0xFFFFFF00);
    EXPECT_EQ(afterError(Code::ImageError, 1000 - 0x100), internalError("IMAGE_ERROR") + kRetrieve);
    EXPECT_EQ(afterError(Code::ImageError, 1001 - 0x100),
              internalError("IMAGE_ERROR") + dataRate(5) + kRetrieve);
}

TEST_F(AcquisitionThreadTest, GoesBackToTheConfiguredDataRatePast15)
{
    useLinkSettings(1400, 13);
    startLive();
    std::uint32_t tick = 10000;
    for (const int rate : {14, 15, 13, 14}) {
        EXPECT_EQ(afterError(Code::ImageError, tick),
                  internalError("IMAGE_ERROR") + dataRate(rate) + kRetrieve);
        tick += 2000;
    }
}

TEST_F(AcquisitionThreadTest, GoesBackToTheConfiguredDelayPast5000)
{
    useLinkSettings(4500, 3);
    startLive();
    std::uint32_t tick = 10000;
    for (const int delay : {4700, 4900, 4500, 4700}) {
        EXPECT_EQ(afterError(Code::ResendsFailure, tick),
                  internalError("RESENDS_FAILURE") + interPacketDelay(delay) + kRetrieve);
        tick += 2000;
    }
}

TEST_F(AcquisitionThreadTest, RaisesTheDelayUpTo5000Itself)
{
    useLinkSettings(4800, 3);
    startLive();
    EXPECT_EQ(afterError(Code::ResendsFailure, 10000),
              internalError("RESENDS_FAILURE") + interPacketDelay(5000) + kRetrieve);
    EXPECT_EQ(afterError(Code::ResendsFailure, 20000),
              internalError("RESENDS_FAILURE") + interPacketDelay(4800) + kRetrieve);
}

TEST_F(AcquisitionThreadTest, BacksOffWhileRecordingToo)
{
    startRecord();
    EXPECT_EQ(afterError(Code::ImageError, 10000),
              internalError("IMAGE_ERROR") + dataRate(4) + kRetrieve);
    EXPECT_EQ(afterError(Code::ResendsFailure, 10000),
              internalError("RESENDS_FAILURE") + interPacketDelay(2200) + kRetrieve);
}

TEST_F(AcquisitionThreadTest, BeginsAtTheConfiguredValuesAgain)
{
    startLive();
    afterError(Code::ImageError, 10000);
    afterError(Code::ResendsFailure, 10000);
    ASSERT_EQ(expStopLiveMode(kCamera), 0);
    s.forget();
    ASSERT_EQ(expStartLiveMode(kCamera), 0);
    const Texts calls = s.takeCalls();
    EXPECT_EQ(Texts(calls.begin() + 13, calls.begin() + 21), kPacing);
}

// --- external errors ------------------------------------------------------------------------

TEST_F(AcquisitionThreadTest, RestartsTheCameraInLiveMode)
{
    startLive();
    EXPECT_EQ(afterFailure(Code::NotConnected, 10000),
              externalError("NOT_CONNECTED") + kRestart + kRetrieve);
}

TEST_F(AcquisitionThreadTest, RestartsAgainAfterMoreThanOneAndAHalfSeconds)
{
    startLive();
    afterFailure(Code::Timeout, 10000);
    EXPECT_EQ(afterFailure(Code::Timeout, 11500), externalError("TIMEOUT") + kRetrieve);
    EXPECT_EQ(afterFailure(Code::Timeout, 11501), externalError("TIMEOUT") + kRestart + kRetrieve);
    EXPECT_EQ(afterFailure(Code::Timeout, 13001), externalError("TIMEOUT") + kRetrieve);
}

TEST_F(AcquisitionThreadTest, RestartsACameraThatRefuses)
{
    startLive();
    s.answerAlways("AcquisitionStop.Execute", Code::Busy);
    s.answerAlways("AcquisitionStart.Execute", Code::Busy);
    EXPECT_EQ(afterFailure(Code::Timeout, 10000), externalError("TIMEOUT") + kRestart + kRetrieve);
    s.answerAlways("AcquisitionStop.Execute", Code::Ok);
    s.answerAlways("AcquisitionStart.Execute", Code::Ok);
}

TEST_F(AcquisitionThreadTest, RestartsNothingWhileRecording)
{
    startRecord();
    EXPECT_EQ(afterFailure(Code::Timeout, 10000), externalError("TIMEOUT") + kRetrieve);
    EXPECT_EQ(afterFailure(Code::Timeout, 60000), externalError("TIMEOUT") + kRetrieve);
}

TEST_F(AcquisitionThreadTest, DoesNotRestartAPausedCamera)
{
    startLive();
    ASSERT_EQ(expPauseLiveMode(1, kCamera), 0);
    EXPECT_EQ(afterFailure(Code::Timeout, 10000), externalError("TIMEOUT") + kRetrieve);
}

TEST_F(AcquisitionThreadTest, RestartsNothingSoonAfterAResume)
{
    startLive();
    ASSERT_EQ(expPauseLiveMode(1, kCamera), 0);
    s.setTick(10000);
    ASSERT_EQ(expPauseLiveMode(0, kCamera), 0);
    EXPECT_EQ(afterFailure(Code::Timeout, 11500), externalError("TIMEOUT") + kRetrieve);
    EXPECT_EQ(afterFailure(Code::Timeout, 11501), externalError("TIMEOUT") + kRestart + kRetrieve);
}

TEST_F(AcquisitionThreadTest, BacksOffInNothingSoonAfterAResume)
{
    startLive();
    ASSERT_EQ(expPauseLiveMode(1, kCamera), 0);
    s.setTick(10000);
    ASSERT_EQ(expPauseLiveMode(0, kCamera), 0);
    EXPECT_EQ(afterError(Code::ImageError, 11000), internalError("IMAGE_ERROR") + kRetrieve);
    EXPECT_EQ(afterError(Code::ResendsFailure, 11000),
              internalError("RESENDS_FAILURE") + kRetrieve);
    EXPECT_EQ(afterError(Code::ImageError, 11001),
              internalError("IMAGE_ERROR") + dataRate(4) + kRetrieve);
    EXPECT_EQ(afterError(Code::ResendsFailure, 11001),
              internalError("RESENDS_FAILURE") + interPacketDelay(2200) + kRetrieve);
}

TEST_F(AcquisitionThreadTest, TakesTheWakingAtAStopForNoError)
{
    s.setTick(10000);
    startLive();
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(s.takeWorkerCalls(), Texts{"log Acquisition thread stopped!"});
}

int dataAvailableCalls = 0; // of the callback below

extern "C" void countDataAvailable(std::int32_t /*reason*/)
{
    ++dataAvailableCalls;
}

TEST_F(AcquisitionThreadTest, CallsNoCallbackOfTheHost)
{
    dataAvailableCalls = 0;
    ASSERT_EQ(expSetDataAvailableCallback(countDataAvailable, kCamera), 0);
    ASSERT_EQ(expSetChangedCallback(countDataAvailable, kCamera), 0);
    startLive();
    receive(1);
    afterError(Code::ImageError, 10000);
    afterFailure(Code::Timeout, 10000);
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
    EXPECT_EQ(dataAvailableCalls, 0);
}

} // namespace
