#include "StreamReasons.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace gige::stream
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> linesOf(const StreamPeriod& period)
{
    std::vector<std::string> lines;
    const StreamReasons reasons(period);
    for (const log::Reason& reason : reasons.all()) {
        lines.push_back(std::string(reason.text.view()) + " -> " +
                        std::string(reason.advice.view()));
    }
    return lines;
}

constexpr const char* kEndAdvice =
    "a buffer on the way runs over while a picture comes: a larger packet-delay spreads the "
    "packets, "
    "a larger ring ('ethtool -G') or receive buffer takes more of them";

TEST(StreamReasons, AreNoneWhenEverythingCame)
{
    EXPECT_THAT(linesOf({.counted = {.blocksReceived = 10, .packetsReceived = 100}, .load = 1}),
                IsEmpty());
}

TEST(StreamReasons, TellOfIncompletePicturesWhereAndThatNothingWasAskedForAgain)
{
    EXPECT_THAT(
        linesOf({.counted = {.blocksFailed = 3, .packetsMissing = 8},
                 .lost = {0, 0, 0, 0, 0, 0, 0, 0, 1, 7},
                 .resends = Resends::Off}),
        ElementsAre("3 pictures came incomplete, 8 packets are missing, most of them at the "
                    "end of a picture; none was asked for again -> " +
                    std::string(kEndAdvice) + "; switch resends on (MaximumPendingResends)"));
}

TEST(StreamReasons, TellNoPlaceOfFewLosses)
{
    EXPECT_THAT(linesOf({.counted = {.blocksFailed = 1, .packetsMissing = 4},
                         .lost = {4, 0, 0, 0, 0, 0, 0, 0, 0, 0},
                         .resends = Resends::On}),
                ElementsAre("1 picture came incomplete, 4 packets are missing; they were asked for "
                            "again in vain -> look at cable and switch; a larger packet-delay "
                            "spreads the packets"));
}

TEST(StreamReasons, TellThatTheCameraSendsNothingAgain)
{
    EXPECT_THAT(linesOf({.counted = {.blocksFailed = 1, .packetsMissing = 1},
                         .resends = Resends::NotByDevice}),
                ElementsAre("1 picture came incomplete, 1 packet is missing; the camera sends no "
                            "packet again -> look at cable and switch; a larger packet-delay "
                            "spreads the packets"));
}

TEST(StreamReasons, TellOfPacketsThatCameWhenAskedForAgain)
{
    EXPECT_THAT(linesOf({.counted = {.packetsResent = 5}, .lost = {5}}),
                ElementsAre("5 packets got lost and came when asked for again, most of them at the "
                            "start of a picture -> the computer or its network interface wakes too "
                            "late: switch off the power saving of interface and CPU"));
}

TEST(StreamReasons, TellOfBuffersThatAreMissingOrTooSmall)
{
    EXPECT_THAT(linesOf({.counted = {.blocksFailed = 2, .blocksDropped = 4}, .blocksTooLong = 2}),
                ElementsAre("2 pictures did not fit into the buffers -> the program has to give "
                            "buffers of the camera's PayloadSize",
                            "4 pictures found no buffer -> the computer is too slow for this rate: "
                            "end other programs, or lower the frame rate"));
}

TEST(StreamReasons, TellOfAProcessorThatIsTooSlowWherePicturesSuffer)
{
    EXPECT_THAT(
        linesOf({.counted = {.blocksDropped = 4},
                 .load = 0.93,
                 .isRingInUse = true,
                 .packetSize = 1500}),
        ElementsAre(testing::HasSubstr("4 pictures found no buffer"),
                    "the processor is too slow for this rate: receiving took 93 % of a core "
                    "-> lower the frame rate or let larger packets through (jumbo frames)"));
}

} // namespace

} // namespace gige::stream
