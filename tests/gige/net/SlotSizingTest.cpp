#include "SlotSizing.h"

#include <gtest/gtest.h>

using namespace gige::net;

namespace
{

SlotSizing after(int calls, std::size_t longest)
{
    SlotSizing sizing;
    for (int i = 0; i < calls; ++i) {
        sizing.note(longest);
    }
    return sizing;
}

TEST(SlotSizing, BeginsWithRoomForAnyRun)
{
    EXPECT_EQ(SlotSizing().layout(), (SlotLayout{65536, 8}));
}

TEST(SlotSizing, GivesSmallPacketsManySlots)
{
    EXPECT_EQ(after(64, 1472).layout(), (SlotLayout{1536, 256}));
    EXPECT_EQ(after(64, 8972).layout(), (SlotLayout{9216, 56}));
}

TEST(SlotSizing, KeepsRoomForRuns)
{
    EXPECT_EQ(after(1000, 64'416).layout(), (SlotLayout{64'512, 8}));
}

TEST(SlotSizing, ShrinksOnlyAfterAWhile)
{
    EXPECT_EQ(after(63, 1472).layout(), (SlotLayout{65536, 8}));
}

TEST(SlotSizing, GrowsAtOnce)
{
    SlotSizing sizing = after(64, 1472);
    sizing.note(65'000);
    EXPECT_EQ(sizing.layout(), (SlotLayout{65'024, 8}));
}

TEST(SlotSizing, KeepsToTheLongestOfTheLastWhile)
{
    SlotSizing sizing = after(64, 1472);
    sizing.note(44);
    EXPECT_EQ(sizing.layout(), (SlotLayout{1536, 256}));
    for (int i = 0; i < 62; ++i) {
        sizing.note(16);
    }
    sizing.note(1000);
    EXPECT_EQ(sizing.layout(), (SlotLayout{1024, 256}));
}

TEST(SlotSizing, NeverFallsBelowAnEmptyDatagram)
{
    EXPECT_EQ(after(64, 0).layout(), (SlotLayout{256, 256}));
}

} // namespace
