#include "TriggerSearch.h"

#include <gtest/gtest.h>

namespace
{

using namespace telvo;

constexpr std::uint8_t kTrigger = 0x01;
constexpr std::uint8_t kTrailer = 0x08;

FrameHeader flagged(std::uint8_t flags)
{
    return {.time = 0, .counter = 0, .flags = flags, .extra = 0};
}

TEST(TriggerSearch, FindsTheTriggerByReadingAFewFrames)
{
    for (const std::uint32_t trigger : {1U, 2U, 500'000U, 999'998U, 999'999U}) {
        int reads = 0;
        const auto found = findTrigger(1'000'000, [&](std::uint32_t frame) {
            ++reads;
            return flagged(frame >= trigger ? kTrailer : 0);
        });
        EXPECT_EQ(found, trigger);
        EXPECT_LT(reads, 25);
    }
}

TEST(TriggerSearch, FindsATriggerThatBeganTheRecording)
{
    const auto found = findTrigger(10, [](std::uint32_t frame) {
        return flagged(frame % 5 == 0 ? kTrigger : 0); // bursts
    });
    EXPECT_EQ(found, 0U);
}

TEST(TriggerSearch, FindsNoTriggerWhereThereWasNone)
{
    EXPECT_EQ(findTrigger(10, [](std::uint32_t) { return flagged(0); }), std::nullopt);
    EXPECT_EQ(findTrigger(0, [](std::uint32_t) { return flagged(kTrigger); }), std::nullopt);
    EXPECT_EQ(findTrigger(1, [](std::uint32_t) { return flagged(kTrailer); }), 0U);
}

TEST(TriggerSearch, FindsAGivenTriggerByTheFrameThatWasShown)
{
    EXPECT_EQ(findGivenTrigger(79, 99, 100), 80U);
    EXPECT_EQ(findGivenTrigger(99, 99, 100), 100U);   // behind the last frame
    EXPECT_EQ(findGivenTrigger(65'530, 9, 100), 85U); // the counter has wrapped in between
    EXPECT_EQ(findGivenTrigger(0, 100, 100), 0U);
    EXPECT_EQ(findGivenTrigger(0, 101, 100), std::nullopt); // it is no longer there
}

TEST(TriggerSearch, KnowsTheCountersOfCountedFrames)
{
    EXPECT_EQ(counterOf(0), 0);
    EXPECT_EQ(counterOf(65'534), 65'534);
    EXPECT_EQ(counterOf(65'535 + 7), 7); // as much is counted for each wrap
    EXPECT_EQ(counterOf(3 * 65'535 + 50'000), 50'000);
}

TEST(TriggerSearch, NamesWhatEndedTheRecording)
{
    Recording recording{.info = {.width = 64, .height = 48, .isRing = false, .sequences = 1},
                        .sequence = 0,
                        .frames = 100};
    EXPECT_STREQ(endCause(recording, flagged(0), 100), "full");
    EXPECT_STREQ(endCause(recording, flagged(0), 101), "stopped");
    recording.info.isRing = true;
    EXPECT_STREQ(endCause(recording, flagged(0), 100), "stopped");
    EXPECT_STREQ(endCause(recording, flagged(kTrailer), 100), "trigger");
}

} // namespace
