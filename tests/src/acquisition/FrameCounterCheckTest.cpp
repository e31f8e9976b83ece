#include "FrameCounterCheck.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;
using Gap = FrameCounterCheck::Gap;

/// Frames of 256 bytes that hold nothing but their counters.
Bytes blockOf(const std::vector<std::uint16_t>& counters)
{
    Bytes block(counters.size() * 256);
    for (std::size_t i = 0; i < counters.size(); ++i) {
        block[i * 256 + 4] = static_cast<std::uint8_t>(counters[i]);
        block[i * 256 + 5] = static_cast<std::uint8_t>(counters[i] >> 8);
    }
    return block;
}

std::vector<Gap> check(FrameCounterCheck& counterCheck, const std::vector<std::uint16_t>& counters)
{
    const Bytes block = blockOf(counters);
    return counterCheck.check(BlockCounters(block, 256, counters.size()));
}

std::vector<Gap> check(const std::vector<std::uint16_t>& counters)
{
    FrameCounterCheck counterCheck;
    return check(counterCheck, counters);
}

TEST(FrameCounterCheck, AcceptsTheWrap)
{
    EXPECT_EQ(check({65534, 65535, 0, 1}), std::vector<Gap>{});
}

TEST(FrameCounterCheck, AcceptsWhateverFollows65535)
{
    EXPECT_EQ(check({65535, 7, 8}), std::vector<Gap>{});
}

TEST(FrameCounterCheck, FindsAMissingFrame)
{
    EXPECT_EQ(check({10, 12}), (std::vector<Gap>{{10, 12}}));
}

TEST(FrameCounterCheck, FindsARepeatedFrame)
{
    EXPECT_EQ(check({10, 10, 11}), (std::vector<Gap>{{10, 10}}));
}

TEST(FrameCounterCheck, AcceptsACounterOfZeroButNotWhatFollowsIt)
{
    EXPECT_EQ(check({10, 0, 5}), (std::vector<Gap>{{0, 5}}));
}

TEST(FrameCounterCheck, ComparesFrameZeroWithTheBlockBefore)
{
    FrameCounterCheck counterCheck;
    EXPECT_EQ(check(counterCheck, {500, 501}), std::vector<Gap>{});
    EXPECT_EQ(check(counterCheck, {502, 503}), std::vector<Gap>{});
    EXPECT_EQ(check(counterCheck, {505, 506}), (std::vector<Gap>{{503, 505}}));
}

TEST(BlockCounters, StepOneByteShortThroughFramesOfOddSize)
{
    Bytes block(3 * 255);
    block[4] = 1;
    block[254 + 4] = 2;
    block[508 + 4] = 3;
    const BlockCounters counters(block, 255, 3);
    ASSERT_EQ(counters.size(), 3U);
    EXPECT_EQ(counters[0], 1);
    EXPECT_EQ(counters[1], 2);
    EXPECT_EQ(counters[2], 3);
}

TEST(BlockCounters, LeaveOutFramesBehindTheBlock)
{
    EXPECT_EQ(BlockCounters(Bytes(600), 256, 5).size(), 3U); // of the third the counter is there
    EXPECT_EQ(BlockCounters(Bytes(600), 0, 5).size(), 0U);
    EXPECT_EQ(BlockCounters(Bytes(5), 256, 5).size(), 0U);
}

} // namespace
