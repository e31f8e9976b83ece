#include "RingTrial.h"

#include <gtest/gtest.h>

using namespace gige::net;
using namespace std::chrono_literals;

namespace
{

constexpr RingTrial::Clock::time_point kStart{100s};

/// Has it seen enough single packets of 1472 bytes?
bool isConvinced(RingTrial& trial, std::size_t receives, std::size_t each,
                 RingTrial::Clock::duration time, RingTrial::Clock::time_point start = kStart)
{
    bool convinced = false;
    for (std::size_t i = 0; i < receives && !convinced; ++i) {
        const auto now = start + time * i / receives;
        convinced = trial.noteReceived(each, 0, 1472, now);
    }
    return convinced;
}

TEST(RingTrial, IsWorthwhileAtASteadyStreamOfSinglePackets)
{
    RingTrial trial(RingUse::WhenItPays);
    EXPECT_FALSE(isConvinced(trial, 99, 10, 990ms));
    EXPECT_TRUE(trial.noteReceived(10, 0, 1472, kStart + 995ms));
    EXPECT_EQ(trial.longest(), 1472U);
}

TEST(RingTrial, IsNotWorthwhileAtAFewPackets)
{
    RingTrial trial(RingUse::WhenItPays);
    EXPECT_FALSE(isConvinced(trial, 5000, 1, 10s));
}

TEST(RingTrial, IsNotWorthwhileWhilePacketsComeJoined)
{
    RingTrial trial(RingUse::WhenItPays);
    EXPECT_FALSE(isConvinced(trial, 90, 10, 100ms));
    EXPECT_FALSE(trial.noteReceived(100, 1, 1472, kStart + 100ms));
    EXPECT_FALSE(isConvinced(trial, 90, 10, 100ms, kStart + 101ms));
}

TEST(RingTrial, IsNeverWorthwhileWhenForbidden)
{
    RingTrial trial(RingUse::Never);
    EXPECT_FALSE(isConvinced(trial, 5000, 10, 1s));
}

TEST(RingTrial, BeginsAtOnceIfToldSo)
{
    RingTrial trial(RingUse::AtOnce);
    EXPECT_FALSE(trial.noteReceived(0, 1, 1472, kStart));
    EXPECT_TRUE(trial.noteReceived(1, 0, 1472, kStart));
}

TEST(RingTrial, KnowsTheLongestPacketOfThatStreamOnly)
{
    RingTrial trial(RingUse::WhenItPays);
    trial.noteReceived(1, 0, 8972, kStart); // a test packet
    EXPECT_TRUE(isConvinced(trial, 1000, 10, 1s, kStart + 2s));
    EXPECT_EQ(trial.longest(), 1472U);
}

class RunningRing : public testing::Test
{
  protected:
    void SetUp() override
    {
        ASSERT_TRUE(isConvinced(trial, 1000, 10, 1s, kStart));
        trial.noteBegun(kBegun);
    }

    static constexpr auto kBegun = kStart + 1s;
    RingTrial trial{RingUse::WhenItPays};
};

TEST_F(RunningRing, IsKeptWhileItBringsFullPackets)
{
    for (int i = 0; i < 100; ++i) {
        trial.noteRing(1472, kBegun + i * 900ms);
        EXPECT_FALSE(trial.isUseless(kBegun + (i + 1) * 900ms));
    }
}

TEST_F(RunningRing, IsGivenUpAfterASilence)
{
    EXPECT_FALSE(trial.isUseless(kBegun + 1s));
    EXPECT_TRUE(trial.isUseless(kBegun + 1s + 1ms));
}

TEST_F(RunningRing, IsGivenUpWhenOnlyShortPacketsComeByIt)
{
    trial.noteRing(44, kBegun + 900ms);
    EXPECT_TRUE(trial.isUseless(kBegun + 1100ms));
}

TEST_F(RunningRing, IsTriedAgainAfterASilence)
{
    trial.noteEnded(kBegun + 2s);
    EXPECT_TRUE(isConvinced(trial, 1000, 10, 1s, kBegun + 2s));
}

TEST_F(RunningRing, IsGivenUpForAWhileWhenPacketsComeBesideIt)
{
    trial.noteAstray(64);
    EXPECT_FALSE(trial.isUseless(kBegun));
    trial.noteAstray(1);
    EXPECT_TRUE(trial.isUseless(kBegun));
    trial.noteEnded(kBegun);
    EXPECT_FALSE(isConvinced(trial, 1000, 10, 1s, kBegun));
    EXPECT_FALSE(isConvinced(trial, 1000, 10, 900ms, kBegun + 9s));
    EXPECT_TRUE(isConvinced(trial, 1000, 10, 1s, kBegun + 10s));
}

TEST(RingTrial, PausesAfterARingThatShowedNothing)
{
    RingTrial trial(RingUse::AtOnce);
    trial.noteFailed(kStart);
    EXPECT_FALSE(trial.noteReceived(1, 0, 1472, kStart + 9s));
    EXPECT_TRUE(trial.noteReceived(1, 0, 1472, kStart + 10s));
}

} // namespace
