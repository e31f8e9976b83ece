#include "FrameRenderer.h"

#include <gtest/gtest.h>

#include <set>

namespace camera
{
namespace
{

const SceneView kSmall{.width = 320, .height = 128, .offsetX = 480, .offsetY = 448};

TEST(Scene, RendersTheValueOfEveryPixel)
{
    std::vector<std::uint8_t> image(std::size_t{kSmall.width} * kSmall.height);
    renderScene(kSmall, 3, 77, image);
    for (std::uint32_t y = 0; y < kSmall.height; y += 7) {
        for (std::uint32_t x = 0; x < kSmall.width; ++x) {
            ASSERT_EQ(image[std::size_t{y} * kSmall.width + x], scenePixel(kSmall, 3, 77, x, y))
                << x << ',' << y;
        }
    }
}

TEST(Scene, MarksEveryLineAnewInEveryFrame)
{
    for (std::uint32_t y = 0; y < kSmall.height; ++y) {
        EXPECT_NE(scenePixel(kSmall, 0, 10, kSmall.width - 1, y),
                  scenePixel(kSmall, 0, 11, kSmall.width - 1, y));
        EXPECT_NE(scenePixel(kSmall, 0, 10, kSmall.width - 1, y),
                  scenePixel(kSmall, 1, 10, kSmall.width - 1, y));
    }
}

TEST(Scene, HasABallThatMoves)
{
    const SceneView whole{};
    // The ball of frame 0 lies in the corner; by frame 20 it has left it.
    EXPECT_GT(scenePixel(whole, 0, 0, 20, 40), 200);
    EXPECT_LT(scenePixel(whole, 0, 20, 20, 40), 200);
}

TEST(Scene, ShowsTheSensorThroughOffsetsAndDecimation)
{
    const SceneView whole{};
    const SceneView part{.width = 320, .height = 200, .offsetX = 64, .offsetY = 100};
    const SceneView coarse{.width = 640, .height = 512, .decimation = 2};
    // Below the text and left of the marks the picture is the sensor's.
    EXPECT_EQ(scenePixel(part, 0, 9, 100, 90), scenePixel(whole, 0, 9, 164, 190));
    EXPECT_EQ(scenePixel(coarse, 0, 9, 300, 250), scenePixel(whole, 0, 9, 600, 500));
}

class RenderedViews : public testing::TestWithParam<SceneView>
{
};

TEST_P(RenderedViews, EqualTheFramesDrawnFromNothing)
{
    FrameRenderer renderer(GetParam());
    for (const std::uint32_t sequence : {0U, 5U}) {
        for (const std::uint32_t number : {0U, 1U, 2U, 3U, 40U, 41U, 1000U, 65535U, 65536U, 7U}) {
            const FrameStamp stamp{.sequence = sequence, .number = number, .time = number * 17};
            const auto fast = renderer.render(stamp);
            ASSERT_EQ(std::vector(fast.begin(), fast.end()), renderFrame(GetParam(), stamp))
                << "frame " << number << " of sequence " << sequence;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Views, RenderedViews,
    testing::Values(SceneView{.width = 640, .height = 480}, kSmall,
                    SceneView{.width = 16, .height = 2},
                    SceneView{.width = 160, .height = 90, .window = {8, 8, 60, 60}},
                    SceneView{.width = 32, .height = 64},
                    SceneView{.width = 640, .height = 512, .decimation = 2},
                    SceneView{.width = 304,
                              .height = 200,
                              .offsetX = 16,
                              .offsetY = 2,
                              .decimation = 2,
                              .colour = true},
                    SceneView{
                        .width = 704, .height = 528, .sensorWidth = 708, .sensorHeight = 528}));

TEST(Scene, OutlinesTheWindow)
{
    SceneView view{};
    view.window = {.left = 300, .top = 600, .width = 50, .height = 40};
    for (const auto& [x, y] : {std::pair{300U, 600U}, {349U, 620U}, {310U, 639U}}) {
        EXPECT_EQ(scenePixel(view, 0, 0, x, y), 255);
    }
    for (const auto& [x, y] : {std::pair{299U, 620U}, {350U, 620U}, {310U, 640U}, {310U, 620U}}) {
        EXPECT_EQ(scenePixel(view, 0, 0, x, y), scenePixel(SceneView{}, 0, 0, x, y));
    }
}

TEST(Scene, GivesBayerPixelsThatDifferByTheirFilter)
{
    SceneView colour{};
    colour.colour = true;
    // Far left red passes more than blue; same background around.
    std::set<std::uint8_t> shades;
    for (std::uint32_t i = 0; i < 4; ++i) {
        shades.insert(scenePixel(colour, 0, 0, 10 + i % 2, 700 + i / 2));
    }
    EXPECT_GE(shades.size(), 2U);
    EXPECT_EQ(scenePixel(colour, 0, 0, 11, 700), scenePixel(SceneView{}, 0, 0, 11, 700));
}

} // namespace
} // namespace camera
