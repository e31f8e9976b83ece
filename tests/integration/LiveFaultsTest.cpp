#include "DebugLog.h"
#include "Host.h"
#include "StackLogViewer.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

using camera::FeatureId;
using camera::FrameFaultKind;
using camera::VirtualCamera;

TEST(LiveFaults, LostPacketsWithoutResendsRaiseTheDataRateStepByStep)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, impatientSettings());
    DebugLog log;
    camera.faults().setPacketRates({.lose = 0.05});
    ASSERT_EQ(expStartLiveMode(host.id()), 0);
    // At most one step a second: from 3 as configured to 4 and 5.
    EXPECT_TRUE(eventually([&] { return camera.value(FeatureId::InternalDataRate) >= 5; }, 60s));
    const std::vector<std::uint32_t> steps{3, 4, 5};
    const auto written = camera.log().valuesWritten(FeatureId::InternalDataRate);
    EXPECT_NE(std::search(written.begin(), written.end(), steps.begin(), steps.end()),
              written.end());
    EXPECT_TRUE(contains(log.take(), "Internal acquisition state: IMAGE_ERROR!"));
    // Nothing stalls: pictures come again as soon as the packets do.
    camera.faults().clear();
    host.previewImage();
    host.previewImage();
    EXPECT_TRUE(showsScene(host.nextImage(), camera.liveView()));
    EXPECT_EQ(expStopLiveMode(host.id()), 0);
}

TEST(LiveFaults, LostPacketsAreToldByTheStackOutsideTheLibrarysLines)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    const StackLogViewer stack;
    DebugLog log;
    Host host;
    host.open(camera, impatientSettings());
    camera.faults().setPacketRates({.lose = 0.05});
    ASSERT_EQ(expStartLiveMode(host.id()), 0);
    EXPECT_NE(stack.await("pictures came incomplete"), "");
    EXPECT_EQ(expStopLiveMode(host.id()), 0);
    const std::vector<std::string> lines = log.take();
    EXPECT_TRUE(contains(lines, "Internal acquisition state: IMAGE_ERROR!"));
    for (const std::string& line : lines) {
        EXPECT_EQ(line.find("127.0.0.11: "), std::string::npos) << line;
        EXPECT_EQ(line.find("incomplete"), std::string::npos) << line;
    }
}

TEST(LiveFaults, LostPacketsWithResendsAreHealed)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    TelvoConnectionSettings settings = impatientSettings();
    settings.maximumPendingResends = 1000;
    settings.packetTimeout = 1000;
    settings.defaultImageTimeout = 1100;
    Host host;
    host.open(camera, settings);
    // Few packets, seldom: each is asked for at most three times, and that may get lost as well.
    std::uint32_t width = 320;
    std::uint32_t height = 240;
    ASSERT_EQ(expSetWidth(&width, host.id()), 0);
    ASSERT_EQ(expSetHeight(&height, host.id()), 0);
    ASSERT_EQ(expSetFrameRate(5, host.id()), 0);
    DebugLog log;
    camera.faults().setPacketRates({.lose = 0.05});
    ASSERT_EQ(expStartLiveMode(host.id()), 0);
    for (int i = 0; i < 15; ++i) {
        EXPECT_TRUE(showsScene(host.nextImage(), camera.liveView()));
    }
    EXPECT_GT(camera.log().counters().resentPackets, 0U);
    EXPECT_FALSE(contains(log.take(), "Internal acquisition state: IMAGE_ERROR!"));
    EXPECT_EQ(expStopLiveMode(host.id()), 0);
}

TEST(LiveFaults, AFrameThatEndsInTheMiddleIsPassedOver)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, impatientSettings());
    ASSERT_EQ(expSetFrameRate(10, host.id()), 0); // slow enough to leave no frame out
    camera.faults().add(camera::FrameFault{
        .kind = FrameFaultKind::StopMiddle, .position = 3, .amount = 100, .times = 1});
    ASSERT_EQ(expStartLiveMode(host.id()), 0);
    std::uint32_t newest = 0;
    while (newest < 6) {
        const auto image = host.nextImage();
        ASSERT_FALSE(image.empty());
        EXPECT_TRUE(showsScene(image, camera.liveView()));
        newest = frameNumber(image);
        EXPECT_NE(newest, 3U);
    }
    EXPECT_EQ(expStopLiveMode(host.id()), 0);
}

TEST(LiveFaults, ACameraThatStopsMidFrameIsRestarted)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, impatientSettings());
    ASSERT_EQ(expSetFrameRate(10, host.id()), 0); // slow enough to leave no frame out
    DebugLog log;
    camera.faults().add(camera::FrameFault{.kind = FrameFaultKind::Silence,
                                           .position = 3,
                                           .amount = 100,
                                           .pause = 3000ms,
                                           .times = 1});
    ASSERT_EQ(expStartLiveMode(host.id()), 0);
    EXPECT_TRUE(eventually([&] { return contains(log.take(), "Restart acquisition!"); }, 20s));
    EXPECT_TRUE(eventually([&] { return !host.previewImage().empty(); }, 20s));
    EXPECT_EQ(expStopLiveMode(host.id()), 0);
}

TEST(LiveFaults, ReorderedRepeatedAndDelayedPacketsDoNoHarm)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera, impatientSettings());
    camera.faults().setPacketRates(
        {.repeat = 0.02, .reorder = 0.02, .delay = 0.001, .pause = std::chrono::microseconds(500)});
    ASSERT_EQ(expStartLiveMode(host.id()), 0);
    for (int i = 0; i < 10; ++i) {
        EXPECT_TRUE(showsScene(host.nextImage(), camera.liveView()));
    }
    EXPECT_EQ(expStopLiveMode(host.id()), 0);
}

TEST(LiveFaults, ARejectedSourceSwitchFailsTheStart)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    Host host;
    host.open(camera);
    camera.faults().add(camera::AccessFault{.feature = FeatureId::AcquisitionSource,
                                            .access = camera::AccessKind::Write});
    EXPECT_EQ(expStartLiveMode(host.id()), -1);
    EXPECT_EQ(expStopLiveMode(host.id()), 0); // the mode is live all the same
    EXPECT_EQ(expStartLiveMode(host.id()), 0);
    EXPECT_EQ(expStopLiveMode(host.id()), 0);
}

TEST(LiveFaults, LateAnswersAndPendingAcknowledgesAreWaitedFor)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    TelvoConnectionSettings settings = fastSettings();
    settings.answerTimeout = 300;
    Host host;
    host.open(camera, settings);
    camera.faults().add(camera::AccessFault{.feature = FeatureId::ExposureTimeRaw,
                                            .access = camera::AccessKind::Write,
                                            .kind = camera::AccessFaultKind::Delay,
                                            .delay = 1500ms});
    std::uint32_t before = 0;
    std::uint32_t minimum = 0;
    std::uint32_t maximum = 0;
    ASSERT_EQ(expGetExposureTime(&minimum, &maximum, &before, host.id()), 0);
    EXPECT_EQ(expSetExposureTime(before + 1, host.id()), 0);
    const auto writes = camera.log().valuesWritten(FeatureId::ExposureTimeRaw);
    EXPECT_EQ(writes, std::vector<std::uint32_t>{before + 1});
}

TEST(LiveFaults, ALostAcknowledgeDoesNotWriteTwice)
{
    VirtualCamera camera(preparedCamera());
    ASSERT_FALSE(camera.start());
    TelvoConnectionSettings settings = fastSettings();
    settings.answerTimeout = 100;
    Host host;
    host.open(camera, settings);
    camera.faults().add(camera::AccessFault{.feature = FeatureId::BlackLevelRaw,
                                            .access = camera::AccessKind::Write,
                                            .kind = camera::AccessFaultKind::DropAck});
    EXPECT_EQ(expSetBlacklevel(7, host.id()), 0);
    EXPECT_EQ(camera.log().valuesWritten(FeatureId::BlackLevelRaw), std::vector<std::uint32_t>{7});
    EXPECT_GT(camera.log().counters().repeats, 0U);
}

} // namespace
