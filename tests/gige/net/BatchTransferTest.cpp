#include "BatchReceiver.h"
#include "BatchSender.h"
#include "TestEndpoints.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace gige::net;
using namespace std::chrono_literals;

namespace
{

using Bytes = std::vector<std::uint8_t>;

#ifdef _WIN32
constexpr std::size_t kLargestBatch = 32;
#else
constexpr std::size_t kLargestBatch = 200; // all of them
#endif

Bytes pattern(std::size_t size, std::size_t seed)
{
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i * 7 + seed * 31 + (i >> 8));
    }
    return bytes;
}

/// A sending and a receiving socket, and what was sent through them.
class BatchTransfer : public testing::Test
{
  protected:
    void SetUp() override
    {
        ASSERT_TRUE(mDevice && mHost);
        mHost->setReceiveBuffer(4 << 20);
    }

    /// Cuts each packet into a header of up to 8 bytes and the rest.
    static std::vector<PacketSlices> slices(const std::vector<Bytes>& packets)
    {
        std::vector<PacketSlices> result;
        for (const Bytes& packet : packets) {
            const std::span<const std::uint8_t> bytes(packet);
            const std::size_t header = std::min<std::size_t>(8, bytes.size());
            result.push_back({bytes.first(header), bytes.subspan(header)});
        }
        return result;
    }

    std::vector<Bytes> receive(std::size_t count)
    {
        BatchReceiver& receiver = mReceiver;
        std::vector<Bytes> packets;
        while (packets.size() < count && receiver.receive(kLong, nullptr) == ReceiveStatus::Data) {
            receiver.forEach([&](std::span<const std::uint8_t> bytes, const Endpoint& source) {
                EXPECT_EQ(source, mDevice->localEndpoint());
                packets.emplace_back(bytes.begin(), bytes.end());
            });
        }
        return packets;
    }

    void expectRoundTrip(const std::vector<std::size_t>& sizes, SendMode mode = SendMode::Joined)
    {
        std::vector<Bytes> packets;
        for (const std::size_t size : sizes) {
            packets.push_back(pattern(size, packets.size()));
        }
        BatchSender sender(*mDevice, mode);
        ASSERT_EQ(sender.send(mHost->localEndpoint(), slices(packets)), packets.size());
        EXPECT_EQ(receive(packets.size()), packets);
    }

    std::optional<UdpSocket> mDevice = UdpSocket::open(kDevice);
    std::optional<UdpSocket> mHost = UdpSocket::open(kHost);
    BatchReceiver mReceiver{*mHost};
};

TEST_F(BatchTransfer, KeepsContentAndOrderOfEqualPackets)
{
    expectRoundTrip(std::vector<std::size_t>(500, 1472));
}

TEST_F(BatchTransfer, KeepsTheSizesOfABlock)
{
    std::vector<std::size_t> sizes{44};
    sizes.insert(sizes.end(), 192, 1372);
    sizes.insert(sizes.end(), {264, 16});
    expectRoundTrip(sizes);
}

TEST_F(BatchTransfer, KeepsMixedSizes)
{
    expectRoundTrip(
        {1, 2, 3, 1472, 1472, 8, 8, 9, 9000, 9000, 100, 65507, 65507, 1, 30000, 30000, 30000, 5});
}

TEST_F(BatchTransfer, KeepsEmptyDatagrams)
{
    expectRoundTrip({0, 100, 100, 0, 0, 100});
}

TEST_F(BatchTransfer, KeepsPacketsThatComeSingly)
{
    for (int i = 0; i < 10; ++i) {
        expectRoundTrip(std::vector<std::size_t>(300, 1472), SendMode::Single);
    }
}

TEST_F(BatchTransfer, KeepsWhatIsLongerThanAnythingBefore)
{
    for (int i = 0; i < 100; ++i) { // the receiver has fitted itself to these
        expectRoundTrip({100}, SendMode::Single);
    }
    std::vector<std::size_t> sizes{100};
    sizes.insert(sizes.end(), 40, 9000);
    sizes.insert(sizes.end(), {65507, 44, 65507});
    expectRoundTrip(sizes, SendMode::Single);
    expectRoundTrip(std::vector<std::size_t>(300, 1472), SendMode::Joined);
}

TEST_F(BatchTransfer, TakesAllThatIsWaitingAtOnce)
{
    BatchSender sender(*mDevice, SendMode::Single);
    const std::vector<Bytes> packets(200, pattern(1472, 1));
    std::size_t received = 0;
    for (int i = 0; i < 70; ++i) { // enough for the receiver to fit itself to them
        ASSERT_EQ(sender.send(mHost->localEndpoint(), slices(packets)), packets.size());
        received = receive(packets.size()).size();
    }
    EXPECT_EQ(received, packets.size());
    ASSERT_EQ(sender.send(mHost->localEndpoint(), slices(packets)), packets.size());
    ASSERT_EQ(mReceiver.receive(kLong, nullptr), ReceiveStatus::Data);
    EXPECT_EQ(mReceiver.runs().size(), kLargestBatch);
}

TEST_F(BatchTransfer, TellsWhetherMoreMayBeWaiting)
{
    BatchSender sender(*mDevice, SendMode::Single);
    ASSERT_EQ(sender.send(mHost->localEndpoint(), slices({pattern(10, 1)})), 1U);
    ASSERT_EQ(mReceiver.receive(kLong, nullptr), ReceiveStatus::Data);
    EXPECT_FALSE(mReceiver.mayHaveMore());
    const std::vector<Bytes> packets(100, pattern(10, 1));
    ASSERT_EQ(sender.send(mHost->localEndpoint(), slices(packets)), packets.size());
    std::size_t received = 0;
    while (received < packets.size()) {
        ASSERT_EQ(mReceiver.receive(kLong, nullptr), ReceiveStatus::Data);
        received += mReceiver.runs().size();
        EXPECT_TRUE(received == packets.size() || mReceiver.mayHaveMore());
    }
}

TEST_F(BatchTransfer, StopsAtAPacketThatCannotBeSent)
{
    const Bytes fits(100);
    const Bytes tooLong(65508);
    const std::vector<PacketSlices> packets{{fits, {}}, {fits, {}}, {tooLong, {}}, {fits, {}}};
    BatchSender sender(*mDevice);
    EXPECT_EQ(sender.send(mHost->localEndpoint(), packets), 2U);
}

TEST_F(BatchTransfer, GoesOnAfterAPacketThatCannotBeSent)
{
    const Bytes tooLong(65508);
    BatchSender sender(*mDevice);
    EXPECT_EQ(sender.send(mHost->localEndpoint(), std::vector<PacketSlices>{{tooLong, {}}}), 0U);
    expectRoundTrip({1472, 1472, 8});
}

TEST_F(BatchTransfer, SendsNothingWhenThereIsNothing)
{
    BatchSender sender(*mDevice);
    EXPECT_EQ(sender.send(mHost->localEndpoint(), {}), 0U);
    EXPECT_EQ(mReceiver.receive(0ms, nullptr), ReceiveStatus::TimedOut);
    EXPECT_TRUE(mReceiver.runs().empty());
}

TEST_F(BatchTransfer, TellsSourcesApart)
{
    auto other = UdpSocket::open(kDevice);
    ASSERT_TRUE(other);
    ASSERT_TRUE(mDevice->send(Bytes{1}, mHost->localEndpoint()));
    ASSERT_TRUE(other->send(Bytes{2}, mHost->localEndpoint()));
    std::vector<std::pair<Endpoint, std::uint8_t>> received;
    while (received.size() < 2 && mReceiver.receive(kLong, nullptr) == ReceiveStatus::Data) {
        mReceiver.forEach([&](std::span<const std::uint8_t> bytes, const Endpoint& source) {
            received.emplace_back(source, bytes[0]);
        });
    }
    const std::vector<std::pair<Endpoint, std::uint8_t>> expected{{mDevice->localEndpoint(), 1},
                                                                  {other->localEndpoint(), 2}};
    EXPECT_EQ(received, expected);
}

TEST_F(BatchTransfer, WaitIsEndedByTheWaker)
{
    Waker waker;
    std::thread waking([&] { waker.wake(); });
    EXPECT_EQ(mReceiver.receive(std::nullopt, &waker), ReceiveStatus::Woken);
    waking.join();
    waker.clear();
    EXPECT_EQ(mReceiver.receive(1ms, &waker), ReceiveStatus::TimedOut);
}

TEST_F(BatchTransfer, PauseIsEndedByTheWaker)
{
    Waker waker;
    EXPECT_EQ(mReceiver.pause(100us, waker), ReceiveStatus::TimedOut);
    waker.wake();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(mReceiver.pause(kLong, waker), ReceiveStatus::Woken);
    EXPECT_LT(std::chrono::steady_clock::now() - start, kLong);
}

TEST_F(BatchTransfer, PauseLastsDespiteWaitingDatagrams)
{
    Waker waker;
    ASSERT_TRUE(mDevice->send(Bytes{1}, mHost->localEndpoint()));
    EXPECT_EQ(mReceiver.pause(100us, waker), ReceiveStatus::TimedOut);
    EXPECT_EQ(receive(1), std::vector<Bytes>{Bytes{1}});
}

} // namespace
