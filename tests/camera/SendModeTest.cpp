#include "BatchReceiver.h"
#include "RawHost.h"
#include "VirtualCamera.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace camera
{
namespace
{

using gige::net::BatchReceiver;
using gige::net::DatagramRun;
using gige::net::ReceiveStatus;
using gige::net::SendMode;
using gige::net::UdpSocket;

constexpr std::size_t kBlockPackets = 25; // leader, 32000 / 1404 data, trailer

/// One image's packets as the kernel hands them over: how many come joined, run by run.
std::vector<std::size_t> runsOfOneImage(CameraOptions options)
{
    VirtualCamera camera(std::move(options));
    EXPECT_FALSE(camera.start());
    RawHost host(camera.options().address);
    auto socket = UdpSocket::open({{0x7F000001}, 0});
    EXPECT_TRUE(socket);
    BatchReceiver receiver(*socket);
    host.openStream(1440);
    host.writeRegister(0x0D00, socket->localEndpoint().port);
    host.write(FeatureId::Width, 320);
    host.write(FeatureId::Height, 100);
    host.write(FeatureId::AcquisitionMode, 1); // one image
    host.execute(FeatureId::AcquisitionStart);

    std::vector<std::size_t> runs;
    std::size_t packets = 0;
    while (packets < kBlockPackets &&
           receiver.receive(std::chrono::seconds(5), nullptr) == ReceiveStatus::Data) {
        for (const DatagramRun& run : receiver.runs()) {
            runs.push_back((run.bytes.size() + run.segmentSize - 1) / run.segmentSize);
            packets += runs.back();
        }
    }
    EXPECT_EQ(packets, kBlockPackets);
    return runs;
}

TEST(SendMode, JoinedPacketsOfEqualLengthTravelTogether)
{
    const auto runs = runsOfOneImage({.address = "127.0.4.52", .unpaced = true});
    EXPECT_EQ(runs, (std::vector<std::size_t>{1, 23, 1}));
}

TEST(SendMode, SinglePacketsTravelEachByItself)
{
    const auto runs =
        runsOfOneImage({.address = "127.0.4.53", .unpaced = true, .send = SendMode::Single});
    EXPECT_EQ(runs, std::vector<std::size_t>(kBlockPackets, 1));
}

} // namespace
} // namespace camera
