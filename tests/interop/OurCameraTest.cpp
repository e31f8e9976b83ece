#include "Program.h"
#include "ProgramOutput.h"
#include "UdpSocket.h"
#include "VirtualCamera.h"

#include <array>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

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

/// Who answers DISCOVERY until nothing more is heard, in the order of answers.
/// @param patience  for the first answer
std::vector<std::string> answering(gige::net::Ipv4Address from, gige::net::Ipv4Address destination,
                                   std::chrono::milliseconds patience)
{
    auto host = gige::net::UdpSocket::open({from, 0}, {.broadcast = true});
    EXPECT_TRUE(host);
    const std::array<std::uint8_t, 8> discovery{0x42, 0x01, 0x00, 0x02, 0x00, 0x00, 0x12, 0x34};
    EXPECT_TRUE(host->send(discovery, {destination, 3956}));
    std::vector<std::string> addresses;
    std::array<std::uint8_t, 600> answer{};
    while (true) {
        const auto received =
            host->receive(answer, addresses.empty() ? patience : std::chrono::milliseconds(300));
        if (received.status != gige::net::ReceiveStatus::Data) {
            return addresses;
        }
        addresses.push_back(toText(received.source.address));
    }
}

/// Waits for a camera of another program.
bool comesUp(gige::net::Ipv4Address camera)
{
    for (int i = 0; i < 100; ++i) {
        if (!answering(camera, camera, std::chrono::milliseconds(100)).empty()) {
            return true;
        }
    }
    return false;
}

/// A camera on an address of a real interface.
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

TEST_F(OurCamera, OnLoopbackKeepsToHostsOfLoopback)
{
    start({});
    camera::VirtualCamera elsewhere({.address = "127.0.0.11"});
    ASSERT_FALSE(elsewhere.start());
    EXPECT_EQ(answering({0x0A4D0001}, gige::net::kLimitedBroadcast, std::chrono::seconds(10)),
              std::vector<std::string>{"10.77.0.1"});
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
    options.settings = {{camera::FeatureId::Width, 160},
                        {camera::FeatureId::Height, 120},
                        {camera::FeatureId::AcquisitionFrameRateRaw, 15}};
    start(options);
    const std::string output = outputOf(
        {"arv-camera-test-0.8", "--no-packet-socket", "-n", "10.77.0.1", "--duration", "4",
         // Without these it gives a frame up that came while it got no processor for 0.1 s.
         "--packet-timeout", "2000", "--frame-retention", "10000"});
    EXPECT_GE(numberAfter(output, "n_completed_buffers"), 20) << output;
    EXPECT_EQ(numberAfter(output, "n_failures"), 0) << output;
    EXPECT_EQ(numberAfter(output, "n_size_mismatch_errors"), 0) << output;
}

TEST(OurCamerasOnLoopback, AreAllFoundByStrangersBesideAStranger)
{
    const Program stranger({"arv-fake-gv-camera-0.8", "-i", "127.0.0.1"});
    ASSERT_TRUE(comesUp({0x7F000001}));
    std::vector<std::unique_ptr<camera::VirtualCamera>> cameras;
    for (const char* address : {"127.0.0.11", "127.0.0.12", "127.0.0.13"}) {
        cameras.push_back(
            std::make_unique<camera::VirtualCamera>(camera::CameraOptions{.address = address}));
        ASSERT_FALSE(cameras.back()->start());
    }
    const std::string output = outputOf({"arv-tool-0.8"});
    EXPECT_TRUE(contains(output, "(127.0.0.11)"));
    EXPECT_TRUE(contains(output, "(127.0.0.12)"));
    EXPECT_TRUE(contains(output, "(127.0.0.13)"));
    EXPECT_TRUE(contains(output, "(127.0.0.1)"));
}

} // namespace
