#include "ResendPlanner.h"

#include "TestBlocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gige::stream
{

void PrintTo(const PacketRange& range, std::ostream* out)
{
    *out << range.first << ".." << range.last;
}

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kUnlimited = 0xFFFF'FFFF;
constexpr std::uint32_t kLargestId = 0xFF'FFFF; // with standard ids

/// A block of one byte per packet, and the requests for what it lacks.
class ResendPlannerTest : public testing::Test
{
  protected:
    ResendPlannerTest()
    {
        block.begin(buffer, 1, false, now, {});
        planner.begin();
    }

    void receive(std::uint32_t packetId)
    {
        ASSERT_EQ(block.addData(packetId, wire::Bytes{7}), Placement::Stored);
        planner.noteArrived(packetId);
    }
    void endAt(std::uint32_t trailerId)
    {
        ASSERT_EQ(block.addTrailer(trailerId), Placement::Stored);
        planner.noteArrived(trailerId);
    }

    std::vector<PacketRange> plan(std::uint32_t budget = kUnlimited)
    {
        std::vector<PacketRange> ranges;
        planner.plan(block, settings, true, budget, now, ranges);
        return ranges;
    }
    /// Every other packet, as far as the losses go that are followed at once and beyond.
    void receiveEveryOther(std::uint32_t count)
    {
        for (std::uint32_t i = 1; i <= count; ++i) {
            receive(2 * i);
        }
    }

    Time now{1h};
    wire::Bytes memory = wire::Bytes(100'000);
    StreamBuffer buffer{memory};
    OpenBlock block;
    StreamSettings settings{.maximumPendingResends = kUnlimited};
    ResendPlanner planner;
};

TEST_F(ResendPlannerTest, APacketIdHoweverLargeMakesOneLoss)
{
    endAt(kLargestId);
    EXPECT_THAT(plan(), ElementsAre(PacketRange{0, kLargestId - 1}));
    EXPECT_EQ(planner.lossCount(), 1U);
    EXPECT_EQ(planner.pending(), kLargestId);
}

TEST_F(ResendPlannerTest, ABudgetPartsALossInTwo)
{
    endAt(kLargestId);
    EXPECT_THAT(plan(10), ElementsAre(PacketRange{0, 9}));
    EXPECT_EQ(planner.lossCount(), 2U);
    EXPECT_EQ(planner.pending(), 10U);
    EXPECT_TRUE(planner.wantsBudget());
    EXPECT_THAT(plan(0), IsEmpty());
    EXPECT_THAT(plan(5), ElementsAre(PacketRange{10, 14}));
}

TEST_F(ResendPlannerTest, PacketsThatComePartTheLossesAboutThem)
{
    receive(10);
    EXPECT_THAT(plan(), ElementsAre(PacketRange{0, 9}));
    EXPECT_TRUE(planner.noteArrived(4));
    EXPECT_FALSE(planner.noteArrived(10));
    EXPECT_EQ(planner.lossCount(), 2U);
    EXPECT_EQ(planner.pending(), 9U);
    now += kResendPause;
    EXPECT_THAT(plan(), ElementsAre(PacketRange{0, 3}, PacketRange{5, 9}));
}

TEST_F(ResendPlannerTest, NoMoreSeparateLossesAreFollowedThanItsLimit)
{
    receiveEveryOther(10'000);
    endAt(20'001);
    EXPECT_EQ(plan().size(), ResendPlanner::kMaxSearched);
    EXPECT_EQ(planner.lossCount(), ResendPlanner::kMaxSearched);
    EXPECT_EQ(planner.nextTime(block), now + kResendPause); // nothing to search before
}

TEST_F(ResendPlannerTest, TheSearchGoesOnWhereLossesHaveCome)
{
    // The first loss is the leader and packet 1, each further one the packet of an odd id.
    constexpr auto kNext = static_cast<std::uint32_t>(2 * ResendPlanner::kMaxSearched + 1);
    receiveEveryOther(10'000);
    endAt(20'001);
    EXPECT_EQ(plan().back(), (PacketRange{kNext - 2, kNext - 2}));
    receive(3);
    receive(5);
    EXPECT_THAT(plan(), ElementsAre(PacketRange{kNext, kNext}, PacketRange{kNext + 2, kNext + 2}));
}

TEST_F(ResendPlannerTest, LossesPartedTooOftenAreGivenUp)
{
    endAt(50'001);
    plan();
    for (std::uint32_t i = 1; i <= 10'000; ++i) {
        receive(2 * i);
    }
    EXPECT_EQ(planner.lossCount(), ResendPlanner::kMaxLosses);
    EXPECT_TRUE(planner.hasGivenUp());
}

TEST_F(ResendPlannerTest, PacketsGivenUpPartTheLossesAboutThem)
{
    endAt(20);
    plan();
    planner.giveUp(7);
    planner.giveUpThrough(2);
    EXPECT_TRUE(planner.hasGivenUp());
    EXPECT_EQ(planner.pending(), 16U);
    now += kResendPause;
    EXPECT_THAT(plan(), ElementsAre(PacketRange{3, 6}, PacketRange{8, 19}));
}

TEST_F(ResendPlannerTest, WhatIsGivenUpBeforeItIsMissedIsNotAskedFor)
{
    planner.giveUpThrough(7);
    endAt(20);
    EXPECT_THAT(plan(), ElementsAre(PacketRange{8, 19}));
    EXPECT_TRUE(planner.hasGivenUp());
}

} // namespace

} // namespace gige::stream
