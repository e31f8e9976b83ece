#include "CameraTest.h"

#include "BootstrapRegisters.h"
#include "ControlChannel.h"
#include "DeviceRegisters.h"

#include <csignal>
#include <nlohmann/json.hpp>

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
    EXPECT_THAT(outcome.output, testing::ContainsRegex("receiving took [0-9]+ % of a core"));
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

/// One with 210 packets in a picture.
camera::CameraOptions largerCamera()
{
    camera::CameraOptions options = quickCamera();
    options.sensor = camera::SensorSize{.width = 640, .height = 480};
    options.settings[FeatureId::AcquisitionFrameRateRaw] = 100;
    return options;
}

TEST_F(Doctor, SaysWhereInThePicturePacketsGetLost)
{
    switchOn(largerCamera());
    camera().faults().clampPacketSize(1500);
    for (std::uint32_t packet = 195; packet <= 205; ++packet) {
        camera().faults().add(camera::PacketFault{
            .kind = camera::PacketFaultKind::Lose, .packetId = packet, .blocks = camera::kForever});
    }
    EXPECT_THAT(run(doctor()).output,
                HasSubstr(" packets got lost while none was asked for again, most of them at the "
                          "end of a picture\n  -> "));
}

TEST_F(Doctor, NamesTheHostThatControlsTheCamera)
{
    switchOn();
    const auto address = gige::net::parseIpv4("127.0.0.11");
    const gige::control::LinkSettings settings;
    const auto channel = gige::control::ControlChannel::open(*address, *address, settings);
    gige::control::DeviceRegisters registers(*channel);
    ASSERT_EQ(
        registers.writeRegister(gige::wire::kRegControlPrivilege, gige::wire::kPrivilegeControl),
        gige::control::Status::Ok);
    const ToolOutcome outcome = run(doctor());
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.output,
                testing::ContainsRegex("problem: the camera is controlled by a program on "
                                       "127.0.0.11, port [0-9]+\n  -> end that program\n"));
}

TEST_F(Doctor, SaysThatACameraCopiesToItsFlashCard)
{
    camera::CameraOptions options = quickCamera();
    options.flashBusy = std::chrono::seconds(60);
    switchOn(options);
    const ToolOutcome outcome = run(doctor());
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.output, HasSubstr("problem: the camera copies a recording to its flash "
                                          "card\n  -> wait, or end it with 'telvo flash stop'\n"));
}

TEST_F(Doctor, SaysThatNoPacketArrives)
{
    switchOn();
    camera().faults().setPacketRates({.lose = 1});
    const ToolOutcome outcome = run(doctor());
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.output, HasSubstr("problem: the camera sends pictures, and no packet of "
                                          "them arrives\n  -> a firewall"));
}

TEST_F(Doctor, SaysThatRecordingsWaitForTheTriggerAndThatTheLinkIsTooSlow)
{
    camera::CameraOptions options = largerCamera();
    options.settings[FeatureId::ExtTriggerEnable] = 1;
    options.settings[FeatureId::AcquisitionFrameRateRaw] = 2000;
    options.linkRate = 1'000'000'000;
    switchOn(options);
    const ToolOutcome outcome = run(doctor());
    EXPECT_THAT(outcome.output, HasSubstr("hint: recordings wait for the trigger input\n"));
    EXPECT_THAT(outcome.output,
                HasSubstr("hint: live pictures make 4915 Mbit/s, the camera's link has 1000\n"));
    EXPECT_THAT(outcome.output, testing::ContainsRegex("hint: [0-9]+ whole pictures in "));
}

TEST_F(Doctor, SaysHowMuchOfACoreReceivingTakes)
{
    camera::CameraOptions options = largerCamera();
    options.settings[FeatureId::AcquisitionFrameRateRaw] = 1000; // 307 MB/s
    switchOn(options);
    std::vector<std::string> asJson = doctor();
    asJson.emplace_back("--json");
    EXPECT_THAT(
        nlohmann::json::parse(run(asJson).output),
        testing::Contains(testing::ResultOf(
            [](const nlohmann::json& finding) { return finding["text"].get<std::string>(); },
            testing::ContainsRegex("receiving took [1-9][0-9]* % of a core"))));
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
