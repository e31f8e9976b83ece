#include "BrightnessCurve.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using telvo::BrightnessCurve;
using telvo::Json;

TEST(BrightnessCurve, IsSpreadFromTheFirstToTheLastFrame)
{
    BrightnessCurve curve(101);
    curve.want(5);
    std::vector<std::uint32_t> frames;
    while (const auto frame = curve.next()) {
        frames.push_back(*frame);
        curve.add(*frame, *frame / 2.0);
    }
    EXPECT_THAT(frames, testing::UnorderedElementsAre(0, 25, 50, 75, 100));
    EXPECT_TRUE(curve.isWhole());
    EXPECT_EQ(curve.json()["of"], 5);
    EXPECT_EQ(curve.json()["points"][1], (Json{{"frame", 25}, {"mean", 12.5}}));
}

TEST(BrightnessCurve, IsSeenCoarselyFirst)
{
    BrightnessCurve curve(1000);
    curve.want(1000);
    EXPECT_EQ(curve.next(), 0U);
    EXPECT_EQ(curve.next(), 64U);
    EXPECT_EQ(curve.next(), 128U);
}

TEST(BrightnessCurve, ReadsNoFrameTwice)
{
    BrightnessCurve curve(3);
    curve.add(1, 10);
    curve.want(3);
    EXPECT_EQ(curve.json()["points"], (Json{{{"frame", 1}, {"mean", 10.0}}}));
    EXPECT_EQ(curve.next(), 0U);
    EXPECT_EQ(curve.next(), 2U);
    EXPECT_EQ(curve.next(), std::nullopt);
    EXPECT_FALSE(curve.isWhole());
}

TEST(BrightnessCurve, HasNoPointsOfAnEmptySequence)
{
    BrightnessCurve curve(0);
    curve.want(10);
    EXPECT_EQ(curve.next(), std::nullopt);
    EXPECT_EQ(curve.json()["points"], Json::array());
}

} // namespace
