#include "PacketRing.h"
#include "BatchReceiver.h"
#include "BatchSender.h"
#include "TestEndpoints.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace gige::net;
using namespace std::chrono_literals;

namespace
{

using Bytes = std::vector<std::uint8_t>;
using Clock = std::chrono::steady_clock;

constexpr Endpoint kStranger{{0x7F000103}, 0}; // 127.0.1.3

/// Begins with its number, which no other datagram has.
Bytes numbered(std::uint32_t number, std::size_t size = 1000)
{
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i * 7 + number);
    }
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

/// A device, a host that may use the ring, and what the host got. Loopback is the test's own.
class Ring : public testing::Test
{
  protected:
    void SetUp() override
    {
        ASSERT_TRUE(mDevice && mHost);
        if (!PacketRing::open({.source = kDevice.address, .destination = mHost->localEndpoint()},
                              1500)) {
            GTEST_SKIP() << "no packet rings here";
        }
        mHost->setReceiveBuffer(4 << 20);
    }

    void send(const std::vector<Bytes>& datagrams, SendMode mode = SendMode::Single)
    {
        std::vector<PacketSlices> slices;
        for (const Bytes& datagram : datagrams) {
            slices.push_back({datagram, {}});
        }
        BatchSender sender(*mDevice, mode);
        ASSERT_EQ(sender.send(mHost->localEndpoint(), slices), slices.size());
    }

    void receiveOnce(Timeout timeout)
    {
        if (mReceiver.receive(timeout, nullptr) == ReceiveStatus::Data) {
            mReceiver.forEach([&](std::span<const std::uint8_t> bytes, const Endpoint& source) {
                mReceived.emplace_back(bytes.begin(), bytes.end());
                mSources.push_back(source);
            });
        }
    }

    void receive(std::size_t count, Clock::duration limit = kLong)
    {
        const auto end = Clock::now() + limit;
        while (mReceived.size() < count && Clock::now() < end) {
            receiveOnce(100ms);
        }
    }

    /// Sends and receives numbered datagrams until they come by the ring.
    void begin(std::size_t size = 1000)
    {
        mReceiver.useRing(RingUse::AtOnce, kDevice.address);
        const auto limit = Clock::now() + kLong;
        while (!mReceiver.isRingInUse() && Clock::now() < limit) {
            send({numbered(mNumber++, size)});
            receive(mNumber);
        }
        send({numbered(mNumber++, size)});
        receive(mNumber);
        ASSERT_TRUE(mReceiver.isRingInUse());
    }

    /// The datagrams arrive, each once, in order.
    void expectToReceive(const std::vector<Bytes>& datagrams)
    {
        mReceived.clear();
        receive(datagrams.size());
        receiveOnce(0ms);
        EXPECT_EQ(mReceived, datagrams);
    }

    std::optional<UdpSocket> mDevice = UdpSocket::open(kDevice);
    std::optional<UdpSocket> mHost = UdpSocket::open(kHost);
    BatchReceiver mReceiver{*mHost};
    std::uint32_t mNumber = 0; // datagrams sent by begin()
    std::vector<Bytes> mReceived;
    std::vector<Endpoint> mSources;
};

TEST_F(Ring, BringsWhatTheSocketWouldInTheSameOrder)
{
    begin(1472);
    std::vector<Bytes> datagrams;
    for (std::uint32_t i = 0; i < 600; ++i) {
        datagrams.push_back(numbered(i, 4 + i * 37 % 1469));
    }
    send(datagrams);
    expectToReceive(datagrams);
    EXPECT_TRUE(mReceiver.isRingInUse());
    EXPECT_EQ(mSources.back(), mDevice->localEndpoint());
}

TEST_F(Ring, TakesOverWithoutLosingOrRepeatingAny)
{
    mReceiver.useRing(RingUse::AtOnce, kDevice.address);
    std::vector<Bytes> sent;
    for (std::uint32_t i = 0; i < 20'000 && !mReceiver.isRingInUse(); ++i) {
        sent.push_back(numbered(i));
        send({sent.back()});
        if (i % 10 == 9) { // some gather meanwhile
            receiveOnce(0ms);
        }
    }
    for (std::uint32_t i = 0; i < 100; ++i) {
        sent.push_back(numbered(1'000'000 + i));
        send({sent.back()});
    }
    receive(sent.size());
    receiveOnce(0ms);
    EXPECT_TRUE(mReceiver.isRingInUse());
    EXPECT_EQ(mReceived, sent);
}

TEST_F(Ring, LeavesLongerDatagramsToTheSocket)
{
    begin();
    const std::vector<Bytes> datagrams{numbered(1, 1001), numbered(2, 9000), numbered(3, 65507)};
    send(datagrams);
    expectToReceive(datagrams);
}

TEST_F(Ring, CutsJoinedDatagramsThatFitIt)
{
    begin();
    const std::vector<Bytes> datagrams{numbered(1, 264), numbered(2, 264), numbered(3, 16)};
    send(datagrams, SendMode::Joined);
    expectToReceive(datagrams);
}

TEST_F(Ring, LeavesLongRunsOfJoinedDatagramsToTheSocket)
{
    begin();
    std::vector<Bytes> datagrams;
    for (std::uint32_t i = 0; i < 200; ++i) {
        datagrams.push_back(numbered(i, 1000));
    }
    send(datagrams, SendMode::Joined);
    mReceived.clear();
    receive(datagrams.size());
    std::ranges::sort(mReceived); // the last run may be short enough for the ring
    std::ranges::sort(datagrams);
    EXPECT_EQ(mReceived, datagrams);
}

TEST_F(Ring, LeavesOthersDatagramsToTheSocket)
{
    begin();
    auto stranger = UdpSocket::open(kStranger);
    ASSERT_TRUE(stranger && stranger->send(numbered(7), mHost->localEndpoint()));
    expectToReceive({numbered(7)});
    EXPECT_EQ(mSources.back(), stranger->localEndpoint());
}

TEST_F(Ring, TellsTheDevicesPortsApart)
{
    begin();
    auto other = UdpSocket::open(kDevice);
    ASSERT_TRUE(other && other->send(numbered(7), mHost->localEndpoint()));
    expectToReceive({numbered(7)});
    EXPECT_EQ(mSources.back(), other->localEndpoint());
}

TEST_F(Ring, IsNotUsedWhenItDoesNotSeeThePacketsAsTheyAre)
{
    ASSERT_EQ(std::system("ip link set lo mtu 600"), 0); // they come in fragments
    mReceiver.useRing(RingUse::AtOnce, kDevice.address);
    std::vector<Bytes> sent;
    for (std::uint32_t i = 0; i < 300; ++i) {
        sent.push_back(numbered(i));
        send({sent.back()});
        receive(sent.size());
        EXPECT_FALSE(mReceiver.isRingInUse());
    }
    EXPECT_EQ(mReceived, sent);
    EXPECT_EQ(std::system("ip link set lo mtu 65536"), 0);
}

TEST_F(Ring, IsGivenUpWhenPacketsBeginToComeInFragments)
{
    begin();
    ASSERT_EQ(std::system("ip link set lo mtu 600"), 0);
    mReceived.clear();
    const auto limit = Clock::now() + kLong;
    while (mReceived.empty() && Clock::now() < limit) {
        send({numbered(5)});
        receiveOnce(20ms);
    }
    EXPECT_EQ(mReceived, std::vector<Bytes>{numbered(5)});
    EXPECT_EQ(std::system("ip link set lo mtu 65536"), 0);
}

TEST_F(Ring, IsClosedInASilenceAndOpenedAgain)
{
    begin();
    const auto limit = Clock::now() + kLong;
    while (mReceiver.isRingInUse() && Clock::now() < limit) {
        receiveOnce(100ms);
    }
    EXPECT_FALSE(mReceiver.isRingInUse());
    begin();
}

TEST_F(Ring, LosesPacketsWhenItIsFullAndGoesOn)
{
    begin();
    const std::vector<Bytes> burst(1000, numbered(1));
    constexpr std::size_t kMore = kRingMemory / 1000 / 1000 + 1;
    mReceived.clear();
    for (std::size_t i = 0; i < kMore; ++i) {
        send(burst);
    }
    std::size_t before = 0;
    do {
        before = mReceived.size();
        receiveOnce(10ms);
    } while (mReceived.size() > before);
    EXPECT_GT(before, 10'000U);
    EXPECT_LT(before, kMore * 1000);
    EXPECT_TRUE(mReceiver.isRingInUse());
    send({numbered(2)});
    expectToReceive({numbered(2)});
}

TEST_F(Ring, GivesTheFlowBackToTheSocket)
{
    std::optional<BatchReceiver> receiver(*mHost);
    receiver->useRing(RingUse::AtOnce, kDevice.address);
    const auto limit = Clock::now() + kLong;
    while (!receiver->isRingInUse() && Clock::now() < limit) {
        send({numbered(mNumber++)});
        (void)receiver->receive(100ms, nullptr);
    }
    ASSERT_TRUE(receiver->isRingInUse());
    receiver.reset();
    send({numbered(9)});
    Bytes buffer(2000);
    Received received;
    do { // older ones may still be in the socket
        received = mHost->receive(buffer, 1s);
        ASSERT_EQ(received.status, ReceiveStatus::Data);
    } while (Bytes(buffer.begin(), buffer.begin() + 4) != Bytes({9, 0, 0, 0}));
    EXPECT_EQ(received.size, 1000U);
}

/// This thread, and those that it starts, without the privilege to open packet sockets.
class WithoutPrivilege
{
  public:
    WithoutPrivilege()
    {
        exchange(SYS_capget, mBefore);
        auto without = mBefore;
        without[0].effective &= ~(1U << CAP_NET_RAW);
        EXPECT_EQ(exchange(SYS_capset, without), 0);
    }
    ~WithoutPrivilege() { EXPECT_EQ(exchange(SYS_capset, mBefore), 0); }
    WithoutPrivilege(const WithoutPrivilege&) = delete;
    WithoutPrivilege& operator=(const WithoutPrivilege&) = delete;

  private:
    using Sets = std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3>;

    static long exchange(long call, Sets& sets)
    {
        __user_cap_header_struct header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
        return syscall(call, &header, sets.data());
    }

    Sets mBefore{};
};

TEST_F(Ring, IsDoneWithoutWhenThereIsNoPrivilege)
{
    const WithoutPrivilege dropped;
    mReceiver.useRing(RingUse::AtOnce, kDevice.address);
    std::vector<Bytes> sent;
    for (std::uint32_t i = 0; i < 300; ++i) {
        sent.push_back(numbered(i));
        send({sent.back()});
        receive(sent.size());
    }
    EXPECT_FALSE(mReceiver.isRingInUse());
    EXPECT_EQ(mReceived, sent);
}

TEST_F(Ring, WaitIsEndedByTheWakerAndByAPacket)
{
    begin();
    Waker waker;
    waker.wake();
    EXPECT_EQ(mReceiver.receive(kLong, &waker), ReceiveStatus::Woken);
    waker.clear();
    send({numbered(3)});
    EXPECT_EQ(mReceiver.receive(kLong, &waker), ReceiveStatus::Data);
}

} // namespace
