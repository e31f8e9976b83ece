#include "FrameClock.h"
#include "KnownModels.h"

#include <gtest/gtest.h>

namespace camera
{
namespace
{

using namespace std::chrono_literals;

TEST(FrameClock, ExposesAtTheRate)
{
    const FrameClock clock(1s, 1000);
    EXPECT_EQ(clock.exposedAt(999ms), 0U);
    EXPECT_EQ(clock.exposedAt(1000ms), 1U);
    EXPECT_EQ(clock.exposedAt(1009ms), 10U);
    EXPECT_EQ(clock.timeOf(10), 1010ms);
}

TEST(FrameClock, StaysExactForDays)
{
    const FrameClock clock(0s, 200'000);
    EXPECT_EQ(clock.exposedAt(24h * 3), 3ULL * 86'400 * 200'000 + 1);
}

TEST(FrameClock, ContinuesAtANewRate)
{
    FrameClock clock(0s, 100);
    clock.setRate(95ms, 1000); // frames 0..9 are exposed, frame 10 comes at 100 ms
    EXPECT_EQ(clock.exposedAt(99ms), 10U);
    EXPECT_EQ(clock.timeOf(10), 100ms);
    EXPECT_EQ(clock.timeOf(11), 101ms);
}

TEST(CameraModel, KnowsTheSensors)
{
    EXPECT_EQ(modelFor("TOVI1").sensor, (SensorSize{1280, 1024}));
    EXPECT_EQ(modelFor("quor7").sensor, (SensorSize{1696, 1710}));
    EXPECT_EQ(modelFor("ORVALE6 Fenrow Lite").sensor, (SensorSize{708, 528}));
    EXPECT_EQ(modelFor("something else").sensor, (SensorSize{1280, 1024}));
}

TEST(CameraModel, LimitsTheRateByThePixels)
{
    EXPECT_EQ(fastestRate(modelFor("TOVI1"), 1280, 1024), 1068U);
    EXPECT_EQ(fastestRate(modelFor("TOVI1"), 16, 16), 200'000U);
    EXPECT_EQ(fastestRate(modelFor("ORVALE6 Fenrow Lite"), 704, 528), 1000U);
}

} // namespace
} // namespace camera
