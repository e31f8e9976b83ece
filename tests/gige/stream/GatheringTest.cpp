#include "Gathering.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace gige::stream
{

namespace
{

using namespace std::chrono_literals;
using std::chrono::microseconds;
using std::chrono::nanoseconds;

constexpr std::size_t kPlenty = std::size_t{32} << 20; // bytes
constexpr auto kCable = 13us;                          // from packet to packet: 1 Gb/s, 1500 bytes

/// A receiving thread that gathers, with scripted packets and its own clock.
struct ScriptedReceiver {
    Gathering gathering{kPlenty};
    std::size_t packetSize = 1500;
    Time clock{1s};
    std::size_t wakes = 0;
    microseconds longestPause{0};
    nanoseconds latest{0}; // from a block's last packet to its being taken, the longest

    /// A block whose packets come at these times.
    void receiveBlock(const std::vector<Time>& arrivals)
    {
        std::size_t next = 0;
        while (next < arrivals.size()) {
            clock = std::max(clock, arrivals[next]); // waits for it
            const auto end = std::upper_bound(arrivals.begin(), arrivals.end(), clock);
            const auto taken = static_cast<std::size_t>(end - arrivals.begin()) - next;
            next += taken;
            ++wakes;
            const auto pause =
                gathering.pauseAfter({taken, taken * packetSize},
                                     static_cast<std::uint32_t>(arrivals.size() - next), clock);
            longestPause = std::max(longestPause, pause);
            if (next == arrivals.size()) {
                latest = std::max(latest, nanoseconds(clock - arrivals.back()));
            }
            clock += pause;
        }
    }

    /// Steady packets that begin after a while.
    void receiveBlock(std::size_t packets, nanoseconds gap, nanoseconds silence = 1ms)
    {
        std::vector<Time> arrivals;
        for (std::size_t i = 0; i < packets; ++i) {
            arrivals.emplace_back(clock + silence + gap * i);
        }
        receiveBlock(arrivals);
    }
};

TEST(Gathering, WakesSeldomAtASteadyStream)
{
    ScriptedReceiver receiver;
    receiver.receiveBlock(900, kCable);
    EXPECT_LE(receiver.wakes, 40U);
    EXPECT_EQ(receiver.longestPause, 800us);
}

TEST(Gathering, DelaysNoLastPacketOfASteadyStream)
{
    ScriptedReceiver receiver;
    for (const std::size_t packets : {4U, 10U, 35U, 100U, 900U, 901U, 3000U}) {
        receiver.receiveBlock(packets, kCable);
    }
    EXPECT_EQ(receiver.latest, 0ns);
}

TEST(Gathering, WakesSeldomAfterASilence)
{
    ScriptedReceiver receiver;
    receiver.receiveBlock(900, kCable);
    receiver.wakes = 0;
    receiver.receiveBlock(900, kCable, 500ms);
    EXPECT_LE(receiver.wakes, 24U);
}

TEST(Gathering, TakesLargePacketsTogetherToo)
{
    ScriptedReceiver receiver{.packetSize = 9000};
    receiver.receiveBlock(147, 78us);
    receiver.wakes = 0;
    receiver.receiveBlock(147, 78us);
    EXPECT_LE(receiver.wakes, 24U);
    EXPECT_EQ(receiver.latest, 0ns);
}

TEST(Gathering, TakesEachPacketOfASlowStreamAsItComes)
{
    ScriptedReceiver receiver;
    receiver.receiveBlock(100, 1500us);
    EXPECT_EQ(receiver.longestPause, 0us);
    EXPECT_EQ(receiver.wakes, 100U);
}

TEST(Gathering, DoesNotPauseWhileTheBlocksLengthIsNotKnown)
{
    Gathering gathering(kPlenty);
    Time now{1s};
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(gathering.pauseAfter({1, 1500}, 0, now), 0us);
        now += kCable;
    }
}

TEST(Gathering, PausesShorterWhileResendsAreOn)
{
    ScriptedReceiver receiver;
    receiver.gathering.setLimits(kLimitsWithResends);
    receiver.receiveBlock(900, kCable);
    EXPECT_EQ(receiver.longestPause, 400us);
}

TEST(Gathering, WakesStillMoreSeldomOnceTheStreamIsKnownToBeSteady)
{
    ScriptedReceiver receiver;
    for (int block = 0; block < 3; ++block) {
        receiver.wakes = 0;
        receiver.receiveBlock(900, kCable);
    }
    EXPECT_LE(receiver.wakes, 12U);
    EXPECT_EQ(receiver.longestPause, 3ms);
    EXPECT_EQ(receiver.latest, 0ns);
}

TEST(Gathering, PausesNoLongerWhileResendsAreOnHoweverSteadyTheStream)
{
    ScriptedReceiver receiver;
    receiver.gathering.setLimits(kLimitsWithResends);
    for (int block = 0; block < 5; ++block) {
        receiver.receiveBlock(900, kCable);
    }
    EXPECT_EQ(receiver.longestPause, 400us);
}

/// After a third of the block the rest comes all at once.
std::vector<Time> hurriedBlock(Time begin)
{
    std::vector<Time> arrivals;
    for (int i = 0; i < 900; ++i) {
        arrivals.push_back(begin + kCable * std::min(i, 300));
    }
    return arrivals;
}

TEST(Gathering, DelaysPicturesByLessThanAMillisecondWhenTheirEndsComeEarly)
{
    ScriptedReceiver receiver;
    for (int i = 0; i < 40; ++i) {
        receiver.receiveBlock(hurriedBlock(receiver.clock + 1ms));
    }
    EXPECT_GT(receiver.latest, 0ns);
    EXPECT_LE(receiver.latest, 800us);
}

TEST(Gathering, DelaysOnePictureOfASteadyStreamThatHurriesAndPausesAsUsualThen)
{
    ScriptedReceiver receiver;
    for (int i = 0; i < 5; ++i) {
        receiver.receiveBlock(900, kCable);
    }
    receiver.receiveBlock(hurriedBlock(receiver.clock + 1ms));
    EXPECT_LE(receiver.latest, 3ms);
    receiver.latest = 0ns;
    for (int i = 0; i < 40; ++i) {
        receiver.receiveBlock(hurriedBlock(receiver.clock + 1ms));
    }
    EXPECT_LE(receiver.latest, 800us);
}

TEST(Gathering, WakesSeldomWhenPacketsComeInBursts)
{
    ScriptedReceiver receiver;
    for (int block = 0; block < 2; ++block) {
        std::vector<Time> arrivals;
        for (int i = 0; i < 900; ++i) {
            arrivals.push_back(receiver.clock + 1ms + i / 11 * 150us);
        }
        receiver.wakes = 0;
        receiver.receiveBlock(arrivals);
    }
    EXPECT_LE(receiver.wakes, 40U);
}

TEST(Gathering, StopsPausingWhenTheStreamSlowsDown)
{
    ScriptedReceiver receiver;
    std::vector<Time> arrivals;
    for (int i = 0; i < 450; ++i) {
        arrivals.push_back(receiver.clock + kCable * i);
    }
    for (int i = 0; i < 100; ++i) {
        arrivals.push_back(arrivals[449] + 2ms * (i + 1));
    }
    receiver.receiveBlock(arrivals);
    receiver.longestPause = 0us;
    EXPECT_EQ(receiver.latest, 0ns);
    EXPECT_EQ(receiver.gathering.pauseAfter({1, 1500}, 50, receiver.clock + 2ms), 0us);
}

TEST(Gathering, TakesNoMoreThanAQuarterOfWhatTheSystemKeeps)
{
    ScriptedReceiver receiver{.gathering = Gathering(212'992)};
    receiver.receiveBlock(900, 3750ns); // 400 MB/s
    EXPECT_GE(receiver.longestPause, 60us);
    EXPECT_LE(receiver.longestPause, 134us);
}

TEST(Gathering, TakesNoMoreThanStaysInTheCache)
{
    ScriptedReceiver receiver{.packetSize = 9000};
    receiver.receiveBlock(1000, 9us); // 1 GB/s
    EXPECT_GE(receiver.longestPause, 500us);
    EXPECT_LE(receiver.longestPause, 530us);
}

TEST(Gathering, DoesNotPauseWhenTheCacheFillsFasterThanASleepEnds)
{
    ScriptedReceiver receiver{.packetSize = 9000};
    receiver.receiveBlock(10'000, 600ns); // 15 GB/s
    EXPECT_EQ(receiver.longestPause, 0us);
}

} // namespace

} // namespace gige::stream
