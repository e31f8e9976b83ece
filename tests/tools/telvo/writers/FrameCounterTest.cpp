#include "FrameCounter.h"

#include <array>
#include <gtest/gtest.h>
#include <initializer_list>

namespace
{

using namespace telvo;

FrameCounter counted(std::initializer_list<std::uint16_t> numbers)
{
    FrameCounter counter;
    for (const std::uint16_t number : numbers) {
        counter.add(number);
    }
    return counter;
}

TEST(FrameNumber, IsTheLittleEndianNumberAtByte4)
{
    std::array<std::uint8_t, 16> frame{};
    frame[4] = 0x34;
    frame[5] = 0x12;
    EXPECT_EQ(frameNumber(frame), 0x1234);
}

TEST(FrameCounter, FindsNothingMissingInARow)
{
    const FrameCounter counter = counted({7, 8, 9});
    EXPECT_EQ(counter.received(), 3U);
    EXPECT_EQ(counter.missing(), 0U);
    EXPECT_FALSE(counter.hasRepeats());
}

TEST(FrameCounter, CountsTheFramesOfEveryGap)
{
    EXPECT_EQ(counted({7, 9, 13}).missing(), 4U);
}

TEST(FrameCounter, CountsAcrossTheWrap)
{
    EXPECT_EQ(counted({65534, 65535, 0, 1}).missing(), 0U);
    EXPECT_EQ(counted({65535, 2}).missing(), 2U);
}

TEST(FrameCounter, NoticesARepeatedFrame)
{
    const FrameCounter counter = counted({7, 7, 8});
    EXPECT_TRUE(counter.hasRepeats());
    EXPECT_EQ(counter.missing(), 0U);
}

TEST(FrameCounter, TellsWhereTheGapsAre)
{
    const FrameCounter counter = counted({7, 9, 10, 10, 13});
    const std::vector<FrameGap> gaps{{1, 7, 9, 1}, {3, 10, 10, 0}, {4, 10, 13, 2}};
    EXPECT_EQ(counter.gaps(), gaps);
    EXPECT_EQ(counter.gapCount(), 3U);
    EXPECT_FALSE(counter.isContinuous());
    EXPECT_TRUE(counted({65535, 0, 1}).isContinuous());
}

TEST(FrameCounter, ExpectsOnlyEveryNthFrame)
{
    FrameCounter counter(10);
    counter.add(65530);
    counter.add(4);
    EXPECT_TRUE(counter.isContinuous());
    counter.add(15);
    EXPECT_EQ(counter.missing(), 1U);
}

TEST(FrameCounter, KeepsNoMoreGapsThanAreWorthReading)
{
    FrameCounter counter;
    for (std::uint32_t i = 0; i < 20'000; ++i) {
        counter.add(static_cast<std::uint16_t>(2 * i));
    }
    EXPECT_EQ(counter.gapCount(), 19'999U);
    EXPECT_EQ(counter.gaps().size(), FrameCounter::kMostGaps);
}

} // namespace
