#include "SequenceReview.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;
using testing::ElementsAre;

FrameHeader at(std::uint64_t time, std::uint8_t flags = 0)
{
    return {.time = time, .counter = 0, .flags = flags, .extra = 0};
}

SequenceReview review(std::map<std::uint32_t, FrameHeader> headers)
{
    return {{.info = {.width = 64, .height = 48, .isRing = true, .sequences = 1},
             .sequence = 2,
             .frames = 101},
            std::move(headers)};
}

TEST(SequenceReview, SpreadsFramesFromTheFirstToTheLast)
{
    EXPECT_THAT(spreadFrames(101, 5), ElementsAre(0, 25, 50, 75, 100));
    EXPECT_THAT(spreadFrames(3, 5), ElementsAre(0, 1, 2));
    EXPECT_THAT(spreadFrames(7, 1), ElementsAre(0));
    EXPECT_THAT(spreadFrames(0, 5), ElementsAre());
    EXPECT_THAT(spreadFrames(4'000'000'000, 3), ElementsAre(0, 1'999'999'999, 3'999'999'999));
}

TEST(SequenceReview, TellsTimeSpanAndRate)
{
    EXPECT_THAT(rowOf(review({{0, at(1000)}, {100, at(201'000)}})),
                ElementsAre("2", "101", "64x48", "0.3", "0.200000 s", "500.0", "-"));
    EXPECT_THAT(rowOf(review({})), ElementsAre("2", "101", "64x48", "0.3", "-", "-", "-"));
}

TEST(SequenceReview, TellsTimesOfDay)
{
    const std::uint64_t day = std::uint64_t{14} << 37;
    EXPECT_EQ(rowOf(review({{0, at(day, 0x10)}, {100, at(day + 5, 0x10)}}))[4],
              "014 00:00:00.000000 to 014 00:00:00.000005");
}

TEST(SequenceReview, TellsWhereTheTriggerLies)
{
    EXPECT_EQ(rowOf(review({{0, at(0)}, {50, at(1)}, {100, at(2, 0x08)}}))[6],
              "in frames 51 to 100");
    EXPECT_EQ(rowOf(review({{49, at(0)}, {50, at(1, 0x08)}, {100, at(2, 0x08)}}))[6], "frame 50");
    EXPECT_FALSE(review({{0, at(0)}, {100, at(2)}}).trigger());
}

} // namespace
