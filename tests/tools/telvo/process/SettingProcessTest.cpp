#include "CameraTest.h"

namespace
{

using camera::FeatureId;
using testing::HasSubstr;
using testing::StartsWith;

using SetCommand = CameraTest;

TEST_F(SetCommand, TellsWhatTheCameraTakesInPlace)
{
    switchOn();
    const ToolOutcome outcome = run({"set", "width=50000"});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.output, "width=64 instead of 50000 (in steps of 16)\n");
}

TEST_F(SetCommand, FailsWithStrictWhereTheCameraTakesSomethingElse)
{
    switchOn();
    const ToolOutcome outcome = run({"set", "--strict", "width=50000", "exposure=100"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.errors,
              "telvo: the camera takes width 64 instead of 50000 (in steps of 16)\n");
    EXPECT_EQ(value(FeatureId::ExposureTimeRaw), 100);
}

TEST_F(SetCommand, NamesTheStepOfAValueThatIsRefused)
{
    switchOn();
    const ToolOutcome outcome = run({"set", "width=33"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.errors,
              "telvo: the camera refuses width = 33; it takes values in steps of 16\n");
}

TEST_F(SetCommand, NamesTheLimitsOfAValueThatIsRefused)
{
    switchOn();
    const ToolOutcome outcome = run({"set", "exposure=0"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.errors,
              "telvo: the camera refuses exposure = 0; it takes values 1 to 19999 us\n");
}

TEST_F(SetCommand, WritesSettingsInAnOrderInWhichTheCameraTakesThem)
{
    switchOn();
    ASSERT_EQ(run({"set", "width=32", "offset-x=32"}).exitStatus, 0);
    EXPECT_EQ(value(FeatureId::OffsetX), 32);
    const ToolOutcome outcome = run({"set", "--strict", "width=64", "offset-x=0"});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.output, "width=64\noffset-x=0\n");
    EXPECT_EQ(value(FeatureId::Width), 64);
    const ToolOutcome exposure = run({"set", "--strict", "exposure=100000", "frame-rate=5"});
    EXPECT_EQ(exposure.exitStatus, 0);
    EXPECT_EQ(exposure.output, "exposure=100000 us\nframe-rate=5 Hz\n");
}

TEST_F(SetCommand, TellsOfASettingThatTheNextConnectionSwitchesOff)
{
    switchOn();
    EXPECT_EQ(run({"set", "record-standby=on"}).output,
              "record-standby=on (until the next command connects the camera; give it to record "
              "with --set)\n");
    EXPECT_EQ(run({"get", "record-standby"}).output, "record-standby=on\n");
    EXPECT_EQ(run({"set", "exposure=100"}).exitStatus, 0);
    EXPECT_EQ(run({"get", "record-standby"}).output, "record-standby=off\n");
}

TEST_F(SetCommand, SaysBeforeItPreparesTheUserSets)
{
    camera::CameraOptions options = quickCamera();
    options.userSetsPrepared = false;
    switchOn(options);
    const ToolOutcome outcome = run({"set", "exposure=100"});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.output, "exposure=100 us\n");
    EXPECT_THAT(outcome.errors,
                StartsWith("telvo: the camera at 127.0.0.11 is used for the first time: its user "
                           "set 1 is set to whole pictures, saved and made the default\n"));
    EXPECT_EQ(run({"set", "exposure=100"}).errors, "");
}

TEST_F(SetCommand, NamesTheFirstFeatureThatTheCameraLacks)
{
    camera::CameraOptions options = quickCamera();
    options.missing = {FeatureId::UserSetSelector, FeatureId::UserSetDefaultSelector,
                       FeatureId::UserSetSave, FeatureId::RecordStart, FeatureId::RecordStop};
    switchOn(options);
    const ToolOutcome outcome = run({"set", "exposure=100"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.errors,
              "telvo: the camera lacks the feature \"UserSetSelector\", which every "
              "command that connects it needs; its maker may have firmware with it\n");
}

TEST_F(SetCommand, AsksForLostPacketsUnlessToldOtherwise)
{
    switchOn();
    EXPECT_EQ(run({"get", "resends"}).output, "resends=100\n");
}

TEST_F(SetCommand, RefusesANameThatTwoCamerasHave)
{
    switchOn(); // both are called "virtual camera"
    camera::VirtualCamera twin(quickCamera("127.0.0.12"));
    ASSERT_FALSE(twin.start());
    const ToolOutcome outcome =
        runTool({"get", "--camera", "virtual camera", "--interface", "lo", "--timeout", "300"});
    EXPECT_EQ(outcome.exitStatus, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("2 cameras are called 'virtual camera'"));
    EXPECT_THAT(outcome.errors, HasSubstr("127.0.0.11 (serial number VC00000B)"));
    EXPECT_THAT(outcome.errors, HasSubstr("127.0.0.12 (serial number VC00000C)"));
    const ToolOutcome bySerial = runTool(
        {"get", "exposure", "--camera", "VC00000C", "--interface", "lo", "--timeout", "300"});
    EXPECT_EQ(bySerial.output, "exposure=1000 us\n");
}

} // namespace
