// Disconnecting, with and without a link, and the notification of a lost link.
#include "GrabberTest.h"

#include <algorithm>
#include <future>
#include <thread>
#include <vector>

namespace
{

std::vector<std::int32_t> callbackReasons; // of the callback below

extern "C" void rememberReason(std::int32_t reason)
{
    callbackReasons.push_back(reason);
}

class DisconnectTest : public GrabberTest
{
  protected:
    void SetUp() override
    {
        callbackReasons.clear();
        ASSERT_EQ(connect(), 0);
        s.forget();
    }
};

class LinkLossTest : public DisconnectTest
{
};

const Texts kDisconnects{"PvStream.Close",
                         "log Unregister event sink.",
                         "PvDevice.UnregisterEventSink",
                         "PvDevice.ResetStreamDestination 0",
                         "PvDevice.Disconnect",
                         "log Grabber disconnected!."};

TEST_F(DisconnectTest, RunsItsStepsInOrder)
{
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), kDisconnects);
}

TEST_F(DisconnectTest, FreesTheSingleImageBufferOfAnInitializedGrabber)
{
    ASSERT_EQ(initialize(), 0);
    s.forget();
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    Texts expected = kDisconnects;
    expected.insert(expected.begin() + 1, "PvBuffer.Free");
    EXPECT_EQ(s.takeCalls(), expected);
}

TEST_F(DisconnectTest, WritesAChangedNameBeforeItDisconnects)
{
    EXPECT_EQ(expSetUserDefinedName("left camera", kCamera), 0);
    EXPECT_EQ(s.takeCalls(), Texts{}); // nothing reaches the camera until then
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    Texts expected = kDisconnects;
    expected.insert(expected.begin() + 4,
                    {"Get DeviceUserID", "DeviceUserID.SetValue left camera"});
    EXPECT_EQ(s.takeCalls(), expected);
    EXPECT_EQ(s.camera().string("DeviceUserID").value(), "left camera");
}

TEST_F(DisconnectTest, WritesTheLastOfSeveralNames)
{
    expSetUserDefinedName("left camera", kCamera);
    expSetUserDefinedName("right camera", kCamera);
    expDisconnectGrabber(kCamera);
    EXPECT_EQ(s.camera().string("DeviceUserID").value(), "right camera");
}

TEST_F(DisconnectTest, WritesANameThatWasChangedAndThenGivenAgain)
{
    expSetUserDefinedName("left camera", kCamera);
    expSetUserDefinedName("left camera", kCamera);
    expDisconnectGrabber(kCamera);
    EXPECT_EQ(s.camera().string("DeviceUserID").value(), "left camera");
}

TEST_F(DisconnectTest, DoesNotWriteTheNameThatTheCameraAlreadyHas)
{
    ASSERT_EQ(initialize(), 0); // reads "bench camera"
    s.forget();
    EXPECT_EQ(expSetUserDefinedName("bench camera", kCamera), 0);
    expDisconnectGrabber(kCamera);
    Texts expected = kDisconnects;
    expected.insert(expected.begin() + 1, "PvBuffer.Free");
    EXPECT_EQ(s.takeCalls(), expected);
}

TEST_F(DisconnectTest, GivesTheNewNameAsTheCamerasName)
{
    ASSERT_EQ(initialize(), 0);
    expSetUserDefinedName("left camera", kCamera);
    char text[50];
    const std::uint32_t size = sizeof text;
    EXPECT_EQ(expGetParam("cameraName", text, &size, kCamera), 0);
    EXPECT_STREQ(text, "left camera");
}

TEST_F(DisconnectTest, CutsANameAt49Characters)
{
    expSetUserDefinedName(std::string(53, 'n').c_str(), kCamera);
    expDisconnectGrabber(kCamera);
    EXPECT_EQ(s.camera().string("DeviceUserID").value(), std::string(49, 'n'));
}

TEST_F(DisconnectTest, SurvivesACameraWithoutAName)
{
    s.camera().remove("DeviceUserID");
    expSetUserDefinedName("left camera", kCamera);
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    Texts expected = kDisconnects;
    expected.insert(expected.begin() + 4, "Get DeviceUserID");
    EXPECT_EQ(s.takeCalls(), expected);
}

TEST_F(DisconnectTest, LeavesADeviceAloneThatIsNoLongerConnected)
{
    s.dropConnection();
    expSetUserDefinedName("left camera", kCamera);
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), (Texts{"PvStream.Close", "PvDevice.ResetStreamDestination 0",
                                    "log Grabber disconnected!."}));
}

TEST_F(DisconnectTest, StopsTheAcquisitionThreadFirst)
{
    ASSERT_EQ(initialize(), 0);
    ASSERT_EQ(expStartLiveMode(kCamera), 0);
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    s.forget();
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    const Texts worker = s.takeWorkerCalls();
    ASSERT_FALSE(worker.empty());
    EXPECT_EQ(worker.back(), "log Acquisition thread stopped!");
    const Texts kernel = s.takeKernelCalls();
    ASSERT_GE(kernel.size(), 2U);
    EXPECT_EQ(kernel[0], "WaitForSingleObject 5000");
    EXPECT_EQ(kernel[1], "CloseHandle");
}

TEST_F(DisconnectTest, StopsTheReadoutThreadToo)
{
    ASSERT_EQ(initialize(), 0);
    ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    s.forget();
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    const Texts kernel = s.takeKernelCalls();
    EXPECT_EQ(std::count(kernel.begin(), kernel.end(), "WaitForSingleObject 5000"), 1);
    const Texts worker = s.takeWorkerCalls();
    ASSERT_FALSE(worker.empty());
    EXPECT_EQ(worker.back(), "log \nReadoutThread stopped. Duration: 0 seconds");
}

TEST_F(DisconnectTest, DestroysSerialBridgeThenStreamThenDevice)
{
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    const Texts queries = s.takeQueries();
    ASSERT_GE(queries.size(), 3U);
    EXPECT_EQ(
        Texts(queries.end() - 3, queries.end()),
        (Texts{"PvSerialPortIPEngine destroyed", "PvStream destroyed", "PvDevice destroyed"}));
}

TEST_F(LinkLossTest, TellsTheHostWithReason0AfterItsLine)
{
    ASSERT_EQ(expSetChangedCallback(rememberReason, kCamera), 0);
    std::size_t callbacksAtLine = 99;
    s.onCall([&](const std::string& call) {
        if (call == "log Connection to device lost!") {
            callbacksAtLine = callbackReasons.size();
        }
    });
    s.loseLink();
    EXPECT_EQ(s.takeCalls(), Texts{"log Connection to device lost!"});
    EXPECT_EQ(callbacksAtLine, 0U);
    EXPECT_EQ(callbackReasons, std::vector<std::int32_t>{0});
}

TEST_F(LinkLossTest, IgnoresASecondNotification)
{
    ASSERT_EQ(expSetChangedCallback(rememberReason, kCamera), 0);
    s.loseLink();
    s.forget();
    s.loseLink();
    EXPECT_EQ(s.takeCalls(), Texts{});
    EXPECT_EQ(callbackReasons, std::vector<std::int32_t>{0});
}

TEST_F(LinkLossTest, AbortsARunningBlockRequestBeforeItTellsTheHost)
{
    ASSERT_EQ(expSetChangedCallback(rememberReason, kCamera), 0);
    ASSERT_EQ(initialize(), 0);
    ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    s.onCall([](const std::string& call) {
        if (call == "SetEvent") {
            EXPECT_TRUE(callbackReasons.empty());
        }
    });
    s.forget();
    s.loseLink();
    EXPECT_EQ(s.takeCalls(),
              (Texts{"log Connection to device lost!", "log Current request aborted!"}));
    EXPECT_EQ(s.takeKernelCalls(), Texts{"SetEvent"});
    EXPECT_EQ(callbackReasons, std::vector<std::int32_t>{0});
}

TEST_F(LinkLossTest, IsSurvivedWithoutACallback)
{
    s.loseLink();
    EXPECT_EQ(s.takeCalls(), Texts{"log Connection to device lost!"});
}

TEST_F(LinkLossTest, CallsNoCallbackThatWasReplacedByNull)
{
    ASSERT_EQ(expSetChangedCallback(rememberReason, kCamera), 0);
    ASSERT_EQ(expSetChangedCallback(nullptr, kCamera), 0);
    s.loseLink();
    EXPECT_TRUE(callbackReasons.empty());
}

TEST_F(LinkLossTest, ACallbackMayDisconnect)
{
    static std::int32_t result;
    result = -1;
    ASSERT_EQ(expSetChangedCallback([](std::int32_t) { result = expDisconnectGrabber(kCamera); },
                                    kCamera),
              0);
    s.loseLink();
    EXPECT_EQ(result, 0);
    EXPECT_EQ(s.takeCalls(), (Texts{"log Connection to device lost!", "PvStream.Close",
                                    "log Grabber disconnected!."}));
}

TEST_F(LinkLossTest, ACallbackMayWaitForADisconnectOfAnotherThread)
{
    static std::promise<void> told;
    static std::promise<void> disconnected;
    ASSERT_EQ(expSetChangedCallback(
                  [](std::int32_t) {
                      told.set_value();
                      disconnected.get_future().wait();
                  },
                  kCamera),
              0);
    std::thread losing([this] { s.notifyLinkLost(); });
    told.get_future().wait();
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    disconnected.set_value();
    losing.join();
}

TEST_F(LinkLossTest, ThatComesAtTheEndOfADisconnectTellsNobody)
{
    s.dropConnection(); // and nobody has been told yet
    ASSERT_EQ(expSetChangedCallback(rememberReason, kCamera), 0);
    s.onCall([this](const std::string& call) {
        if (call == "log Grabber disconnected!.") {
            s.notifyLinkLost();
        }
    });
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    EXPECT_TRUE(callbackReasons.empty());
}

TEST_F(LinkLossTest, NeverCallsTheDataAvailableCallback)
{
    ASSERT_EQ(expSetDataAvailableCallback(rememberReason, kCamera), 0);
    ASSERT_EQ(initialize(), 0);
    ASSERT_EQ(expStartLiveMode(kCamera), 0);
    s.pipelineFeed().feedFrame({1, 2, 3});
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    s.loseLink();
    EXPECT_TRUE(callbackReasons.empty());
}

TEST_F(LinkLossTest, LeavesTheDeviceAloneAtDisconnect)
{
    ASSERT_EQ(initialize(), 0);
    expSetUserDefinedName("left camera", kCamera);
    s.loseLink();
    s.forget();
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"PvStream.Close", "PvBuffer.Free", "log Grabber disconnected!."}));
}

TEST_F(LinkLossTest, LeavesADeviceAloneThatStillSaysItIsConnected)
{
    s.notifyLinkLost();
    s.forget();
    EXPECT_EQ(expDisconnectGrabber(kCamera), 0);
    EXPECT_EQ(s.takeCalls(), (Texts{"PvStream.Close", "log Grabber disconnected!."}));
}

TEST_F(LinkLossTest, MakesInitializeFailWithNothingDone)
{
    s.notifyLinkLost();
    s.forget();
    EXPECT_EQ(initialize(), -1);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(LinkLossTest, IsKnownWhenItComesWhileConnectRegistersItsSink)
{
    expDisconnectGrabber(kCamera);
    s.onCall([this](const std::string& call) {
        if (call == "PvDevice#2.RegisterEventSink") {
            s.notifyLinkLost();
        }
    });
    ASSERT_EQ(connect(), 0);
    s.forget();
    EXPECT_EQ(initialize(), -1);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(LinkLossTest, IsForgottenByTheNextConnect)
{
    s.loseLink();
    expDisconnectGrabber(kCamera);
    EXPECT_EQ(connect(), 0);
    EXPECT_EQ(initialize(), 0);
}

} // namespace
