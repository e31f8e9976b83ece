// What the stack tells of the reasons why pictures do not come, in the process in which it happens.
#include "StackHost.h"
#include "StackLogViewer.h"

#include <chrono>
#include <gmock/gmock.h>
#include <linux/capability.h>
#include <stop_token>
#include <string>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using namespace std::chrono_literals;

/// A host that is told why.
class StackLog : public StackHost
{
  protected:
    using StackHost::StackHost;

    /// @param heartbeat  ms in which a busy machine has to let the camera answer
    void connect(std::int64_t heartbeat = 20'000)
    {
        setInteger(*device.GetGenLink(), "DefaultHeartbeatTimeout", heartbeat);
        ASSERT_TRUE(device.Connect(PvString(kIp), PvAccessType::Exclusive).IsOK());
    }

    /// All but the command that starts the camera.
    void prepare()
    {
        connect();
        endNoPictureByTime();
        openStream(50);
        startPipeline(4);
    }

    void takePictures(int count)
    {
        for (int i = 0; i < count; ++i) {
            PvBuffer* buffer = nullptr;
            PvResult operation;
            ASSERT_TRUE(pipeline.RetrieveNextBuffer(&buffer, 20'000, &operation).IsOK())
                << "picture " << i << (device.IsConnected() ? "" : ", the link is lost");
            ASSERT_TRUE(pipeline.ReleaseBuffer(buffer).IsOK());
        }
    }

    StackLogViewer viewer;
};

TEST_F(StackLog, TellsHowManyPacketsGetLostAndThatNobodyAsksForThemAgain)
{
    prepare();
    camera.faults().setPacketRates({.lose = 0.05});
    execute("AcquisitionStart");
    takePictures(20);
    ASSERT_TRUE(stream.Close().IsOK()); // tells what it has gathered
    const std::string line = viewer.await("pictures came incomplete, ");
    EXPECT_THAT(line, StartsWith("127.0.0.11: "));
    EXPECT_THAT(line, HasSubstr("packets are missing, spread over the pictures; none was asked for "
                                "again -> look at cable, plugs and switch; switch resends on "
                                "(MaximumPendingResends)"));
}

TEST_F(StackLog, TellsOfLossesOnceASecondWhileTheyGoOn)
{
    prepare();
    camera.faults().setPacketRates({.lose = 0.05});
    execute("AcquisitionStart");
    const std::jthread host([this](const std::stop_token& end) {
        while (!end.stop_requested()) {
            takePictures(1);
        }
    });
    EXPECT_NE(viewer.await("pictures came incomplete"), "");
    const auto first = std::chrono::steady_clock::now();
    EXPECT_NE(viewer.await("pictures came incomplete"), "");
    // Less than a second if the first line was late here; a picture takes 20 ms.
    EXPECT_GE(std::chrono::steady_clock::now() - first, 500ms);
}

TEST_F(StackLog, TellsOfPacketsThatCameWhenAskedForAgain)
{
    setInteger(*stream.GetParameters(), "MaximumPendingResends", 1000);
    setInteger(*stream.GetParameters(), "MaximumResendRequestRetryByPacket", 8);
    prepare();
    setInteger(*device.GetGenParameters(), "AcquisitionFrameRateRaw", 5); // packets may be late
    camera.faults().setPacketRates({.lose = 0.02});
    execute("AcquisitionStart");
    takePictures(8);
    ASSERT_TRUE(stream.Close().IsOK());
    EXPECT_THAT(viewer.await("got lost and came when asked for again"), StartsWith("127.0.0.11: "));
}

TEST_F(StackLog, TellsNothingOfAStreamInWhichAllComes)
{
    prepare();
    setInteger(*device.GetGenParameters(), "AcquisitionFrameRateRaw", 10); // a host may be late
    execute("AcquisitionStart");
    takePictures(5);
    execute("AcquisitionStop");
    ASSERT_TRUE(stream.Close().IsOK());
    EXPECT_FALSE(viewer.hasSeen("p")); // as in packets, and in pictures
}

TEST_F(StackLog, TellsThatPicturesFindNoBuffer)
{
    prepare();
    execute("AcquisitionStart");
    PvBuffer* buffer = nullptr;
    PvResult operation;
    ASSERT_TRUE(pipeline.RetrieveNextBuffer(&buffer, 20'000, &operation).IsOK());
    // Nothing is released.
    EXPECT_THAT(viewer.await("pictures found no buffer -> the computer is too slow for this rate"),
                StartsWith("127.0.0.11: "));
}

TEST_F(StackLog, TellsThatNoPacketArrives)
{
    prepare();
    camera.faults().setPacketRates({.lose = 1});
    execute("AcquisitionStart");
    EXPECT_EQ(viewer.await("no packet"),
              "127.0.0.11: no packet has come for a second since the camera was started -> a "
              "firewall must let UDP from the camera pass to this program; or does the camera wait "
              "for a trigger or a sync input?");
}

TEST_F(StackLog, TellsWhoKeepsTheCameraFromAHost)
{
    connect();
    PvDevice second;
    EXPECT_FALSE(second.Connect(PvString(kIp), PvAccessType::Exclusive).IsOK());
    EXPECT_EQ(viewer.await("controlled"),
              "127.0.0.11: the camera is controlled by another program -> end that program");
}

TEST_F(StackLog, TellsWhyTheLinkIsLost)
{
    connect(500);
    camera.faults().setSilent(true);
    EXPECT_EQ(viewer.await("link"), "127.0.0.11: the link is lost: the camera has not answered for "
                                    "500 ms -> is it switched on and plugged in?");
}

TEST_F(StackLog, TellsThatARestartedCameraKnowsItsHostNoMore)
{
    connect();
    camera.stop();
    ASSERT_FALSE(camera.start());
    EXPECT_EQ(viewer.await("control"),
              "127.0.0.11: the link is lost: the camera has taken the control away -> was this "
              "program stopped for longer than its heartbeat timeout, or the camera restarted?");
}

TEST_F(StackLog, TellsThatAnotherHostHasTakenTheControl)
{
    // So late that the other host is there before this one knows of the camera's restart.
    setInteger(*device.GetGenLink(), "HeartbeatInterval", 5000);
    connect();
    camera.stop();
    ASSERT_FALSE(camera.start());
    PvDevice other;
    ASSERT_TRUE(other.Connect(PvString(kIp), PvAccessType::Exclusive).IsOK());
    EXPECT_EQ(viewer.await("control"), "127.0.0.11: the link is lost: the camera is controlled by "
                                       "another program now -> end that program");
}

TEST_F(StackLog, TellsThatTwoAddressesClaimTheMacAddress)
{
    camera::VirtualCamera rival({.address = "127.0.0.12", .mac = camera.macText()});
    ASSERT_FALSE(rival.start());
    EXPECT_FALSE(device.Connect(PvString(camera.macText()), PvAccessType::Exclusive).IsOK());
    EXPECT_THAT(viewer.await("claim"), EndsWith(": two addresses claim the camera's MAC address -> "
                                                "give each camera a MAC address of its own"));
}

TEST_F(StackLog, TellsThatNoCameraAnswersAndWhereItWasLookedFor)
{
    EXPECT_EQ(device.Connect(PvString("02:00:00:00:00:99"), PvAccessType::Exclusive),
              PvResult::Code::NotFound);
    EXPECT_EQ(viewer.await("answers"),
              "02:00:00:00:00:99: no camera answers on lo (127.0.0.1) -> is it switched on and "
              "plugged in? A firewall must let UDP from port 3956 pass");
}

TEST_F(StackLog, TellsThatOnlySmallPacketsComeThrough)
{
    connect();
    camera.faults().clampPacketSize(1500);
    ASSERT_TRUE(device.NegotiatePacketSize(0, 1440).IsOK());
    EXPECT_EQ(viewer.await("packets of"),
              "127.0.0.11: packets of 1500 bytes come through, the interface takes 65536 -> let "
              "switch and camera take as large ones (jumbo frames)");
}

TEST_F(StackLog, TellsThatNoTestPacketComesThrough)
{
    connect();
    camera.faults().ignoreTestPackets(true);
    ASSERT_TRUE(device.NegotiatePacketSize(0, 1440).IsOK());
    EXPECT_THAT(viewer.await("no test packet came through"), StartsWith("127.0.0.11: "));
}

/// While it lives this thread is a plain user's, and the system limits its buffers.
class PlainUser
{
  public:
    PlainUser()
    {
        EXPECT_EQ(syscall(SYS_capget, &mHeader, mBefore), 0);
        const __user_cap_data_struct none[2]{{0, mBefore[0].permitted, mBefore[0].inheritable},
                                             {0, mBefore[1].permitted, mBefore[1].inheritable}};
        EXPECT_EQ(syscall(SYS_capset, &mHeader, none), 0);
    }
    ~PlainUser() { EXPECT_EQ(syscall(SYS_capset, &mHeader, mBefore), 0); }
    PlainUser(const PlainUser&) = delete;
    PlainUser& operator=(const PlainUser&) = delete;

  private:
    __user_cap_header_struct mHeader{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct mBefore[2]{};
};

TEST_F(StackLog, TellsThatTheReceiveBufferIsSmallerThanAskedForAndWhatToSet)
{
    {
        const PlainUser user;
        ASSERT_TRUE(stream.Open(kIp, 0, 0, "").IsOK());
    }
    const std::string line = viewer.await("the receive buffer has ");
    EXPECT_THAT(line, StartsWith("127.0.0.11: "));
    EXPECT_THAT(line, HasSubstr(" KiB, 32768 were asked for -> sysctl -w "
                                "net.core.rmem_max=33554432"));
}

TEST_F(StackLog, TellsThatThereIsNoStreamToBeHad)
{
    ASSERT_TRUE(stream.Open(kIp, 0, 0, "").IsOK());
    PvStream second;
    EXPECT_FALSE(second.Open(kIp, stream.GetLocalPort(), 0, "").IsOK());
    EXPECT_EQ(
        viewer.await("cannot open"),
        "127.0.0.11: cannot open a stream: the system gives no socket or thread (error 98) -> "
        "end other programs that receive");
}

class StackLogOfSinglePackets : public StackLog
{
  protected:
    StackLogOfSinglePackets() : StackLog(likeOnACable()) {}

    /// Whether a line with this in it comes with the next pictures.
    bool isToldWithPictures(const std::string& part)
    {
        bool isTold = false;
        for (int i = 0; i < 50 && !isTold; ++i) {
            takePictures(20);
            isTold = viewer.hasSeen(part);
        }
        return isTold;
    }

    void changePacketSize(std::int64_t size)
    {
        execute("AcquisitionStop");
        setInteger(*device.GetGenParameters(), "GevSCPSPacketSize", size);
        execute("AcquisitionStart");
    }
};

TEST_F(StackLogOfSinglePackets, TellsThatTheyComeByThePacketRingUntilTheyAreLonger)
{
    if (!hasPacketRings()) {
        GTEST_SKIP() << "no packet rings here";
    }
    prepare();
    execute("AcquisitionStart");
    EXPECT_TRUE(isToldWithPictures("come by the ring that is shared with the kernel now"));
    // After a pause of a second, as a busy machine makes one, there is a ring of longer packets.
    bool isTold = false;
    for (const int size : {3000, 5000, 7000, 9000}) {
        if (!isTold) {
            changePacketSize(size);
            isTold = isToldWithPictures("come by the socket again, no longer by the ring");
        }
    }
    EXPECT_TRUE(isTold);
}

} // namespace
