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
    const std::string line =
        toolLine(forCamera({"live", "--view", "--fps", "10", "--frames", "12"}));
    const ToolOutcome outcome =
        runProgram({"/usr/bin/env", "TERM=xterm", "/usr/bin/script", "-qec", line, "/dev/null"});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.output;
    EXPECT_THAT(outcome.output, HasSubstr("\x1b[48;2;"));
    EXPECT_THAT(outcome.output, HasSubstr("frames/s   0 lost   exposure 1000 us   gain 0"));
    EXPECT_THAT(outcome.output, HasSubstr("\x1b[?1049l")); // the terminal is as before
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
