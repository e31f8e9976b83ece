#include "BroadcastQuery.h"

#include "ControlFixture.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace gige::control
{
namespace
{

using std::chrono::milliseconds;

const wire::Bytes kDiscovery{0x42, 0x11, 0, 2, 0, 0, 0xFF, 0xFF};

TEST(BroadcastQuery, TellsWhoSentWhatItHeard)
{
    const FakeDevice device("127.0.2.15");
    BroadcastQuery query(kDiscovery);
    query.ask(loopback());
    const auto heard = query.next(systemClock().now() + milliseconds(20'000));
    ASSERT_TRUE(heard);
    EXPECT_EQ(heard->source, (net::Endpoint{.address = {0x7F00020F}, .port = 3956}));
    EXPECT_EQ(heard->nic.name, "lo");
}

TEST(BroadcastQuery, KeepsNoMoreThanItsLimitForWhoeverDoesNotTakeIt)
{
    FakeDevice device("127.0.2.15");
    std::atomic<bool> done{false};
    device.setScript([&](const FakeCommand& command) {
        if (command.code != kDiscoveryCommand) {
            done = true; // the one before has been answered
            return std::vector<FakeAnswer>{};
        }
        return std::vector<FakeAnswer>(5000, FakeAnswer{command.ack});
    });
    BroadcastQuery query(kDiscovery);
    query.ask(loopback());
    ASSERT_TRUE(device.waitForCount(kDiscoveryCommand, 1));
    auto last = net::UdpSocket::open({.address = kHost});
    last->send(Bytes{0x42, 0x01, 0, 0x80, 0, 4, 0, 1, 0, 0, 0, 0}, {{0x7F00020F}, 3956});
    for (int i = 0; i < 2000 && !done; ++i) {
        std::this_thread::sleep_for(milliseconds(5));
    }
    ASSERT_TRUE(done);
    std::size_t kept = 0;
    while (query.next(systemClock().now() + milliseconds(50))) {
        ++kept;
    }
    EXPECT_GT(kept, 0U);
    EXPECT_LE(kept, 2000U) << "1024, and what waited in the socket behind them";
}

} // namespace
} // namespace gige::control
