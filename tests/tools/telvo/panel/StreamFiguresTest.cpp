#include "StreamFigures.h"

#include <gtest/gtest.h>

namespace
{

using namespace std::chrono_literals;
using telvo::StreamFigures;
using Time = StreamFigures::Clock::time_point;

/// Looks every 3 ms for pictures that come every so many; numbers that are missing never come.
void watch(StreamFigures& figures, std::chrono::milliseconds period, int pictures,
           int missingEvery = 0, std::uint16_t first = 0)
{
    Time now{};
    int next = 0;
    for (; next < pictures; now += 3ms) {
        std::optional<int> newest;
        while (next < pictures && Time{} + next * period <= now) {
            newest = missingEvery != 0 && next % missingEvery == 1 ? newest : next;
            ++next;
        }
        if (newest) {
            figures.came(static_cast<std::uint16_t>(first + *newest), 1000, now);
        } else {
            figures.lookedInVain(now);
        }
    }
}

TEST(StreamFigures, TellTheCamerasRate)
{
    StreamFigures figures;
    watch(figures, 20ms, 101);
    EXPECT_NEAR(figures.rate(), 50, 1);
    EXPECT_NEAR(figures.megabitsPerSecond(), 0.4, 0.01);
    EXPECT_EQ(figures.lost(), 0U);
}

TEST(StreamFigures, CountPicturesThatNeverCame)
{
    StreamFigures figures;
    watch(figures, 20ms, 101, 10);
    EXPECT_EQ(figures.lost(), 10U);
    EXPECT_NEAR(figures.rate(), 50, 1); // that the camera sends
}

TEST(StreamFigures, CountNoneThatCameFasterThanAnybodyLooked)
{
    StreamFigures figures;
    watch(figures, 1ms, 3000);
    EXPECT_EQ(figures.lost(), 0U);
    EXPECT_NEAR(figures.rate(), 1000, 10);
}

TEST(StreamFigures, CountNoneWhileTheCameraWasUsedForSomethingElse)
{
    StreamFigures figures;
    figures.came(1, 1000, Time{});
    figures.lookedInVain(Time{} + 3ms);
    figures.came(11, 1000, Time{} + 200ms); // nobody looked meanwhile
    EXPECT_EQ(figures.lost(), 0U);
}

TEST(StreamFigures, GoOnWhereTheNumbersBeginAnew)
{
    StreamFigures figures;
    watch(figures, 20ms, 101, 0, 65'500);
    EXPECT_EQ(figures.lost(), 0U);
    EXPECT_NEAR(figures.rate(), 50, 1);
}

} // namespace
