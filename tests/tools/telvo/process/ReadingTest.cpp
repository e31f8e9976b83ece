#include "CameraTest.h"

namespace
{

using camera::FeatureId;
using testing::HasSubstr;

using ReadingCommands = CameraTest;

TEST_F(ReadingCommands, WriteNothingToACameraThatIsUsedForTheFirstTime)
{
    camera::CameraOptions options = quickCamera();
    options.userSetsPrepared = false;
    switchOn(options);
    EXPECT_EQ(run({"info"}).exitStatus, 0);
    EXPECT_EQ(run({"get"}).exitStatus, 0);
    EXPECT_EQ(run({"state"}).exitStatus, 0);
    EXPECT_EQ(value(FeatureId::UserSetSelector), camera::kUserSetDefault);
    EXPECT_EQ(value(FeatureId::UserSetDefaultSelector), camera::kUserSetDefault);
    EXPECT_EQ(value(FeatureId::AcquisitionSource), camera::kSourceLive);
}

TEST_F(ReadingCommands, LeaveARecordingAlone)
{
    camera::CameraOptions options = quickCamera();
    options.recordAtPowerOn = true;
    options.settings[FeatureId::RecordMode] = camera::kRecordContinuous;
    switchOn(options);
    const ToolOutcome outcome = run({"state"});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_THAT(outcome.output, HasSubstr("recording"));
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateRecording);
}

TEST_F(ReadingCommands, TellUnitsAndSteps)
{
    switchOn();
    EXPECT_EQ(run({"get", "exposure"}).output, "exposure=1000 us\n");
    EXPECT_THAT(run({"get"}).output, HasSubstr("16 to 64, in steps of 16"));
}

TEST_F(ReadingCommands, TellSettingsInTheToolsOwnWords)
{
    switchOn();
    EXPECT_EQ(
        run({"get", "record-mode", "record-sequences", "sync-out", "external-trigger"}).output,
        "record-mode=single\nrecord-sequences=1\nsync-out=arm\nexternal-trigger=off\n");
}

TEST_F(ReadingCommands, GiveJson)
{
    switchOn();
    EXPECT_EQ(run({"get", "exposure", "--json"}).output,
              "{\n  \"exposure\": {\n    \"value\": 1000,\n    \"unit\": \"us\",\n    \"limits\": "
              "\"1 to 19999 us\"\n  }\n}\n");
}

TEST_F(ReadingCommands, FailWhereTheCameraLacksTheSetting)
{
    camera::CameraOptions options = quickCamera();
    options.missing = {FeatureId::GainRaw};
    switchOn(options);
    const ToolOutcome outcome = run({"get", "gain"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.errors, "telvo: the camera has no gain; 'telvo get' lists what it has\n");
}

TEST_F(ReadingCommands, FailWhereTheOutputCannotBeWritten)
{
    switchOn();
    const ToolOutcome outcome =
        runProgram({"/bin/sh", "-c", toolLine(forCamera({"get"})) + ">/dev/full"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.errors,
              "telvo: cannot write the output; is its disk full, or its reader gone?\n");
}

TEST_F(ReadingCommands, TellThatAnotherProgramHasTheCamera)
{
    switchOn();
    ToolProcess other(forCamera({"record", "--frames", "1000000"}));
    ASSERT_TRUE(becomes([this] { return !isFree(); }));
    const ToolOutcome outcome = run({"info"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("the camera at 127.0.0.11 is held by another program"));
}

} // namespace
