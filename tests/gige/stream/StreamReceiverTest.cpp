#include "StreamReceiver.h"

#include "BatchSender.h"
#include "GvcpPayloads.h"
#include "TestBlocks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <list>
#include <thread>

namespace gige::stream
{

namespace
{

constexpr net::Endpoint kHost{{0x7F000301}, 0};     // 127.0.3.1
constexpr net::Endpoint kDevice{{0x7F000302}, 0};   // 127.0.3.2
constexpr net::Endpoint kStranger{{0x7F000303}, 0}; // 127.0.3.3
constexpr auto kLong = 20s;                         // never reached unless something is broken

class StreamReceiverTest : public testing::Test
{
  protected:
    void SetUp() override
    {
        open({});
        ASSERT_TRUE(receiver && device);
    }

    void open(const StreamSettings& settings, const net::Endpoint& from = kDevice)
    {
        std::error_code error;
        receiver.reset();
        receiver = StreamReceiver::open(
            {.local = kHost, .device = from.address, .settings = settings}, error);
        device = net::UdpSocket::open(from);
    }

    void queueBuffers(std::size_t count, std::size_t size = 1000)
    {
        for (std::size_t i = 0; i < count; ++i) {
            memory.emplace_back(size);
            ASSERT_TRUE(receiver->queue(buffers.emplace_back(memory.back())));
        }
    }

    void send(const TestBlock& block, const std::vector<std::uint32_t>& packetIds)
    {
        for (const std::uint32_t id : packetIds) {
            ASSERT_TRUE(device->send(block.packet(id), receiver->localEndpoint()));
        }
    }
    void send(const TestBlock& block) { send(block, block.order()); }

    void expectBlock(const TestBlock& block)
    {
        const Retrieved retrieved = receiver->completed().retrieve(kLong);
        ASSERT_EQ(retrieved.status, RetrieveStatus::Buffer);
        EXPECT_EQ(retrieved.buffer->info().result, BlockResult::Ok);
        EXPECT_EQ(retrieved.buffer->info().blockId, block.id);
        const auto bytes = retrieved.buffer->memory();
        EXPECT_EQ(Bytes(bytes.begin(), bytes.end()), block.image());
    }

    void expectResult(BlockResult result)
    {
        const Retrieved retrieved = receiver->completed().retrieve(kLong);
        ASSERT_EQ(retrieved.status, RetrieveStatus::Buffer);
        EXPECT_EQ(retrieved.buffer->info().result, result);
    }

    std::list<Bytes> memory;
    std::list<StreamBuffer> buffers;
    std::unique_ptr<StreamReceiver> receiver;
    std::optional<net::UdpSocket> device;
};

TEST_F(StreamReceiverTest, ReceivesBlocks)
{
    queueBuffers(2);
    send(TestBlock{.id = 1});
    send(TestBlock{.id = 2});
    expectBlock(TestBlock{.id = 1});
    expectBlock(TestBlock{.id = 2});
    const StreamStatistics statistics = receiver->statistics();
    EXPECT_EQ(statistics.blocksReceived, 2U);
    EXPECT_EQ(statistics.packetsReceived, 24U);
    EXPECT_EQ(statistics.bytesReceived, 2000U);
    EXPECT_EQ(statistics.packetsIgnored, 0U);
}

TEST_F(StreamReceiverTest, ReceivesJoinedPackets)
{
    const TestBlock block{.size = 300'000, .dataSize = 1464};
    queueBuffers(1, block.size);
    std::vector<Bytes> packets;
    std::vector<net::PacketSlices> slices;
    for (const std::uint32_t id : block.order()) {
        packets.push_back(block.packet(id));
    }
    for (const Bytes& packet : packets) {
        slices.push_back({packet, {}});
    }
    net::BatchSender sender(*device);
    ASSERT_EQ(sender.send(receiver->localEndpoint(), slices), slices.size());
    expectBlock(block);
}

/// Packets come in bursts, as of a paced camera; pictures come with their last one.
TEST_F(StreamReceiverTest, GathersSinglePacketsButNotPictures)
{
    constexpr std::uint64_t kBlocks = 5;
    open({.packetTimeout = kLong, .imageTimeout = kLong}); // however slowly packets are made here
    TestBlock block{.size = 60'000, .dataSize = 300};
    queueBuffers(kBlocks, block.size);
    std::vector<Clock::duration> delays;
    for (block.id = 1; block.id <= kBlocks; ++block.id) {
        std::vector<std::uint32_t> burst;
        for (const std::uint32_t id : block.order()) {
            burst.push_back(id);
            if (burst.size() == 10 || id == block.trailerId()) {
                send(block, burst);
                burst.clear();
            }
        }
        const Time sent = Clock::now();
        expectBlock(block);
        delays.push_back(Clock::now() - sent);
    }
    std::ranges::sort(delays);
    EXPECT_LT(delays[kBlocks / 2], 50ms);
    EXPECT_EQ(receiver->statistics().packetsReceived, kBlocks * 202);
}

/// However many packets it has reason to wait for.
TEST_F(StreamReceiverTest, ServesCommandsWithinABlock)
{
    const TestBlock block{.id = 1, .size = 20'000};
    queueBuffers(1, block.size);
    auto order = block.order();
    order.resize(order.size() / 2);
    send(block, order);
    receiver->abortQueued();
    expectResult(BlockResult::Aborted);
}

TEST_F(StreamReceiverTest, TellsItsEndpointAndSocketBuffer)
{
    EXPECT_EQ(receiver->localEndpoint().address, kHost.address);
    EXPECT_NE(receiver->localEndpoint().port, 0);
    EXPECT_GT(receiver->socketBufferSize(), 65536U);
}

TEST_F(StreamReceiverTest, ReportsATakenPort)
{
    std::error_code error;
    EXPECT_EQ(StreamReceiver::open({.local = receiver->localEndpoint()}, error), nullptr);
    EXPECT_EQ(error, std::errc::address_in_use);
}

TEST_F(StreamReceiverTest, DropsPacketsOfOtherAddresses)
{
    queueBuffers(1);
    auto stranger = net::UdpSocket::open(kStranger);
    ASSERT_TRUE(stranger);
    ASSERT_TRUE(stranger->send(TestBlock{.id = 7}.packet(0), receiver->localEndpoint()));
    send(TestBlock{.id = 1});
    expectBlock(TestBlock{.id = 1});
    EXPECT_EQ(receiver->statistics().packetsIgnored, 1U);
}

TEST_F(StreamReceiverTest, DropsPacketsOfOtherPortsOnceItKnowsTheDevices)
{
    queueBuffers(2);
    auto other = net::UdpSocket::open(kDevice);
    ASSERT_TRUE(other);
    send(TestBlock{.id = 1});
    expectBlock(TestBlock{.id = 1});
    ASSERT_TRUE(other->send(TestBlock{.id = 2}.packet(0), receiver->localEndpoint()));
    send(TestBlock{.id = 3});
    expectBlock(TestBlock{.id = 3});
    EXPECT_EQ(receiver->statistics().packetsIgnored, 1U);
}

TEST_F(StreamReceiverTest, MalformedPacketDoesNotTellTheDevicesPort)
{
    queueBuffers(1);
    auto other = net::UdpSocket::open(kDevice);
    ASSERT_TRUE(other);
    ASSERT_TRUE(other->send(Bytes(7), receiver->localEndpoint()));
    send(TestBlock{});
    expectBlock(TestBlock{});
    EXPECT_EQ(receiver->statistics().packetsIgnored, 1U);
}

TEST_F(StreamReceiverTest, TakesPacketsOfThePortSetOnly)
{
    queueBuffers(1);
    auto other = net::UdpSocket::open(kDevice);
    ASSERT_TRUE(other);
    receiver->setDevicePort(device->localEndpoint().port);
    ASSERT_TRUE(other->send(TestBlock{.id = 2}.packet(0), receiver->localEndpoint()));
    send(TestBlock{.id = 3});
    expectBlock(TestBlock{.id = 3});
    EXPECT_EQ(receiver->statistics().packetsIgnored, 1U);
}

TEST_F(StreamReceiverTest, RetrievalTimesOut)
{
    EXPECT_EQ(receiver->completed().retrieve(1ms).status, RetrieveStatus::TimedOut);
}

TEST_F(StreamReceiverTest, AppliesTimeLimitsWithoutPackets)
{
    open({.packetTimeout = 20ms});
    queueBuffers(1);
    send(TestBlock{}, {0, 1});
    expectResult(BlockResult::ImageError);
}

TEST_F(StreamReceiverTest, AppliesTheFirstPacketTimeoutToABufferQueuedLater)
{
    open({.firstPacketTimeout = 20ms});
    EXPECT_EQ(receiver->completed().retrieve(1ms).status, RetrieveStatus::TimedOut);
    queueBuffers(1);
    expectResult(BlockResult::TimedOut);
}

TEST_F(StreamReceiverTest, TakesNewSettings)
{
    queueBuffers(1);
    send(TestBlock{}, {0, 1});
    receiver->setSettings({.packetTimeout = 20ms, .imageTimeout = 0ms});
    expectResult(BlockResult::ImageError);
}

TEST_F(StreamReceiverTest, AbortCompletesAllBuffers)
{
    queueBuffers(3);
    send(TestBlock{.id = 1});
    expectBlock(TestBlock{.id = 1});
    send(TestBlock{.id = 2}, {0, 1});
    while (receiver->statistics().packetsReceived < 14) {
        std::this_thread::sleep_for(1ms);
    }
    receiver->abortQueued();
    expectResult(BlockResult::Aborted);
    expectResult(BlockResult::Aborted);
    EXPECT_EQ(receiver->completed().retrieve(1ms).status, RetrieveStatus::TimedOut);
    queueBuffers(1);
    send(TestBlock{.id = 3});
    expectBlock(TestBlock{.id = 3});
}

TEST_F(StreamReceiverTest, FlushLeavesTheStreamUsable)
{
    queueBuffers(1);
    receiver->flushPackets();
    send(TestBlock{});
    expectBlock(TestBlock{});
}

TEST_F(StreamReceiverTest, WakeEndsARetrievalAndTheStreamGoesOn)
{
    queueBuffers(1);
    const std::uint64_t wakes = receiver->completed().wakeCount();
    std::thread stopping([&] { receiver->completed().wakeRetrievals(); });
    EXPECT_EQ(receiver->completed().retrieve(kLong, wakes).status, RetrieveStatus::Woken);
    stopping.join();
    send(TestBlock{});
    expectBlock(TestBlock{});
}

TEST_F(StreamReceiverTest, TestPacketsBelongToNoBlock)
{
    queueBuffers(1);
    ASSERT_TRUE(device->send(Bytes(1472), receiver->localEndpoint()));
    send(TestBlock{});
    expectBlock(TestBlock{});
    EXPECT_EQ(receiver->statistics().packetsReceived, 12U);
}

TEST_F(StreamReceiverTest, AsksTheDevicesControlPortForResends)
{
    // An address of its own: the control port can be bound once only.
    constexpr net::Endpoint kResending{{0x7F000304}, 0}; // 127.0.3.4
    open({.packetTimeout = kLong, .imageTimeout = kLong, .maximumPendingResends = 100}, kResending);
    auto control = net::UdpSocket::open({kResending.address, wire::kGvcpPort});
    ASSERT_TRUE(receiver && control);
    queueBuffers(1);
    const TestBlock block{.id = 5};
    send(block, block.orderWithout({3, 4}));

    Bytes command(600);
    const net::Received received = control->receive(command, kLong);
    ASSERT_EQ(received.status, net::ReceiveStatus::Data);
    EXPECT_EQ(received.source, receiver->localEndpoint());
    const Bytes expected{0x42, 0, 0, 0x40, 0, 12, 0, 1, 0, 0, 0, 5, 0, 0, 0, 3, 0, 0, 0, 4};
    EXPECT_EQ(Bytes(command.begin(), command.begin() + 20), expected);
    EXPECT_EQ(received.size, 20U);

    send(block, {3, 4});
    expectBlock(block);
    EXPECT_EQ(receiver->statistics().packetsResent, 2U);
}

TEST_F(StreamReceiverTest, BuffersAreTheirOwnersOnceTheStreamIsGone)
{
    queueBuffers(3);
    send(TestBlock{}, {0, 1});
    open({});
    for (StreamBuffer& buffer : buffers) {
        EXPECT_TRUE(receiver->queue(buffer));
    }
    send(TestBlock{});
    expectBlock(TestBlock{});
}

TEST_F(StreamReceiverTest, ServesManyThreads)
{
    constexpr std::uint64_t kBlocks = 300;
    queueBuffers(4);
    std::atomic<bool> sending = true;
    std::thread camera([&] {
        for (std::uint64_t id = 1; id <= kBlocks; ++id) {
            send(TestBlock{.id = id});
        }
        sending = false;
    });
    std::thread meddler([&] {
        while (sending) {
            receiver->setSettings({.packetTimeout = 50ms, .imageTimeout = 60ms});
            receiver->abortQueued();
            receiver->completed().wakeRetrievals();
            (void)receiver->statistics();
            std::this_thread::sleep_for(1ms);
        }
    });
    while (sending) {
        const Retrieved retrieved = receiver->completed().retrieve(10ms);
        if (retrieved.status == RetrieveStatus::Buffer) {
            const BlockInfo info = retrieved.buffer->info();
            if (info.result == BlockResult::Ok) {
                const auto bytes = retrieved.buffer->memory();
                EXPECT_EQ(Bytes(bytes.begin(), bytes.end()), TestBlock{.id = info.blockId}.image());
            }
            EXPECT_TRUE(receiver->queue(*retrieved.buffer));
        }
    }
    camera.join();
    meddler.join();
    receiver->abortQueued();
    for (std::size_t i = 0; i < buffers.size(); ++i) {
        EXPECT_EQ(receiver->completed().retrieve(kLong).status, RetrieveStatus::Buffer);
    }
}

} // namespace

} // namespace gige::stream
