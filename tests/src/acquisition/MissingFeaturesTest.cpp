// A camera that was not initialised, or lacks what a mode needs: a start fails at once and sends
// nothing that a stop would have to undo, and no stop waits for a state that is not there.
#include "ModeTest.h"

#include <algorithm>
#include <array>

namespace
{

using ModeExport = std::int32_t (*)(std::int32_t) noexcept;

constexpr std::array<ModeExport, 3> kStops{expStopLiveMode, expStopRecordMode,
                                           expStopFrameBlockTransfer};

// What a start does before it looks at the camera.
const Texts kBeginsLive = Texts{"log Start live mode"} + kStopPlayback;
const Texts kBeginsRecord{"log Starting record mode"};
const Texts kBeginsBlockTransfer{"log Start Frame Block Transfer."};

Texts without(Texts calls, const std::string& call)
{
    std::erase(calls, call);
    return calls;
}

class NotInitializedTest : public GrabberTest
{
  protected:
    void SetUp() override
    {
        ASSERT_EQ(connect(), 0);
        s.camera().enumeration("CameraState").value("Live"); // left so by another host
        s.forget();
    }

    void expectNothingToStop()
    {
        for (const ModeExport stop : kStops) {
            EXPECT_EQ(stop(kCamera), 0);
        }
        EXPECT_EQ(s.takeCalls(), Texts{});
        EXPECT_EQ(s.takeKernelCalls(), Texts{});
    }
};

TEST_F(NotInitializedTest, StartsNoBlockTransfer)
{
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), kBeginsBlockTransfer);
    expectNothingToStop();
}

TEST_F(NotInitializedTest, StartsNoLiveMode)
{
    EXPECT_EQ(expStartLiveMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), without(kBeginsLive, "AcquisitionStop.Execute"));
    expectNothingToStop();
}

TEST_F(NotInitializedTest, StartsNoRecordMode)
{
    EXPECT_EQ(expStartRecordMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), kBeginsRecord);
    expectNothingToStop();
}

class MissingFeaturesTest : public ModeTest
{
  protected:
    void lack(std::initializer_list<std::string> features)
    {
        s.camera().remove(features);
        rebind();
    }

    void expectNoPolls()
    {
        const Texts calls = s.takeCalls();
        EXPECT_EQ(std::count(calls.begin(), calls.end(), "Sleep 500"), 0);
    }
};

TEST_F(MissingFeaturesTest, WithoutItsStartCommandNoModeIsStarted)
{
    lack({"AcquisitionStart"});
    EXPECT_EQ(expStartLiveMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), kBeginsLive);
    EXPECT_EQ(expStartRecordMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), kBeginsRecord);
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), kBeginsBlockTransfer);
}

TEST_F(MissingFeaturesTest, WithoutItsStopCommandNoModeIsStarted)
{
    lack({"AcquisitionStop"});
    EXPECT_EQ(expStartLiveMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), without(kBeginsLive, "AcquisitionStop.Execute"));
    EXPECT_EQ(expStartRecordMode(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), kBeginsRecord);
    EXPECT_EQ(expStartFrameBlockTransfer(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), kBeginsBlockTransfer);
}

TEST_F(MissingFeaturesTest, WithoutRecordCommandsNothingIsRecorded)
{
    for (const char* const command : {"RecordStart", "RecordStop"}) {
        lack({command});
        EXPECT_EQ(expStartRecordMode(kCamera), -1) << command;
        EXPECT_EQ(s.takeCalls(), kBeginsRecord) << command;
        EXPECT_EQ(expStopRecordMode(kCamera), -1) << command; // in playback still
        s.camera().command(command);
    }
}

TEST_F(MissingFeaturesTest, WithoutRecordCommandsThereIsLiveModeAllTheSame)
{
    lack({"RecordStart", "RecordStop"});
    startLive();
    EXPECT_EQ(expStopLiveMode(kCamera), 0);
}

TEST_F(MissingFeaturesTest, WithoutAStateEveryStopTakesTheCameraForIdleAtOnce)
{
    lack({"CameraState"});
    for (const ModeExport start :
         {expStartLiveMode, expStartRecordMode, expStartFrameBlockTransfer}) {
        ASSERT_EQ(start(kCamera), 0);
        settle();
        s.forget();
        EXPECT_EQ(expStopLiveMode(kCamera), 0);
        expectNoPolls();
    }
}

TEST_F(MissingFeaturesTest, WithoutAStateThereIsNoCopyToTheFlashCardToWaitFor)
{
    lack({"CameraState"});
    ASSERT_EQ(expEnableFlashWriteAfterRecordStop(1, kCamera), 0);
    startRecord();
    EXPECT_EQ(expStopRecordMode(kCamera), 2);
    expectNoPolls();
}

TEST_F(MissingFeaturesTest, WithoutAStateTheHostIsToldSo)
{
    lack({"CameraState"});
    std::uint8_t is = 77;
    EXPECT_EQ(expIsStateIdle(&is, kCamera), -1);
    EXPECT_EQ(expIsStateFlashWrite(&is, kCamera), -1);
    EXPECT_EQ(is, 77);
}

TEST_F(MissingFeaturesTest, WithoutItsSequenceStartNoBlockIsAskedFor)
{
    lack({"StreamSequenceStart"});
    ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    settle();
    s.forget();
    EXPECT_EQ(expGetRecordedFrameBlock(nullptr, 0, 0, 1, kCamera), -1);
    EXPECT_EQ(s.takeCalls(), Texts{"log \nRequest frames: 0 - 0"});
    std::int64_t frames = 0;
    std::uint32_t status = 0;
    EXPECT_EQ(expGetRecordedFrameBlockResult(nullptr, &frames, &status, kCamera), nullptr);
    EXPECT_EQ(status, 0xFFFFFFFF);
}

} // namespace
