// What the camera says it is doing.
#include "CQuorGrabber.h"
#include "CameraRegistry.h"
#include "ModeTest.h"

namespace
{

constexpr std::uint8_t kUntouched = 77;

struct StateAnswer {
    std::int32_t result;
    std::uint8_t value;
    bool operator==(const StateAnswer&) const = default;
};

using StateExport = std::int32_t (*)(std::uint8_t*, std::int32_t) noexcept;

StateAnswer ask(StateExport question)
{
    std::uint8_t value = kUntouched;
    const std::int32_t result = question(&value, kCamera);
    return {result, value};
}

class CameraStateTest : public ModeTest
{
};

TEST_F(CameraStateTest, IsIdleInThatStateAlone)
{
    EXPECT_EQ(ask(expIsStateIdle), (StateAnswer{0, 1}));
    EXPECT_EQ(s.takeCalls(), Texts{"CameraState.GetValue"});
    for (const char* state : {"Live", "Recording", "FlashWrite", "Other", "idle", ""}) {
        setCameraState(state);
        EXPECT_EQ(ask(expIsStateIdle), (StateAnswer{0, 0})) << state;
    }
}

TEST_F(CameraStateTest, IsIdleAfterARecordingAlsoWhenItStreams)
{
    startRecord();
    for (const char* state : {"Idle", "Live"}) {
        setCameraState(state);
        EXPECT_EQ(ask(expIsStateIdle), (StateAnswer{0, 1})) << state;
    }
    for (const char* state : {"Recording", "FlashWrite", "Other"}) {
        setCameraState(state);
        EXPECT_EQ(ask(expIsStateIdle), (StateAnswer{0, 0})) << state;
    }
    setCameraState("Idle");
}

TEST_F(CameraStateTest, IsNotIdleWhileItStreamsInLiveMode)
{
    startLive();
    setCameraState("Live");
    EXPECT_EQ(ask(expIsStateIdle), (StateAnswer{0, 0}));
    setCameraState("Idle");
}

TEST_F(CameraStateTest, WritesToTheFlashCardInThatStateAlone)
{
    setCameraState("FlashWrite");
    EXPECT_EQ(ask(expIsStateFlashWrite), (StateAnswer{0, 1}));
    EXPECT_EQ(s.takeCalls(), Texts{"CameraState.GetValue"});
    for (const char* state : {"Idle", "Live", "Recording", "Other"}) {
        setCameraState(state);
        EXPECT_EQ(ask(expIsStateFlashWrite), (StateAnswer{0, 0})) << state;
    }
}

TEST_F(CameraStateTest, FailsWhenTheStateCannotBeRead)
{
    s.answerAlways("CameraState.GetValue", Code::Timeout);
    EXPECT_EQ(ask(expIsStateIdle).result, -1);
    EXPECT_EQ(ask(expIsStateFlashWrite).result, -1);
}

TEST_F(CameraStateTest, FailsWithACameraThatHasNoState)
{
    s.camera().remove("CameraState");
    rebind();
    EXPECT_EQ(ask(expIsStateIdle).result, -1);
    EXPECT_EQ(ask(expIsStateFlashWrite).result, -1);
}

TEST_F(CameraStateTest, IsNeitherWithoutAConnection)
{
    s.dropConnection();
    for (const char* state : {"Idle", "FlashWrite"}) {
        setCameraState(state);
        EXPECT_EQ(ask(expIsStateIdle), (StateAnswer{0, 0})) << state;
        EXPECT_EQ(ask(expIsStateFlashWrite), (StateAnswer{0, 0})) << state;
    }
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(CameraStateTest, StillAsksAConnectedDeviceWhetherItIsIdleAfterALossWasNotified)
{
    s.notifyLinkLost();
    s.forget();
    EXPECT_EQ(ask(expIsStateIdle), (StateAnswer{0, 1}));
    setCameraState("FlashWrite");
    s.forget();
    EXPECT_EQ(ask(expIsStateFlashWrite), (StateAnswer{0, 0}));
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(CameraStateTest, GivesWhetherTheTrailerIsBeingRecorded)
{
    for (const bool active : {true, false}) {
        s.camera().boolean("RecordTrailerRecordingActive").value(active);
        EXPECT_EQ(ask(expIsTrailerRecordingActive),
                  (StateAnswer{0, static_cast<std::uint8_t>(active)}));
        EXPECT_EQ(s.takeCalls(), Texts{"RecordTrailerRecordingActive.GetValue"});
    }
}

TEST_F(CameraStateTest, ClearsTheTrailerWhenItCannotBeRead)
{
    s.answer("RecordTrailerRecordingActive.GetValue", {Code::Timeout});
    EXPECT_EQ(ask(expIsTrailerRecordingActive), (StateAnswer{-1, 0}));
    s.camera().remove("RecordTrailerRecordingActive");
    rebind();
    EXPECT_EQ(ask(expIsTrailerRecordingActive), (StateAnswer{-1, 0}));
}

TEST_F(CameraStateTest, RecordsNoTrailerWithoutAConnection)
{
    s.camera().boolean("RecordTrailerRecordingActive").value(true);
    s.notifyLinkLost();
    s.forget();
    EXPECT_EQ(ask(expIsTrailerRecordingActive), (StateAnswer{0, 0}));
    s.dropConnection();
    EXPECT_EQ(ask(expIsTrailerRecordingActive), (StateAnswer{0, 0}));
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(CameraStateTest, HasANumberForEachState)
{
    CQuorGrabber* const grabber = cameraRegistry().find(kCamera);
    ASSERT_NE(grabber, nullptr);
    const auto getCameraState = [grabber](std::int32_t* number) {
        const CameraState read =
            readCameraState(grabber->settings().link.features).value_or(CameraState::Unknown);
        *number = static_cast<std::int32_t>(read);
        return read == CameraState::Unknown ? -1 : 0;
    };
    std::int32_t state = 77;
    std::int32_t expected = 0;
    for (const char* name : {"Idle", "Live", "Recording", "FlashWrite"}) {
        setCameraState(name);
        EXPECT_EQ(getCameraState(&state), 0) << name;
        EXPECT_EQ(state, expected++) << name;
    }
    setCameraState("Other");
    EXPECT_EQ(getCameraState(&state), -1);
    EXPECT_EQ(state, -1);
    setCameraState("Idle");
    s.answer("CameraState.GetValue", {Code::Timeout});
    EXPECT_EQ(getCameraState(&state), -1);
    EXPECT_EQ(state, -1);
}

} // namespace
