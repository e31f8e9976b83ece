#include "UdpSocket.h"

#include "TestEndpoints.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

using namespace gige::net;
using namespace std::chrono_literals;

namespace
{

using Bytes = std::vector<std::uint8_t>;

TEST(UdpSocket, CarriesADatagramWithItsSource)
{
    auto host = UdpSocket::open(kHost);
    auto device = UdpSocket::open(kDevice);
    ASSERT_TRUE(host && device);
    const Bytes sent{1, 2, 3};
    ASSERT_TRUE(host->send(sent, device->localEndpoint()));
    Bytes buffer(16);
    const Received received = device->receive(buffer, kLong);
    ASSERT_EQ(received.status, ReceiveStatus::Data);
    EXPECT_EQ(received.source, host->localEndpoint());
    EXPECT_EQ(Bytes(buffer.begin(), buffer.begin() + 3), sent);
    EXPECT_EQ(received.size, 3U);
}

TEST(UdpSocket, ChoosesAPortOfItsOwn)
{
    const auto socket = UdpSocket::open(kHost);
    ASSERT_TRUE(socket);
    EXPECT_EQ(socket->localEndpoint().address, kHost.address);
    EXPECT_NE(socket->localEndpoint().port, 0);
}

TEST(UdpSocket, ReportsATakenAddress)
{
    const auto first = UdpSocket::open(kHost);
    ASSERT_TRUE(first);
    std::error_code error;
    EXPECT_FALSE(UdpSocket::open(first->localEndpoint(), {}, error));
    EXPECT_EQ(error, std::errc::address_in_use);
}

TEST(UdpSocket, ReportsAnAddressThatIsNotOurs)
{
    std::error_code error;
    EXPECT_FALSE(UdpSocket::open({{0xC6336401}, 0}, {}, error)); // 198.51.100.1
    EXPECT_EQ(error, std::errc::address_not_available);
}

TEST(UdpSocket, EndsAWaitAtItsTimeout)
{
    auto socket = UdpSocket::open(kHost);
    ASSERT_TRUE(socket);
    Bytes buffer(16);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(socket->receive(buffer, 20ms).status, ReceiveStatus::TimedOut);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 20ms);
    EXPECT_EQ(socket->receive(buffer, 0ms).status, ReceiveStatus::TimedOut);
}

TEST(UdpSocket, CutsADatagramAtTheBuffersEnd)
{
    auto host = UdpSocket::open(kHost);
    auto device = UdpSocket::open(kDevice);
    ASSERT_TRUE(host && device);
    ASSERT_TRUE(host->send(Bytes(100, 7), device->localEndpoint()));
    Bytes buffer(10);
    const Received received = device->receive(buffer, kLong);
    EXPECT_EQ(received.status, ReceiveStatus::Data);
    EXPECT_EQ(received.size, 10U);
    EXPECT_EQ(buffer, Bytes(10, 7));
}

TEST(UdpSocket, GoesOnAfterAnUnreachablePort)
{
    auto host = UdpSocket::open(kHost);
    ASSERT_TRUE(host);
    Endpoint gone;
    {
        const auto closed = UdpSocket::open(kDevice);
        ASSERT_TRUE(closed);
        gone = closed->localEndpoint();
    }
    EXPECT_TRUE(host->send(Bytes{1}, gone));
    Bytes buffer(16);
    EXPECT_EQ(host->receive(buffer, 20ms).status, ReceiveStatus::TimedOut);
    EXPECT_TRUE(host->send(Bytes{2}, host->localEndpoint()));
    EXPECT_EQ(host->receive(buffer, kLong).status, ReceiveStatus::Data);
}

TEST(UdpSocket, RefusesADatagramLongerThanUdpAllows)
{
    auto host = UdpSocket::open(kHost);
    ASSERT_TRUE(host);
    EXPECT_FALSE(host->send(Bytes(65508), host->localEndpoint()));
}

TEST(UdpSocket, SharesABroadcastAddress)
{
    auto first = UdpSocket::open({{0x7FFFFFFF}, 0}, {.reuseAddress = true});
    ASSERT_TRUE(first);
    const Endpoint broadcast = first->localEndpoint();
    auto second = UdpSocket::open(broadcast, {.reuseAddress = true});
    auto host = UdpSocket::open(kHost, {.broadcast = true});
    ASSERT_TRUE(second && host);
    ASSERT_TRUE(host->send(Bytes{9}, broadcast));
    Bytes buffer(4);
    for (UdpSocket* socket : {&*first, &*second}) {
        const Received received = socket->receive(buffer, kLong);
        EXPECT_EQ(received.status, ReceiveStatus::Data);
        EXPECT_EQ(received.source, host->localEndpoint());
    }
}

TEST(UdpSocket, DoesNotBroadcastUnasked)
{
    auto host = UdpSocket::open(kHost);
    ASSERT_TRUE(host);
    EXPECT_FALSE(host->send(Bytes{9}, {{0x7FFFFFFF}, 9}));
}

TEST(UdpSocket, TellsTheReceiveBufferObtained)
{
    auto socket = UdpSocket::open(kHost);
    ASSERT_TRUE(socket);
    EXPECT_EQ(socket->setReceiveBuffer(65536), 65536U);
    EXPECT_GT(socket->setReceiveBuffer(1 << 20), 65536U);
}

TEST(UdpSocket, IsMovedWithItsPort)
{
    auto first = UdpSocket::open(kHost);
    ASSERT_TRUE(first);
    const Endpoint local = first->localEndpoint();
    UdpSocket second = std::move(*first);
    EXPECT_EQ(second.localEndpoint(), local);
    first.reset();
    EXPECT_EQ(second.localEndpoint(), local);
}

TEST(Waker, EndsAWaitFromAnotherThread)
{
    auto socket = UdpSocket::open(kHost);
    ASSERT_TRUE(socket);
    Waker waker;
    ASSERT_TRUE(waker.isValid());
    std::atomic<ReceiveStatus> status{ReceiveStatus::Failed};
    std::thread waiting([&] {
        Bytes buffer(16);
        status.store(socket->receive(buffer, std::nullopt, &waker).status);
    });
    waker.wake();
    waiting.join();
    EXPECT_EQ(status, ReceiveStatus::Woken);
}

TEST(Waker, StaysSignalledUntilCleared)
{
    auto socket = UdpSocket::open(kHost);
    ASSERT_TRUE(socket);
    Waker waker;
    waker.wake();
    waker.wake();
    Bytes buffer(16);
    EXPECT_EQ(socket->receive(buffer, kLong, &waker).status, ReceiveStatus::Woken);
    EXPECT_EQ(socket->receive(buffer, kLong, &waker).status, ReceiveStatus::Woken);
    waker.clear();
    EXPECT_EQ(socket->receive(buffer, 1ms, &waker).status, ReceiveStatus::TimedOut);
}

} // namespace
