// Camera ids: when they are known, how they compare, and which camera answers under them.
#include "GrabberTest.h"

#include <cstdio>
#include <cstdlib>
#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <thread>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
/// What its thread makes while it lives is never destroyed, and shall not be.
using LeftForGood = __lsan::ScopedDisabler;
#else
struct LeftForGood {
};
#endif

namespace
{

class RegistryTest : public GrabberTest
{
  protected:
    std::string ipAddress(std::int32_t cameraId)
    {
        char text[50];
        const std::uint32_t size = sizeof text;
        return expGetParam("ipAddress", text, &size, cameraId) == 0 ? text : "unknown";
    }
};

TEST_F(RegistryTest, AnIdIsKnownFromConnectToDisconnect)
{
    EXPECT_EQ(expSetChangedCallback(nullptr, kCamera), -1);
    EXPECT_EQ(expSetDataAvailableCallback(nullptr, kCamera), -1);
    EXPECT_EQ(expDisconnectGrabber(kCamera), -1);
    ASSERT_EQ(connect(), 0);
    EXPECT_EQ(expSetChangedCallback(nullptr, kCamera), 0);
    EXPECT_EQ(expSetDataAvailableCallback(nullptr, kCamera), 0);
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    EXPECT_EQ(expSetChangedCallback(nullptr, kCamera), -1);
    EXPECT_EQ(expSetDataAvailableCallback(nullptr, kCamera), -1);
    EXPECT_EQ(expDisconnectGrabber(kCamera), -1);
}

TEST_F(RegistryTest, AFailedConnectLeavesNoTrace)
{
    s.answerAlways("PvDevice.Connect", Code::NotFound);
    ASSERT_EQ(connect(), -1);
    s.forget();
    EXPECT_EQ(initialize(), -1);
    EXPECT_EQ(expDisconnectGrabber(kCamera), -1);
    EXPECT_EQ(s.takeCalls(), Texts{});
    EXPECT_EQ(s.takeQueries(), Texts{});
}

TEST_F(RegistryTest, AnIdMayBeUsedAgain)
{
    ASSERT_EQ(connect(kMac, "127.0.0.1", 1, {}), 0);
    ASSERT_EQ(expDisconnectGrabber(kCamera), 0);
    ASSERT_EQ(connect(kMac, "127.0.0.2", 1, {}), 0);
    EXPECT_EQ(ipAddress(kCamera), "127.0.0.2");
}

TEST_F(RegistryTest, IdsCompareAsSignedNumbers)
{
    constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
    ASSERT_EQ(connect(kMac, "127.0.0.1", 1, {}, 7), 0);
    ASSERT_EQ(connect(kMac, "127.0.0.2", 1, {}, -5), 0);
    ASSERT_EQ(connect(kMac, "127.0.0.3", 1, {}, 0), 0);
    ASSERT_EQ(connect(kMac, "127.0.0.4", 1, {}, kHighest), 0);
    EXPECT_EQ(ipAddress(-5), "127.0.0.2");
    EXPECT_EQ(ipAddress(0), "127.0.0.3");
    EXPECT_EQ(ipAddress(7), "127.0.0.1");
    EXPECT_EQ(ipAddress(kHighest), "127.0.0.4");
    for (const std::int32_t unknown : {kLowest, -6, -4, -1, 1, 5, 6, 8, kHighest - 1}) {
        EXPECT_EQ(ipAddress(unknown), "unknown") << unknown;
    }
}

TEST_F(RegistryTest, EachCameraIsDisconnectedAlone)
{
    ASSERT_EQ(connect(kMac, "127.0.0.1", 1, {}, 1), 0);
    ASSERT_EQ(connect(kMac, "127.0.0.2", 1, {}, 2), 0);
    s.forget();
    EXPECT_EQ(expDisconnectGrabber(2), 0);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"PvStream#2.Close", "log Unregister event sink.",
                     "PvDevice#2.UnregisterEventSink", "PvDevice#2.ResetStreamDestination 0",
                     "PvDevice#2.Disconnect", "log Grabber disconnected!."}));
    EXPECT_EQ(ipAddress(1), "127.0.0.1");
    EXPECT_EQ(ipAddress(2), "unknown");
}

TEST_F(RegistryTest, AnIdThatIsBeingConnectedIsNeitherKnownNorTakenByAnotherThread)
{
    s.onCall([this](const std::string& call) {
        if (call.starts_with("PvDevice.Connect")) {
            EXPECT_EQ(ipAddress(kCamera), "unknown");
            EXPECT_EQ(expDisconnectGrabber(kCamera), -1);
            std::thread([this] {
                [[maybe_unused]] const LeftForGood theSecondGrabber;
                EXPECT_EQ(connect(kMac, "127.0.0.2", 1, {}), 0);
            }).join();
            EXPECT_EQ(ipAddress(kCamera), "unknown");
        }
    });
    ASSERT_EQ(connect(kMac, "127.0.0.1", 1, {}), 0);
    EXPECT_EQ(ipAddress(kCamera), "127.0.0.1");
}

TEST_F(RegistryTest, AnIdWhoseConnectHasFailedGoesToTheThreadThatStillConnects)
{
    s.answerAlways("PvDevice#2.Connect", Code::NotFound);
    s.onCall([this](const std::string& call) {
        if (call.starts_with("PvDevice.Connect")) {
            std::thread([this] { EXPECT_EQ(connect(kMac, "127.0.0.2", 1, {}), -1); }).join();
        }
    });
    ASSERT_EQ(connect(kMac, "127.0.0.1", 1, {}), 0);
    EXPECT_EQ(ipAddress(kCamera), "127.0.0.1");
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
}

TEST_F(RegistryTest, AnIdThatIsBeingDisconnectedIsNeitherKnownNorTakenByAnotherThread)
{
    ASSERT_EQ(connect(kMac, "127.0.0.1", 1, {}), 0);
    s.onCall([this](const std::string& call) {
        if (call == "PvDevice.Disconnect") {
            std::thread([this] {
                [[maybe_unused]] const LeftForGood theSecondGrabber;
                EXPECT_EQ(expSetChangedCallback(nullptr, kCamera), -1);
                EXPECT_EQ(expDisconnectGrabber(kCamera), -1);
                EXPECT_EQ(connect(kMac, "127.0.0.2", 1, {}), 0);
            }).join();
        }
    });
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    EXPECT_EQ(ipAddress(kCamera), "unknown");
    ASSERT_EQ(connect(kMac, "127.0.0.3", 1, {}), 0);
    EXPECT_EQ(ipAddress(kCamera), "127.0.0.3");
}

TEST_F(RegistryTest, ACameraWithALostLinkStaysKnown)
{
    ASSERT_EQ(connect(), 0);
    s.loseLink();
    EXPECT_EQ(ipAddress(kCamera), kIp);
    EXPECT_EQ(initialize(), -1);
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
}

TEST_F(RegistryTest, TheEndOfTheProcessLeavesConnectedCamerasAlone)
{
    [[maybe_unused]] const LeftForGood theGrabber;
    EXPECT_EXIT(
        {
            connect();
            s.onCall([](const std::string& call) { std::fputs(call.c_str(), stderr); });
            std::exit(0);
        },
        ::testing::ExitedWithCode(0), ::testing::StrEq(""));
}

TEST_F(RegistryTest, ASecondConnectUnderAnIdSucceedsButTheFirstCameraStays)
{
    [[maybe_unused]] const LeftForGood theSecondGrabber;
    ASSERT_EQ(connect(kMac, "127.0.0.1", 1, {}), 0);
    s.camera().enumeration("CameraState").value("FlashWrite");
    EXPECT_EQ(connect(kMac, "127.0.0.2", 1, {}), 1);
    EXPECT_EQ(ipAddress(kCamera), "127.0.0.1");
    s.forget();

    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"PvStream.Close", "log Unregister event sink.", "PvDevice.UnregisterEventSink",
                     "PvDevice.ResetStreamDestination 0", "PvDevice.Disconnect",
                     "log Grabber disconnected!."}));
    EXPECT_EQ(ipAddress(kCamera), "unknown");
}

} // namespace
