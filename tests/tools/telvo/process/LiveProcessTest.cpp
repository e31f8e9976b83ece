#include "CameraTest.h"

#include "../writers/TemporaryFolder.h"

#include <chrono>
#include <csignal>
#include <thread>

namespace
{

using camera::FeatureId;
using testing::HasSubstr;

using LiveProcess = CameraTest;

/// The tool on a terminal of its own.
ToolProcess::Program onTerminal(const std::vector<std::string>& arguments)
{
    return {{"/usr/bin/env", "TERM=xterm", "/usr/bin/script", "-qec", toolLine(arguments),
             "/dev/null"}};
}

TEST_F(LiveProcess, FailsWhereFramesAreLost)
{
    const TemporaryFolder folder;
    switchOn();
    camera().faults().setFrameLoss(0.5);
    const ToolOutcome outcome =
        run({"live", "--frames", "20", "--out", folder / "pictures", "--fps", "50"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("frames were lost; 'telvo doctor' looks for the reason"));
    EXPECT_THAT(outcome.output, HasSubstr("20 frames of 64x48 "));
}

TEST_F(LiveProcess, EndsEarlyWithASignal)
{
    const TemporaryFolder folder;
    camera::CameraOptions options = quickCamera();
    options.sensor = camera::SensorSize{.width = 1280, .height = 1024};
    switchOn(options);
    ToolProcess tool(
        forCamera({"live", "--frames", "100000", "--out", folder / "pictures", "--fps", "500"}));
    ASSERT_TRUE(becomes([this] { return value(FeatureId::CameraState) == camera::kStateLive; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    tool.signal(SIGINT);
    const ToolOutcome outcome = tool.wait();
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("telvo: ending; waiting for the camera to end live mode\n"
                                          "telvo: ending; waiting for the pictures that were taken "
                                          "to be written\n"));
    EXPECT_TRUE(isFree());
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateIdle);
}

TEST_F(LiveProcess, ShowsThePictureInTheTerminal)
{
    switchOn();
    const ToolOutcome outcome = runProgram(
        onTerminal(forCamera({"live", "--view", "--fps", "10", "--frames", "12"})).command);
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.output;
    EXPECT_THAT(outcome.output, HasSubstr("\x1b[48;2;"));
    EXPECT_THAT(outcome.output, HasSubstr("frames/s   0 lost   exposure 1000 us   gain 0"));
    EXPECT_THAT(outcome.output, HasSubstr("\x1b[?1049l")); // the terminal is as before
}

TEST_F(LiveProcess, TakesKeysForExposureAndGainAndTheEnd)
{
    switchOn();
    ToolProcess tool = ToolProcess(onTerminal(forCamera({"live", "--view"})), std::nullopt);
    ASSERT_TRUE(becomes([this] { return value(FeatureId::CameraState) == camera::kStateLive; }));
    const auto expectAfter = [&](const char* key, FeatureId feature, std::int64_t expected) {
        tool.type(key);
        EXPECT_TRUE(becomes([&] { return value(feature) == expected; })) << key;
    };
    expectAfter("E", FeatureId::ExposureTimeRaw, 1250);
    expectAfter("e", FeatureId::ExposureTimeRaw, 1000);
    expectAfter("G", FeatureId::GainRaw, 1);
    expectAfter("g", FeatureId::GainRaw, 0);
    tool.type("xq"); // what is no key changes nothing
    const ToolOutcome outcome = tool.wait();
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.output;
    EXPECT_THAT(outcome.output, HasSubstr("exposure 1000 us   gain 0"));
    EXPECT_EQ(value(FeatureId::CameraState), camera::kStateIdle);
    EXPECT_TRUE(isFree());
}

using Browse = CameraTest;

TEST_F(Browse, ShowsTheCamerasFeaturesUntilTheUserEndsIt)
{
    switchOn();
    ToolProcess tool = ToolProcess(onTerminal(forCamera({"browse"})), std::nullopt);
    ASSERT_TRUE(becomes([this] { return !isFree(); }));
    tool.type("\x1B"); // Escape
    const ToolOutcome outcome = tool.wait();
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.output;
    EXPECT_THAT(outcome.output, HasSubstr("DeviceVendorName"));
    EXPECT_THAT(outcome.output, HasSubstr("\x1b[?1049l")); // the terminal is as before
    EXPECT_TRUE(isFree());
}

TEST_F(Browse, NeedsATerminal)
{
    switchOn();
    const ToolOutcome outcome = run({"browse"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.errors, "telvo: browse needs a terminal; 'telvo get' prints the settings\n");
}

TEST_F(LiveProcess, RefusesToShowThePictureWithoutATerminal)
{
    switchOn();
    const ToolOutcome outcome = run({"live", "--view"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.errors,
              "telvo: --view needs a terminal; --out writes the pictures to files\n");
}

} // namespace
