#include "FrameRange.h"
#include "ToolError.h"

#include <gtest/gtest.h>

namespace
{

using namespace telvo;

constexpr Recording kRecording{.info = {.width = 64, .height = 48, .isRing = true, .sequences = 1},
                               .sequence = 0,
                               .frames = 100};

void expectSelection(const FrameRange& range, const FrameSelection& expected,
                     std::optional<std::uint32_t> trigger = {})
{
    const FrameSelection selection = selectFrames(range, kRecording, trigger);
    EXPECT_EQ(selection.first, expected.first);
    EXPECT_EQ(selection.count, expected.count);
    EXPECT_EQ(selection.every, expected.every);
}

TEST(FrameRange, IsAllFramesUnlessSaid)
{
    expectSelection({}, {0, 100, 1});
    expectSelection({.first = 40}, {40, 60, 1});
    expectSelection({.first = 40, .count = 5}, {40, 5, 1});
}

TEST(FrameRange, TakesEveryNthFrame)
{
    expectSelection({.every = 10}, {0, 10, 10});
    expectSelection({.first = 1, .every = 33}, {1, 3, 33});
    expectSelection({.first = 1, .count = 2, .every = 33}, {1, 2, 33});
    expectSelection({.every = 4'000'000'000}, {0, 1, 4'000'000'000});
}

TEST(FrameRange, LiesAroundTheTriggerAsFarAsThereAreFrames)
{
    expectSelection({.aroundTrigger = 10}, {40, 21, 1}, 50);
    expectSelection({.aroundTrigger = 0}, {50, 1, 1}, 50);
    expectSelection({.aroundTrigger = 10}, {0, 14, 1}, 3);
    expectSelection({.aroundTrigger = 4'000'000'000}, {0, 100, 1}, 99);
    expectSelection({.every = 5, .aroundTrigger = 10}, {40, 5, 5}, 50);
}

TEST(FrameRange, RefusesFramesThatAreNotThere)
{
    EXPECT_THROW(selectFrames({.first = 100}, kRecording, {}), Failure);
    EXPECT_THROW(selectFrames({.first = 99, .count = 2}, kRecording, {}), Failure);
    EXPECT_THROW(selectFrames({.count = 11, .every = 10}, kRecording, {}), Failure);
    EXPECT_THROW(selectFrames({.aroundTrigger = 5}, kRecording, {}), Failure);
}

} // namespace
