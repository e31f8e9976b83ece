#include "CameraControl.h"
#include "CameraTest.h"

namespace
{

using camera::FeatureId;
using testing::HasSubstr;
using testing::MatchesRegex;

using StopCommand = CameraTest;

camera::CameraOptions recordingRing()
{
    camera::CameraOptions options = quickCamera();
    options.recordAtPowerOn = true;
    options.settings[FeatureId::RecordMode] = camera::kRecordContinuous;
    return options;
}

TEST_F(StopCommand, EndsARecordingThatSomebodyLeftRunning)
{
    switchOn(recordingRing());
    const ToolOutcome outcome = run({"stop"});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_THAT(outcome.output,
                MatchesRegex("127.0.0.11: recording ended, [0-9]+ frames of 64x48 in the camera's "
                             "memory\n"));
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateIdle);
    EXPECT_TRUE(isFree());
}

TEST_F(StopCommand, SaysThatACameraWasNotRecording)
{
    switchOn();
    const ToolOutcome outcome = run({"stop"});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.output, "127.0.0.11: was not recording\n");
}

TEST_F(StopCommand, HasAVerdictForEachOfSeveralCameras)
{
    switchOn(recordingRing());
    camera::VirtualCamera other(quickCamera("127.0.0.12"));
    ASSERT_FALSE(other.start());
    ToolProcess holder({"record", "--camera", "127.0.0.12", "--mode", "ring"});
    ASSERT_TRUE(becomes([&] { return !::isFree(other); }));
    const ToolOutcome outcome =
        runTool({"stop", "--camera", "127.0.0.11", "--camera", "127.0.0.12"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.output, HasSubstr("127.0.0.11: recording ended, "));
    EXPECT_THAT(outcome.errors, HasSubstr("telvo: 127.0.0.12: the camera at 127.0.0.12 is held"));
}

TEST_F(StopCommand, IsWhatOthersSendAUserTo)
{
    switchOn(recordingRing());
    const ToolOutcome record = run({"record", "--frames", "1"});
    EXPECT_EQ(record.exitStatus, 1);
    EXPECT_EQ(record.errors, "telvo: the camera is recording; 'telvo stop' ends that\n");
}

} // namespace
