#include "CameraTest.h"

#include <chrono>
#include <csignal>
#include <thread>

namespace
{

using camera::FeatureId;
using testing::HasSubstr;
using Milliseconds = std::chrono::milliseconds;

/// Named by the signal's number.
class Signals : public CameraTest, public testing::WithParamInterface<int>
{
};

TEST_P(Signals, DuringConnectLeaveTheCameraFree)
{
    switchOn();
    for (const int delay : {50, 300, 700}) { // look, connect, initialise
        ToolProcess tool(forCamera({"set", "exposure=100"}));
        std::this_thread::sleep_for(Milliseconds(delay));
        tool.signal(GetParam());
        const ToolOutcome outcome = tool.wait();
        EXPECT_EQ(outcome.exitStatus, 1) << delay;
        EXPECT_THAT(outcome.errors, HasSubstr("telvo: ended before it was done\n")) << delay;
        EXPECT_TRUE(isFree()) << delay;
    }
}

TEST_P(Signals, DuringARecordingEndItAndLeaveTheCameraFree)
{
    switchOn();
    ToolProcess tool(forCamera({"record", "--frames", "10000"}));
    ASSERT_TRUE(
        becomes([this] { return value(FeatureId::CameraState) == camera::kStateRecording; }));
    tool.signal(GetParam());
    const ToolOutcome outcome = tool.wait();
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_TRUE(isFree());
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateIdle);
}

INSTANTIATE_TEST_SUITE_P(Ctrl_CTerminateAndHangUp, Signals,
                         testing::Values(SIGINT, SIGTERM, SIGHUP));

using SignalTest = CameraTest;

TEST_F(SignalTest, DuringASearchEndsIt)
{
    ToolProcess tool({"discover", "--timeout", "20000", "--interface", "lo"});
    std::this_thread::sleep_for(Milliseconds(300));
    tool.signal(SIGINT);
    EXPECT_TRUE(tool.endsWithin(std::chrono::seconds(5)));
    EXPECT_EQ(tool.wait().exitStatus, 1);
}

TEST_F(SignalTest, TellsWhatTheUserHasToWaitFor)
{
    switchOn();
    ToolProcess tool(forCamera({"set", "exposure=100"}));
    ASSERT_TRUE(becomes([this] { return !isFree(); }));
    tool.signal(SIGINT);
    EXPECT_THAT(tool.wait().errors,
                HasSubstr("telvo: ending; waiting for the camera's connection"));
}

TEST_F(SignalTest, IgnoredByWhoStartedTheToolStaysIgnored)
{
    switchOn();
    std::signal(SIGHUP, SIG_IGN); // as nohup does
    ToolProcess tool(forCamera({"set", "exposure=100"}));
    std::signal(SIGHUP, SIG_DFL);
    std::this_thread::sleep_for(Milliseconds(200));
    tool.signal(SIGHUP);
    EXPECT_EQ(tool.wait().exitStatus, 0);
}

} // namespace
