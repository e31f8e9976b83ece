#include "Pacer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace camera
{
namespace
{

using namespace std::chrono_literals;
using gige::net::PacketSlices;
using Time = Pacer::Clock::time_point;

constexpr std::uint64_t kGigabit = 1'000'000'000;
constexpr std::uint64_t kTenGigabit = 10'000'000'000;
constexpr Time kStart{1h};

/// Packets of one size.
class Packets
{
  public:
    /// @param datagramBytes  with the headers of IP and UDP
    explicit Packets(std::size_t datagramBytes, std::size_t count = 100'000)
        : mPayload(datagramBytes - 28), mPackets(count, PacketSlices{.payload = mPayload})
    {
    }

    [[nodiscard]] std::span<const PacketSlices> all() const { return mPackets; }

  private:
    std::vector<std::uint8_t> mPayload;
    std::vector<PacketSlices> mPackets;
};

Pacer paced(const Pace& pace)
{
    Pacer pacer;
    pacer.set(pace);
    return pacer;
}

/// When each packet goes if it is asked for at every nanosecond that matters.
std::vector<std::chrono::nanoseconds> starts(Pacer& pacer, const Packets& packets,
                                             std::size_t count)
{
    std::vector<std::chrono::nanoseconds> times;
    Time now = kStart;
    while (times.size() < count) {
        times.insert(times.end(), pacer.take(now, packets.all().subspan(times.size(), 1)),
                     now - kStart);
        now += 1ns;
    }
    return times;
}

TEST(EthernetCable, CarriesMoreThanTheDatagram)
{
    EXPECT_EQ(bytesOnCable(1500), 1538U);
    EXPECT_EQ(bytesOnCable(9000), 9038U);
    EXPECT_EQ(bytesOnCable(44), 84U) << "a trailer is padded";
    EXPECT_EQ(timeOnCable(1500, kGigabit), 12'304ns);
    EXPECT_EQ(timeOnCable(1500, kTenGigabit), 1'231ns) << "rounded up";
    EXPECT_EQ(timeOnCable(9000, kTenGigabit), 7'231ns);
}

TEST(Pacer, LetsAllGoWithoutLimits)
{
    Pacer pacer;
    const Packets packets(1500, 2000);
    EXPECT_EQ(pacer.take(kStart, packets.all()), 1024U);
    EXPECT_EQ(pacer.take(kStart, packets.all().subspan(1024)), 976U);
    EXPECT_EQ(pacer.take(kStart, {}), 0U);
}

TEST(Pacer, GivesEachPacketItsTimeOnTheCable)
{
    Pacer pacer = paced({.linkRate = kGigabit});
    EXPECT_EQ(starts(pacer, Packets(1500), 4),
              (std::vector<std::chrono::nanoseconds>{0ns, 12'304ns, 24'608ns, 36'912ns}));
}

TEST(Pacer, KeepsTheDelayBetweenPackets)
{
    Pacer pacer = paced({.delay = 10us});
    EXPECT_EQ(starts(pacer, Packets(1500), 3),
              (std::vector<std::chrono::nanoseconds>{0us, 10us, 20us}));
}

TEST(Pacer, TakesTheSlowestOfDelayCeilingAndCable)
{
    const Packets packets(1500);
    Pacer byCable = paced({.delay = 12us, .bytesPerSecond = 125'000'000, .linkRate = kGigabit});
    EXPECT_EQ(starts(byCable, packets, 2).back(), 12'304ns);
    Pacer byDelay = paced({.delay = 13us, .bytesPerSecond = 125'000'000, .linkRate = kGigabit});
    EXPECT_EQ(starts(byDelay, packets, 2).back(), 13us);
    Pacer byCeiling = paced({.delay = 13us, .bytesPerSecond = 100'000'000, .linkRate = kGigabit});
    EXPECT_EQ(starts(byCeiling, packets, 2).back(), 15us);
}

TEST(Pacer, SendsTogetherWhatBecameDueDuringASleep)
{
    Pacer pacer = paced({.delay = 10us});
    const Packets packets(1500);
    EXPECT_EQ(pacer.take(kStart, packets.all()), 1U);
    EXPECT_EQ(pacer.take(kStart + 9us, packets.all()), 0U);
    EXPECT_EQ(pacer.take(kStart + 109us, packets.all()), 10U);
    EXPECT_EQ(pacer.take(kStart + 110us, packets.all()), 1U) << "the sleep was made up for";
}

TEST(Pacer, DoesNotMakeUpForALongStall)
{
    Pacer pacer = paced({.delay = 10us});
    const Packets packets(1500);
    EXPECT_EQ(pacer.take(kStart, packets.all()), 1U);
    EXPECT_EQ(pacer.take(kStart + 1s, packets.all()), 1U);
    EXPECT_EQ(pacer.take(kStart + 1s + 10us, packets.all()), 1U);
}

TEST(Pacer, StartsWithoutABurstAfterAnIdleTime)
{
    Pacer pacer = paced({.linkRate = kGigabit});
    const Packets packets(1500);
    EXPECT_EQ(pacer.take(kStart, packets.all()), 1U);
    EXPECT_EQ(pacer.take(kStart + 3ms, packets.all()), 1U);
}

TEST(Pacer, ForgetsNoPacketOfABlockThatHasJustEnded)
{
    Pacer pacer = paced({.delay = 100us});
    const Packets packets(1500);
    EXPECT_EQ(pacer.take(kStart, packets.all().first(1)), 1U);
    EXPECT_EQ(pacer.take(kStart + 99us, packets.all()), 0U) << "the next block's first packet";
}

struct Second {
    std::size_t packets = 0;
    std::size_t wakeUps = 0;
    std::size_t largest = 0; // packets that went together
};

/// One second of sending when every sleep takes `late` longer than it should.
Second oneSecond(const Pace& pace, std::size_t datagramBytes, std::chrono::microseconds late)
{
    Pacer pacer = paced(pace);
    const Packets packets(datagramBytes, 2'000'000);
    Second second;
    for (Time now = kStart; now < kStart + 1s; now = pacer.wakeUp(now) + late) {
        std::size_t together = 0;
        while (const std::size_t count =
                   pacer.take(now, packets.all().subspan(second.packets, 1))) {
            second.packets += count;
            together += count;
        }
        second.largest = std::max(second.largest, together);
        ++second.wakeUps;
    }
    return second;
}

TEST(Pacer, FillsAGigabitCableInSmallBatches)
{
    const Second second = oneSecond({.linkRate = kGigabit}, 1500, 60us); // a usual timer slack
    EXPECT_NEAR(static_cast<double>(second.packets), 1e9 / 12'304, 20);
    EXPECT_LE(second.largest, 10U);
    EXPECT_LE(second.wakeUps, 20'000U);
}

TEST(Pacer, FillsATenGigabitCable)
{
    const Second second = oneSecond({.linkRate = kTenGigabit}, 1500, 60us);
    EXPECT_NEAR(static_cast<double>(second.packets), 1e9 / 1'231, 200);
    EXPECT_LE(second.largest, 110U); // 165 kB: what ports of a switch hold
}

TEST(Pacer, WakesUpForEachPacketThatHasTimeForASleep)
{
    const Second second = oneSecond({.linkRate = kGigabit}, 9000, 0us);
    EXPECT_EQ(second.largest, 1U);
    EXPECT_NEAR(static_cast<double>(second.packets), 1e9 / 72'304, 1);
}

TEST(Pacer, SleepsLongEnoughToBeCheap)
{
    const Second second = oneSecond({.linkRate = kTenGigabit}, 1500, 0us); // sleeps are exact
    EXPECT_LE(second.wakeUps, 20'000U);
    EXPECT_NEAR(static_cast<double>(second.packets), 1e9 / 1'231, 50);
}

} // namespace
} // namespace camera
