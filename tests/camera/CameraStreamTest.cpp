#include "FrameRenderer.h"
#include "RawHost.h"
#include "VirtualCamera.h"

#include <gtest/gtest.h>

namespace camera
{
namespace
{

using namespace std::chrono_literals;

/// A camera with a small image that streams to a host.
struct LiveSetup {
    explicit LiveSetup(CameraOptions options, std::uint32_t packetSize = 1440)
        : camera(std::move(options))
    {
        EXPECT_FALSE(camera.start());
        host.openStream(packetSize);
        host.write(FeatureId::Width, 320);
        host.write(FeatureId::Height, 100);
    }
    explicit LiveSetup(const std::string& address) : LiveSetup(CameraOptions{.address = address}) {}

    VirtualCamera camera;
    RawHost host{camera.options().address};
};

/// What a live image must be: its header tells which one it is.
std::vector<std::uint8_t> truth(const VirtualCamera& camera, const std::vector<std::uint8_t>& image)
{
    std::uint64_t time = 0;
    for (std::size_t i = 14; i >= 8; --i) {
        time = (time << 8) | image[i];
    }
    const FrameStamp stamp{.sequence = image[6],
                           .number = std::uint32_t{image[0]} | (std::uint32_t{image[1]} << 8),
                           .time = time,
                           .flags = image[7],
                           .last = image[15] != 0};
    return renderFrame(camera.liveView(), stamp);
}

TEST(CameraStream, SendsLiveImagesThatAreTrueToEveryPixel)
{
    LiveSetup setup("127.0.4.40");
    ASSERT_EQ(setup.host.execute(FeatureId::AcquisitionStart), 0U);
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), 1U);
    for (std::uint16_t id = 1; id <= 5; ++id) {
        const ReceivedBlock block = setup.host.receiveBlock();
        ASSERT_TRUE(block.hasTrailer);
        EXPECT_EQ(block.blockId, id);
        EXPECT_EQ(block.width, 320U);
        EXPECT_EQ(block.height, 100U);
        EXPECT_EQ(block.pixelFormat, 0x01080001U);
        EXPECT_EQ(block.packets.size(), 25U); // leader, 32000 / 1404 data, trailer
        EXPECT_EQ(block.image, truth(setup.camera, block.image));
    }
    ASSERT_EQ(setup.host.execute(FeatureId::AcquisitionStop), 0U);
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), 0U);
}

TEST(CameraStream, CutsBlocksIntoPacketsAsTheStandardSays)
{
    LiveSetup setup("127.0.4.41");
    setup.host.execute(FeatureId::AcquisitionStart);
    ReceivedBlock block = setup.host.receiveBlock();
    ASSERT_TRUE(block.hasTrailer);
    Datagram leader = block.packets[0];
    ASSERT_EQ(leader.size(), 44U);
    EXPECT_EQ(toHex({leader.begin(), leader.begin() + 12}), "000000010100000000000001");
    EXPECT_EQ(toHex({leader.begin() + 20, leader.end()}), "01080001"
                                                          "00000140"
                                                          "00000064"
                                                          "00000000"
                                                          "00000000"
                                                          "00000000");
    EXPECT_EQ(block.packets[1].size(), 1412U);
    EXPECT_EQ(toHex({block.packets[1].begin(), block.packets[1].begin() + 8}), "0000000103000001");
    EXPECT_EQ(block.packets[23].size(), 8U + 32000 - 22 * 1404);
    EXPECT_EQ(toHex(block.packets[24]), "0000000102000018"
                                        "0000000100000064");
}

TEST(CameraStream, SendsNothingWithoutADestination)
{
    LiveSetup setup("127.0.4.42");
    setup.host.writeRegister(0x0D00, 0);
    setup.host.execute(FeatureId::AcquisitionStart);
    EXPECT_TRUE(setup.host.receivePacket(200ms).empty());
    EXPECT_EQ(setup.camera.log().counters().blocks, 0U);
}

TEST(CameraStream, FiresATestPacketOfTheAskedSize)
{
    LiveSetup setup("127.0.4.43");
    setup.host.writeRegister(0x0D04, 0xC0000000 | 4000);
    EXPECT_EQ(setup.host.receivePacket().size(), 4000U - 28);
    EXPECT_EQ(setup.host.readRegister(0x0D04), 0x40000000U | 4000U);
    setup.camera.faults().ignoreTestPackets(true);
    setup.host.writeRegister(0x0D04, 0xC0000000 | 4000);
    EXPECT_TRUE(setup.host.receivePacket(200ms).empty());
}

TEST(CameraStream, ResendsWhatItSent)
{
    LiveSetup setup("127.0.4.44");
    setup.host.write(FeatureId::AcquisitionMode, 1); // one image
    setup.host.execute(FeatureId::AcquisitionStart);
    ReceivedBlock block = setup.host.receiveBlock();
    ASSERT_TRUE(block.hasTrailer);
    setup.host.askResend(block.blockId, 2, 3);
    for (const std::uint32_t id : {2U, 3U}) {
        Datagram again = setup.host.receivePacket();
        ASSERT_EQ(again.size(), 1412U);
        EXPECT_EQ(toHex({again.begin(), again.begin() + 2}), "0100"); // a resent packet
        again[0] = 0;
        EXPECT_EQ(again, block.packets[id]);
    }
    setup.host.askResend(block.blockId, 24, 0xFFFFFF); // to the end
    EXPECT_EQ(setup.host.receivePacket().size(), 16U);
    EXPECT_TRUE(setup.host.receivePacket(100ms).empty());
}

TEST(CameraStream, SaysWhenABlockIsGone)
{
    LiveSetup setup("127.0.4.45");
    setup.host.askResend(777, 5, 5);
    EXPECT_EQ(toHex(setup.host.receivePacket()), "800C030903000005");
}

TEST(CameraStream, UsesLongBlockIdsWhenAsked)
{
    LiveSetup setup("127.0.4.46");
    setup.host.writeRegister(0x0960, 0x40000000);
    setup.host.execute(FeatureId::AcquisitionStart);
    const Datagram leader = setup.host.receivePacket();
    ASSERT_EQ(leader.size(), 56U);
    EXPECT_EQ(toHex({leader.begin(), leader.begin() + 20}), "0000000081000000"
                                                            "0000000000000001"
                                                            "00000000");
    EXPECT_EQ(setup.host.receivePacket().size(), 1440U - 28);
}

TEST(CameraStream, ShowsTheTriggerWindowInLiveImages)
{
    LiveSetup setup("127.0.4.51");
    setup.host.write(FeatureId::IBOffsetX, 100);
    setup.host.write(FeatureId::IBOffsetY, 20);
    setup.host.write(FeatureId::IBWindowVisible, 1);
    setup.host.execute(FeatureId::AcquisitionStart);
    const ReceivedBlock block = setup.host.receiveBlock();
    ASSERT_TRUE(block.hasTrailer);
    EXPECT_EQ(block.image.at(std::size_t{20} * 320 + 150), 255);
    EXPECT_EQ(block.image, truth(setup.camera, block.image));
}

TEST(CameraStream, KeepsTheFrameRate)
{
    LiveSetup setup("127.0.4.47");
    setup.host.write(FeatureId::AcquisitionFrameRateRaw, 100);
    setup.host.execute(FeatureId::AcquisitionStart);
    const auto number = [&setup] {
        const ReceivedBlock block = setup.host.receiveBlock();
        return block.image[0] | (block.image[1] << 8);
    };
    const auto start = std::chrono::steady_clock::now();
    const int first = number();
    int last = first;
    for (int i = 0; i < 20; ++i) {
        last = number();
    }
    const auto passed = std::chrono::steady_clock::now() - start;
    // A busy machine leaves frames out, but the numbers still tell the time.
    EXPECT_GE(last - first, 20);
    EXPECT_GE(passed + 30ms, (last - first) * 10ms);
}

TEST(CameraStream, LocksTheGeometryWhileImagesAreTaken)
{
    LiveSetup setup("127.0.4.48");
    setup.host.execute(FeatureId::AcquisitionStart);
    EXPECT_EQ(setup.host.readRegister(kImagingRegister), 1U);
    EXPECT_EQ(setup.host.write(FeatureId::Width, 640), 0x8006U);
    EXPECT_EQ(setup.host.write(FeatureId::ExposureTimeRaw, 100), 0U);
    setup.host.execute(FeatureId::AcquisitionStop);
    EXPECT_EQ(setup.host.write(FeatureId::Width, 640), 0U);
}

TEST(CameraStream, UnpacedImagesFollowEachOtherWithoutGap)
{
    LiveSetup setup(CameraOptions{.address = "127.0.4.49", .unpaced = true});
    setup.host.write(FeatureId::AcquisitionFrameRateRaw, 1);
    setup.host.execute(FeatureId::AcquisitionStart);
    const ReceivedBlock first = setup.host.receiveBlock();
    const ReceivedBlock second = setup.host.receiveBlock();
    ASSERT_TRUE(second.hasTrailer);
    EXPECT_EQ(first.image[0] + 1, second.image[0]);
}

TEST(CameraStream, SendsBayerPixelsFromAColourSensor)
{
    LiveSetup setup(CameraOptions{.address = "127.0.4.50", .colour = true});
    setup.host.execute(FeatureId::AcquisitionStart);
    const ReceivedBlock block = setup.host.receiveBlock();
    EXPECT_EQ(block.pixelFormat, 0x01080009U);
    EXPECT_EQ(block.image, truth(setup.camera, block.image));
}

/// From the command for one image of 25 packets to its last packet.
std::chrono::nanoseconds timeOfOneImage(RawHost& host)
{
    host.write(FeatureId::AcquisitionMode, 1); // one image
    const auto start = std::chrono::steady_clock::now();
    host.execute(FeatureId::AcquisitionStart);
    EXPECT_TRUE(host.receiveBlock().hasTrailer);
    return std::chrono::steady_clock::now() - start;
}

TEST(CameraStream, KeepsThePacketDelayInTime)
{
    LiveSetup setup("127.0.4.54");
    setup.host.write(FeatureId::GevSCPD, 1'000'000); // ns
    EXPECT_GE(timeOfOneImage(setup.host), 24ms);
}

TEST(CameraStream, TakesAsLongAsItsCableDoes)
{
    LiveSetup setup(
        CameraOptions{.address = "127.0.4.55", .unpaced = true, .linkRate = 10'000'000});
    // On the cable, before the trailer: a leader of 110 bytes, 22 data packets of 1478, one of
    // 1186.
    EXPECT_GE(timeOfOneImage(setup.host), 27'049us);
}

TEST(CameraStream, KeepsTheSlowerOfCableAndPacketDelay)
{
    LiveSetup setup(CameraOptions{.address = "127.0.4.56", .linkRate = 10'000'000});
    setup.host.write(FeatureId::GevSCPD, 2'000'000); // ns; the cable needs 1.2 ms
    EXPECT_GE(timeOfOneImage(setup.host), 48ms);
}

TEST(CameraStream, LeavesOutLiveImagesForWhichTheCableIsTooSlow)
{
    LiveSetup setup(CameraOptions{.address = "127.0.4.57", .linkRate = 20'000'000});
    setup.host.write(FeatureId::AcquisitionFrameRateRaw, 1000); // the cable takes 14 ms of each
    setup.host.execute(FeatureId::AcquisitionStart);
    const auto number = [](const ReceivedBlock& block) {
        EXPECT_TRUE(block.hasTrailer);
        return block.image.at(0) | (block.image.at(1) << 8);
    };
    const int first = number(setup.host.receiveBlock());
    int last = first;
    for (int i = 0; i < 5; ++i) {
        last = number(setup.host.receiveBlock());
    }
    setup.host.execute(FeatureId::AcquisitionStop);
    EXPECT_GE(last - first, 5 * 12);
    const CameraCounters counters = setup.camera.log().counters();
    EXPECT_GE(counters.leftOut, 5U * 11);
    EXPECT_GE(counters.blocks, 5U);
}

TEST(CameraStream, ResendsNoFasterThanTheCable)
{
    LiveSetup setup(
        CameraOptions{.address = "127.0.4.58", .unpaced = true, .linkRate = 10'000'000});
    setup.host.write(FeatureId::AcquisitionMode, 1); // one image
    setup.host.execute(FeatureId::AcquisitionStart);
    const ReceivedBlock block = setup.host.receiveBlock();
    ASSERT_TRUE(block.hasTrailer);
    const auto start = std::chrono::steady_clock::now();
    setup.host.askResend(block.blockId, 0, 0xFFFFFF);
    EXPECT_EQ(setup.host.receiveBlock().image, block.image);
    // What is left of the cable's time for the image counts, up to the 2 ms that a pacer makes up
    // for.
    EXPECT_GE(std::chrono::steady_clock::now() - start, 25ms);
}

TEST(CameraStream, TellsTheRateOfItsCable)
{
    LiveSetup unlimited("127.0.4.59");
    EXPECT_EQ(unlimited.host.readRegister(0x0670), 10'000U); // Mbit/s
    LiveSetup setup(CameraOptions{.address = "127.0.4.60", .linkRate = 1'000'000'000});
    EXPECT_EQ(setup.host.readRegister(0x0670), 1000U);
}

} // namespace
} // namespace camera
