#include "DebugLog.h"
#include "Host.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>

namespace
{

using camera::VirtualCamera;

std::atomic<int> calls{0};
std::atomic<int> lastReason{-1};

void onChanged(std::int32_t reason)
{
    lastReason = reason;
    ++calls;
}

class LinkLoss : public testing::Test
{
  protected:
    void SetUp() override
    {
        ASSERT_FALSE(camera.start());
        settings.heartbeatTimeout = 1000;
        settings.heartbeatInterval = 200;
        settings.answerTimeout = 200;
        ASSERT_NO_FATAL_FAILURE(host.open(camera, settings));
        calls = 0;
        expSetChangedCallback(onChanged, host.id());
    }

    VirtualCamera camera{preparedCamera()};
    TelvoConnectionSettings settings = fastSettings();
    Host host;
};

TEST_F(LinkLoss, TellsTheHostOnce)
{
    camera.faults().setSilent(true);
    ASSERT_TRUE(eventually([] { return calls > 0; }, 20s));
    EXPECT_EQ(lastReason, 0);
    EXPECT_FALSE(eventually([] { return calls > 1; }, 2s));
}

TEST_F(LinkLoss, DuringLiveLetsTheStopSucceedAtOnce)
{
    ASSERT_EQ(expStartLiveMode(host.id()), 0);
    ASSERT_FALSE(host.nextImage().empty());
    camera.faults().setSilent(true);
    ASSERT_TRUE(eventually([] { return calls > 0; }, 20s));
    EXPECT_TRUE(host.previewImage().empty());
    const auto writes = camera.log().writes().size();
    std::int32_t result = -1;
    const auto time = timeOf([&] { result = expStopLiveMode(host.id()); });
    EXPECT_EQ(result, 0);
    EXPECT_LT(time, 2000ms);
    EXPECT_EQ(expStopLiveMode(host.id()), 0); // idle now
    EXPECT_EQ(host.disconnect(), 0);
    EXPECT_EQ(camera.log().writes().size(), writes); // nothing was sent to the camera
}

TEST_F(LinkLoss, TheCameraCanBeConnectedAgainOnceItIsBack)
{
    DebugLog log;
    camera.faults().setSilent(true);
    ASSERT_TRUE(eventually([] { return calls > 0; }, 20s));
    EXPECT_EQ(host.disconnect(), 0);
    const auto lines = log.take();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "Connection to device lost!"), 1);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "Unregister event sink."), 0);
    camera.faults().setSilent(false);
    // The camera frees itself when the heartbeat has been missing for its timeout.
    ASSERT_TRUE(eventually([&] { return host.connect(camera, settings) == 0; }, 20s));
    ASSERT_EQ(host.initialize(settings), 0);
    ASSERT_EQ(expStartLiveMode(host.id()), 0);
    EXPECT_FALSE(host.nextImage().empty());
    EXPECT_EQ(expStopLiveMode(host.id()), 0);
}

TEST_F(LinkLoss, AShortSilenceIsSurvived)
{
    camera.faults().setSilent(true);
    EXPECT_FALSE(eventually([] { return calls > 0; }, 300ms));
    camera.faults().setSilent(false);
    EXPECT_FALSE(eventually([] { return calls > 0; }, 2s));
    std::uint8_t idle = 0;
    EXPECT_EQ(expIsStateIdle(&idle, host.id()), 0);
    EXPECT_EQ(idle, 1);
}

} // namespace
