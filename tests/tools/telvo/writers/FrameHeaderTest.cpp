#include "FrameHeader.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;
using testing::ElementsAre;

TEST(FrameHeader, IsReadFromItsSixteenBytes)
{
    const std::array<std::uint8_t, 16> frame{9,    9,    9,    9,    0x34, 0x12, 9,    0x05,
                                             0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x01};
    const FrameHeader expected{
        .time = 0x07060504030201, .counter = 0x1234, .flags = 0x05, .extra = 1};
    EXPECT_EQ(decodeFrameHeader(frame), expected);
}

TEST(FrameHeader, NamesItsFlags)
{
    EXPECT_THAT(flagNames(0x1F),
                ElementsAre("trigger", "sync-in", "recording", "trailer", "irig-b"));
    EXPECT_THAT(flagNames(0x08), ElementsAre("trailer"));
    EXPECT_THAT(flagNames(0), ElementsAre());
}

TEST(FrameHeader, SpellsATimeOfDay)
{
    // Day 14, 09:05:07.000123.
    const std::uint64_t time = std::uint64_t{14} << 37 | std::uint64_t{9} << 32 |
                               std::uint64_t{5} << 26 | std::uint64_t{7} << 20 | 123;
    EXPECT_EQ(timeOfDay(time), "014 09:05:07.000123");
}

} // namespace
