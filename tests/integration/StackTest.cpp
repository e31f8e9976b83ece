#include "StackHost.h"

#include "FrameRenderer.h"
#include "PvSerialPortIPEngine.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <thread>

namespace
{

using camera::FeatureId;
using namespace std::chrono_literals;

constexpr std::uint32_t kNoLimit = 0xFFFFFFFF;

/// A camera that streams to a pipeline.
class StackTest : public StackHost
{
  protected:
    using StackHost::StackHost;

    void SetUp() override
    {
        StackHost::SetUp();
        ASSERT_TRUE(device.Connect(PvString(camera.macText()), PvAccessType::Exclusive).IsOK());
        openStream(200);
    }

    /// The frame's number if it is whole and right, else -1.
    std::int64_t verifiedNumber(PvBuffer& buffer) const
    {
        const std::uint8_t* data = buffer.GetDataPointer();
        const auto number = static_cast<std::uint32_t>(data[0] | data[1] << 8 | data[2] << 16);
        std::vector<std::uint8_t> scene(640 * 480);
        camera::renderScene(camera.liveView(), 0, number, scene);
        return std::equal(scene.begin() + 16, scene.end(), data + 16) ? std::int64_t{number} : -1;
    }
};

TEST_F(StackTest, ThePipelineFillsAgainWhatWasJustReleased)
{
    setInteger(*device.GetGenParameters(), "AcquisitionFrameRateRaw", 50);
    startPipeline();
    execute("AcquisitionStart");
    std::set<PvBuffer*> used;
    for (int i = 0; i < 10; ++i) {
        PvBuffer* buffer = nullptr;
        PvResult operation;
        ASSERT_EQ(pipeline.RetrieveNextBuffer(&buffer, 5000, &operation), PvResult::Code::Ok);
        used.insert(buffer);
        ASSERT_TRUE(pipeline.ReleaseBuffer(buffer).IsOK());
    }
    EXPECT_LE(used.size(), 5U); // a host that was late has some more on their way
}

TEST_F(StackTest, EveryFrameArrivesAtFivePercentLossWithResends)
{
    setInteger(*stream.GetParameters(), "MaximumPendingResends", 1000);
    // Resent packets get lost as well; and a block is given up when the second after it begins.
    setInteger(*stream.GetParameters(), "MaximumResendRequestRetryByPacket", 8);
    setInteger(*device.GetGenParameters(), "AcquisitionFrameRateRaw", 5);
    camera.faults().setPacketRates({.lose = 0.05});
    startPipeline();
    execute("AcquisitionStart");
    std::int64_t last = -1;
    for (int i = 0; i < 25; ++i) {
        PvBuffer* buffer = nullptr;
        PvResult operation;
        ASSERT_EQ(pipeline.RetrieveNextBuffer(&buffer, 5000, &operation), PvResult::Code::Ok);
        ASSERT_EQ(operation, PvResult::Code::Ok);
        const std::int64_t number = verifiedNumber(*buffer);
        ASSERT_GT(number, last); // a camera that is late leaves frames out, but repeats none
        last = number;
        ASSERT_TRUE(pipeline.ReleaseBuffer(buffer).IsOK());
    }
    EXPECT_GT(statistic("PacketsResent"), 0);
    EXPECT_EQ(statistic("BlocksFailed"), 0);
    EXPECT_EQ(statistic("BlocksDropped"), 0);
    EXPECT_GT(camera.log().counters().resendRequests, 0U);
}

class SinglePackets : public StackTest
{
  protected:
    // Packets that are lost show as missing; a busy machine may stall meanwhile.
    SinglePackets() : StackTest(likeOnACable()) { endNoPictureByTime(); }

    void SetUp() override
    {
        StackTest::SetUp();
        // So slow that a receiver that gets little of the processor keeps up with the camera, and
        // fast enough for the ring.
        setInteger(*device.GetGenParameters(), "AcquisitionFrameRateRaw", 20);
    }

    void next(bool verify)
    {
        PvBuffer* buffer = nullptr;
        PvResult operation;
        ASSERT_EQ(pipeline.RetrieveNextBuffer(&buffer, 20'000, &operation), PvResult::Code::Ok);
        ASSERT_EQ(operation, PvResult::Code::Ok);
        if (verify) {
            EXPECT_GE(verifiedNumber(*buffer), 0);
        }
        ASSERT_TRUE(pipeline.ReleaseBuffer(buffer).IsOK());
    }

    void expectWholeFrames()
    {
        for (int i = 0; i < 25; ++i) {
            ASSERT_NO_FATAL_FAILURE(next(true));
        }
        EXPECT_EQ(statistic("PacketsMissing"), 0);
    }
};

TEST_F(SinglePackets, ComeByThePacketRing)
{
    if (!hasPacketRings()) {
        GTEST_SKIP() << "no packet rings here";
    }
    startPipeline();
    execute("AcquisitionStart");
    const auto limit = std::chrono::steady_clock::now() + 20s;
    while (statistic("PacketRingInUse") == 0 && std::chrono::steady_clock::now() < limit) {
        ASSERT_NO_FATAL_FAILURE(next(false));
    }
    EXPECT_EQ(statistic("PacketRingInUse"), 1);
    expectWholeFrames();
    EXPECT_EQ(statistic("PacketRingInUse"), 1);
}

TEST_F(SinglePackets, ComeByTheSocketIfTheHostSaysSo)
{
    ASSERT_TRUE(stream.Close().IsOK());
    setInteger(*stream.GetParameters(), "PacketRing", 0);
    openStream(200);
    startPipeline();
    execute("AcquisitionStart");
    expectWholeFrames();
    EXPECT_EQ(statistic("PacketRingInUse"), 0);
}

TEST_F(StackTest, FramesFailAtFivePercentLossWithoutResends)
{
    setInteger(*stream.GetParameters(), "PacketTimeout", 50);
    setInteger(*stream.GetParameters(), "DefaultImageTimeout", 100);
    camera.faults().setPacketRates({.lose = 0.05});
    startPipeline();
    execute("AcquisitionStart");
    int failed = 0;
    for (int i = 0; i < 20; ++i) {
        PvBuffer* buffer = nullptr;
        PvResult operation;
        ASSERT_EQ(pipeline.RetrieveNextBuffer(&buffer, 5000, &operation), PvResult::Code::Ok);
        failed += operation == PvResult::Code::ImageError ? 1 : 0;
        ASSERT_TRUE(pipeline.ReleaseBuffer(buffer).IsOK());
    }
    EXPECT_GT(failed, 10); // a frame has over 200 packets
    EXPECT_GT(statistic("PacketsMissing"), 0);
    EXPECT_EQ(camera.log().counters().resendRequests, 0U);
}

TEST_F(StackTest, ABufferThatIsTooSmallSaysSo)
{
    pipeline.SetBufferSize(1000);
    ASSERT_TRUE(pipeline.SetBufferCount(4).IsOK());
    ASSERT_TRUE(pipeline.Start().IsOK());
    execute("AcquisitionStart");
    PvBuffer* buffer = nullptr;
    PvResult operation;
    ASSERT_TRUE(pipeline.RetrieveNextBuffer(&buffer, 5000, &operation).IsOK());
    EXPECT_EQ(operation, PvResult::Code::BufferTooSmall);
}

TEST_F(StackTest, StoppingThePipelineWakesAWaitingRetrieval)
{
    setInteger(*stream.GetParameters(), "RequestTimeout", 60'000);
    startPipeline();
    std::thread stopper([this] {
        std::this_thread::sleep_for(50ms);
        (void)pipeline.Stop();
    });
    const auto start = std::chrono::steady_clock::now();
    PvBuffer* buffer = nullptr;
    PvResult operation;
    EXPECT_FALSE(pipeline.RetrieveNextBuffer(&buffer, kNoLimit, &operation).IsOK());
    EXPECT_LT(std::chrono::steady_clock::now() - start, 30s);
    EXPECT_EQ(buffer, nullptr);
    stopper.join();
    // The pipeline can be started again.
    startPipeline();
    execute("AcquisitionStart");
    EXPECT_TRUE(pipeline.RetrieveNextBuffer(&buffer, 5000, &operation).IsOK());
    EXPECT_TRUE(operation.IsOK());
}

TEST_F(StackTest, ARetrievalWithoutLimitEndsAtTheRequestTimeout)
{
    setInteger(*stream.GetParameters(), "RequestTimeout", 100);
    startPipeline();
    PvBuffer* buffer = nullptr;
    PvResult operation;
    EXPECT_EQ(pipeline.RetrieveNextBuffer(&buffer, kNoLimit, &operation), PvResult::Code::Timeout);
    EXPECT_EQ(buffer, nullptr);
}

TEST_F(StackTest, AbortedBuffersComeBackAsAborted)
{
    PvBuffer own;
    ASSERT_TRUE(own.Alloc(640 * 480).IsOK());
    ASSERT_EQ(stream.QueueBuffer(&own), PvResult::Code::Pending);
    EXPECT_EQ(stream.QueueBuffer(&own), PvResult::Code::StateError); // it is queued already
    ASSERT_TRUE(stream.AbortQueuedBuffers().IsOK());
    PvBuffer* buffer = nullptr;
    PvResult operation;
    ASSERT_TRUE(stream.RetrieveBuffer(&buffer, &operation, 1000).IsOK());
    EXPECT_EQ(buffer, &own);
    EXPECT_EQ(operation, PvResult::Code::Aborted);
}

TEST_F(StackTest, FeaturesAnswerNotConnectedAfterADisconnect)
{
    auto* width = dynamic_cast<PvGenInteger*>(device.GetGenParameters()->Get("Width"));
    ASSERT_NE(width, nullptr);
    ASSERT_TRUE(device.Disconnect().IsOK());
    EXPECT_FALSE(device.IsConnected());
    std::int64_t value = 0;
    EXPECT_EQ(width->GetValue(value), PvResult::Code::NotConnected);
    EXPECT_EQ(device.Disconnect(), PvResult::Code::NotConnected);
}

TEST_F(StackTest, AClosedStreamRefusesEverything)
{
    PvBuffer own;
    ASSERT_TRUE(own.Alloc(100).IsOK());
    ASSERT_TRUE(stream.Close().IsOK());
    EXPECT_FALSE(stream.IsOpen());
    EXPECT_EQ(stream.QueueBuffer(&own), PvResult::Code::NotConnected);
    PvBuffer* buffer = nullptr;
    PvResult operation;
    EXPECT_EQ(stream.RetrieveBuffer(&buffer, &operation), PvResult::Code::NotConnected);
    EXPECT_EQ(pipeline.Start(), PvResult::Code::NotConnected);
    EXPECT_EQ(stream.GetLocalPort(), 0);
}

TEST_F(StackTest, TheSerialPortReportsHowManyBytesTheLineTook)
{
    PvSerialPortIPEngine port;
    ASSERT_TRUE(port.Open(&device, PvIPEngineSerial::Serial0).IsOK());
    const std::vector<std::uint8_t> data(600, '.'); // three pieces of the transmit buffer
    std::uint32_t written = 0;
    EXPECT_TRUE(port.Write(data.data(), 600, written).IsOK());
    EXPECT_EQ(written, 600U);
    camera.faults().limitSerial(36);
    EXPECT_TRUE(port.Write(data.data(), 37, written).IsOK());
    EXPECT_EQ(written, 36U);
}

} // namespace
