#include "CameraTest.h"

#include <csignal>

namespace
{

using camera::FeatureId;
using testing::HasSubstr;
using testing::Not;

using Doctor = CameraTest;

std::vector<std::string> doctor()
{
    return {"doctor", "--interface", "lo", "--timeout", "300"};
}

TEST_F(Doctor, FindsNothingWrongAndLeavesTheCameraAsItWas)
{
    switchOn();
    const ToolOutcome outcome = run(doctor());
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.output << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr("good: 127.0.0.11 answers on lo\n"));
    EXPECT_THAT(outcome.output, HasSubstr("whole pictures in "));
    EXPECT_THAT(outcome.output, Not(HasSubstr("problem: ")));
    EXPECT_EQ(value(FeatureId::AcquisitionSource), camera::kSourceLive);
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateIdle);
    EXPECT_TRUE(isFree());
}

TEST_F(Doctor, SaysWhoHasTheCamera)
{
    switchOn();
    ToolProcess other(forCamera({"record", "--mode", "ring"}));
    ASSERT_TRUE(becomes([this] { return !isFree(); }));
    const ToolOutcome outcome = run(doctor());
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.output, HasSubstr("problem: the camera at 127.0.0.11 is held by"));
}

TEST_F(Doctor, SaysThatACameraRecords)
{
    camera::CameraOptions options = quickCamera();
    options.recordAtPowerOn = true;
    options.settings[FeatureId::RecordMode] = camera::kRecordContinuous;
    switchOn(options);
    const ToolOutcome outcome = run(doctor());
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.output,
                HasSubstr("problem: the camera records\n  -> 'telvo stop' ends that\n"));
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateRecording);
}

TEST_F(Doctor, CountsPacketsThatGetLost)
{
    switchOn();
    camera().faults().setPacketRates({.lose = 0.2});
    const ToolOutcome outcome = run(doctor());
    EXPECT_THAT(outcome.output, HasSubstr("look at cable and switch"));
}

TEST_F(Doctor, SaysThatThePicturesWaitForASignal)
{
    camera::CameraOptions options = quickCamera();
    options.settings[FeatureId::SyncInEnable] = 1;
    switchOn(options);
    EXPECT_THAT(run(doctor()).output,
                HasSubstr("hint: pictures are exposed by the sync input only\n"));
}

TEST(DoctorWithoutACamera, SaysWhatToLookAt)
{
    const ToolOutcome outcome = runTool(doctor());
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.output, HasSubstr("problem: no camera answers on "));
    EXPECT_THAT(outcome.output, HasSubstr("firewall"));
}

} // namespace
