#include "Program.h"
#include "VirtualCamera.h"

#include <gtest/gtest.h>

namespace
{

using testing::AssertionFailure;
using testing::AssertionSuccess;

testing::AssertionResult contains(const std::string& output, const std::string& text)
{
    return output.find(text) != std::string::npos ? AssertionSuccess()
                                                  : AssertionFailure()
                                                        << "no \"" << text << "\" in:\n"
                                                        << output;
}

/// An address of a real interface, since other programs do not look for cameras on loopback.
class OurCamera : public testing::Test
{
  protected:
    static void SetUpTestSuite()
    {
        // The test has a network of its own; in it, one cable with both ends here.
        ASSERT_EQ(std::system("ip link add cam0 type veth peer name cam1 && "
                              "ip addr add 10.77.0.1/24 brd + dev cam0 && "
                              "ip link set cam0 up && ip link set cam1 up"),
                  0);
    }

    static void TearDownTestSuite() { EXPECT_EQ(std::system("ip link del cam0"), 0); }

    void start(camera::CameraOptions options)
    {
        options.address = "10.77.0.1";
        camera.emplace(options);
        ASSERT_FALSE(camera->start());
    }

    std::optional<camera::VirtualCamera> camera;
};

TEST_F(OurCamera, IsFoundByStrangers)
{
    camera::CameraOptions options;
    options.model = "Fenrow 5";
    start(options);
    EXPECT_TRUE(contains(outputOf({"arv-tool-0.8"}), "Fenrow 5"));
}

TEST_F(OurCamera, HasFeaturesThatStrangersReadAndWrite)
{
    start({});
    const std::string features = outputOf({"arv-tool-0.8", "-a", "10.77.0.1", "features"});
    EXPECT_TRUE(contains(features, "'Width'"));
    EXPECT_TRUE(contains(features, "'RecordMode'"));
    EXPECT_TRUE(contains(features, "'PayloadSize'"));
    const std::string written =
        outputOf({"arv-tool-0.8", "-a", "10.77.0.1", "control", "Width=320", "Width",
                  "ExtTriggerPolarity=falling", "ExtTriggerPolarity"});
    EXPECT_TRUE(contains(written, "Width = 320"));
    EXPECT_TRUE(contains(written, "ExtTriggerPolarity = falling"));
    EXPECT_EQ(camera->value(camera::FeatureId::Width), 320);
}

TEST_F(OurCamera, StreamsToStrangersWithoutFailures)
{
    camera::CameraOptions options;
    // A pace that a busy machine under a sanitizer keeps up with.
    options.settings = {{camera::FeatureId::Width, 320},
                        {camera::FeatureId::Height, 240},
                        {camera::FeatureId::AcquisitionFrameRateRaw, 20}};
    start(options);
    const std::string output = outputOf(
        {"arv-camera-test-0.8", "--no-packet-socket", "-n", "10.77.0.1", "--duration", "4"});
    EXPECT_GE(numberAfter(output, "n_completed_buffers"), 20) << output;
    EXPECT_EQ(numberAfter(output, "n_failures"), 0) << output;
    EXPECT_EQ(numberAfter(output, "n_size_mismatch_errors"), 0) << output;
}

} // namespace
