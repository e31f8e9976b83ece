#include "RawHost.h"
#include "VirtualCamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace camera
{
namespace
{

using namespace std::chrono_literals;
using gige::wire::GvcpStatus;
using testing::ElementsAre;

struct FaultSetup {
    explicit FaultSetup(const std::string& address) : camera(CameraOptions{.address = address})
    {
        EXPECT_FALSE(camera.start());
        host.openStream();
        host.write(FeatureId::Width, 64);
        host.write(FeatureId::Height, 64); // 4096 bytes: three data packets, trailer 4
        host.write(FeatureId::AcquisitionMode, 1);
    }
    ReceivedBlock single(std::chrono::milliseconds patience = 3000ms, std::size_t mostPackets = 10)
    {
        host.execute(FeatureId::AcquisitionStart);
        return host.receiveBlock(patience, mostPackets);
    }

    VirtualCamera camera;
    RawHost host{camera.options().address};
};

TEST(CameraFault, LosesAPacketByPosition)
{
    FaultSetup setup("127.0.4.60");
    setup.camera.faults().add(PacketFault{.packetId = 2});
    EXPECT_THAT(setup.single().order, ElementsAre(0, 1, 3, 4));
    EXPECT_THAT(setup.single().order, ElementsAre(0, 1, 2, 3, 4));
}

TEST(CameraFault, RepeatsAndReordersPackets)
{
    FaultSetup setup("127.0.4.61");
    setup.camera.faults().add(PacketFault{.kind = PacketFaultKind::Repeat, .packetId = 3});
    setup.camera.faults().add(PacketFault{.kind = PacketFaultKind::Reorder, .packetId = 1});
    setup.host.write(FeatureId::Height, 128); // six data packets
    EXPECT_THAT(setup.single().order, ElementsAre(0, 2, 3, 3, 4, 1, 5, 6, 7));
}

TEST(CameraFault, LosesAWholeFrame)
{
    FaultSetup setup("127.0.4.62");
    setup.camera.faults().add(FrameFault{.kind = FrameFaultKind::Lose});
    EXPECT_TRUE(setup.single(200ms).order.empty());
    EXPECT_EQ(setup.single().blockId, 2U);
}

TEST(CameraFault, StopsInTheMiddleOfAFrame)
{
    FaultSetup setup("127.0.4.63");
    setup.camera.faults().add(FrameFault{.kind = FrameFaultKind::StopMiddle, .amount = 2});
    EXPECT_THAT(setup.single(3000ms, 2).order, ElementsAre(0, 1));
    EXPECT_THAT(setup.single().order, ElementsAre(0, 1, 2, 3, 4)); // nothing of the first before
}

TEST(CameraFault, LetsACounterJump)
{
    FaultSetup setup("127.0.4.64");
    setup.camera.faults().add(FrameFault{.kind = FrameFaultKind::JumpCounter, .amount = 9});
    EXPECT_EQ(setup.single().image[4], 9U);
}

TEST(CameraFault, RejectsWritesWithTheWantedStatus)
{
    FaultSetup setup("127.0.4.65");
    setup.camera.faults().add(
        AccessFault{.feature = FeatureId::GainRaw, .status = GvcpStatus::Busy, .times = 2});
    EXPECT_EQ(setup.host.write(FeatureId::GainRaw, 1), 0x8007U);
    EXPECT_EQ(setup.host.write(FeatureId::GainRaw, 2), 0x8007U);
    EXPECT_EQ(setup.host.write(FeatureId::GainRaw, 3), 0U);
    EXPECT_THAT(setup.camera.log().valuesWritten(FeatureId::GainRaw), ElementsAre(1, 2, 3));
    EXPECT_EQ(setup.host.read(FeatureId::GainRaw), 3U);
}

TEST(CameraFault, CorruptsAReadValue)
{
    FaultSetup setup("127.0.4.66");
    setup.camera.faults().add(AccessFault{
        .feature = FeatureId::CameraState, .kind = AccessFaultKind::Corrupt, .value = 77});
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), 77U);
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), 0U);
}

TEST(CameraFault, LosesDoublesAndDelaysAnswers)
{
    FaultSetup setup("127.0.4.67");
    Faults& faults = setup.camera.faults();
    const auto gain = registerOf(featureOf(FeatureId::GainRaw));
    const Datagram read = fromHex("42 01 0080 0004 7777 " + toHex({0, 1, 0, std::uint8_t(gain)}));
    faults.add(AccessFault{.feature = FeatureId::GainRaw, .kind = AccessFaultKind::DropAck});
    EXPECT_TRUE(setup.host.ask(read, 200ms).empty());
    EXPECT_EQ(toHex(setup.host.ask(read)), "000000810004777700000000"); // the repetition
    faults.add(AccessFault{.feature = FeatureId::GainRaw, .kind = AccessFaultKind::DoubleAck});
    EXPECT_EQ(setup.host.read(FeatureId::GainRaw), 0U);
    EXPECT_EQ(setup.host.listen().size(), 12U);
    faults.add(AccessFault{
        .feature = FeatureId::GainRaw, .kind = AccessFaultKind::LateAck, .delay = 300ms});
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(setup.host.read(FeatureId::GainRaw), 0U);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 300ms);
}

TEST(CameraFault, AnnouncesASlowExecutionToAHostThatAskedForIt)
{
    FaultSetup setup("127.0.4.68");
    setup.host.writeRegister(0x0954, 2);
    setup.camera.faults().add(
        AccessFault{.feature = FeatureId::GainRaw, .kind = AccessFaultKind::Delay, .delay = 300ms});
    const auto gain = registerOf(featureOf(FeatureId::GainRaw));
    setup.host.send(
        fromHex("42 01 0082 0008 5555 " + toHex({0, 1, 0, std::uint8_t(gain)}) + "00000004"));
    EXPECT_EQ(toHex(setup.host.listen()), "0000008900045555"
                                          "00000190"); // 400 ms
    EXPECT_EQ(toHex(setup.host.listen()), "0000008300045555"
                                          "00000001");
}

TEST(CameraFault, FallsSilentAndComesBack)
{
    FaultSetup setup("127.0.4.69");
    setup.camera.faults().setSilent(true);
    EXPECT_TRUE(setup.host.ask(fromHex("42 01 0002 0000 0001"), 200ms).empty());
    setup.camera.faults().setSilent(false);
    EXPECT_EQ(setup.host.ask(fromHex("42 01 0002 0000 0001")).size(), 256U);
}

TEST(CameraFault, ClampsThePacketSize)
{
    FaultSetup setup("127.0.4.70");
    setup.camera.faults().clampPacketSize(1000);
    setup.host.writeRegister(0x0D04, 1440);
    EXPECT_EQ(setup.host.readRegister(0x0D04), 1000U);
}

TEST(CameraFault, TakesAFeatureAway)
{
    FaultSetup setup("127.0.4.71");
    setup.camera.faults().setAvailable(FeatureId::DecimationXY, false);
    EXPECT_EQ(setup.host.readRegister(availabilityRegisterOf(FeatureId::DecimationXY)), 0U);
    EXPECT_EQ(setup.host.write(FeatureId::DecimationXY, 1), 0x8006U);
}

TEST(CameraFault, TheSerialLineTakesLess)
{
    FaultSetup setup("127.0.4.72");
    EXPECT_EQ(setup.host.writeSerial(":GW07b0000003E7:GW07a800000000:GW07f8"), 37U);
    setup.camera.faults().limitSerial(36);
    EXPECT_EQ(setup.host.writeSerial(":GW07b0000003E7:GW07a800000000:GW07f8"), 36U);
}

TEST(CameraFault, IsBusyWithItsFlashCard)
{
    VirtualCamera camera({.address = "127.0.4.73", .flashBusy = 10min});
    ASSERT_FALSE(camera.start());
    RawHost host("127.0.4.73");
    EXPECT_EQ(host.read(FeatureId::CameraState), 3U);
    host.takeControl();
    EXPECT_EQ(host.execute(FeatureId::AcquisitionStart), 0x8006U);
    EXPECT_EQ(host.execute(FeatureId::FlashCardWriteStop), 0U);
    EXPECT_EQ(host.read(FeatureId::CameraState), 0U);
}

} // namespace
} // namespace camera
