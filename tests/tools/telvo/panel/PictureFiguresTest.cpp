#include "PictureFigures.h"

#include <gtest/gtest.h>

namespace
{

using telvo::GrayImage;
using telvo::measure;
using telvo::PictureFigures;

TEST(PictureFigures, CountEveryPixelOnce)
{
    GrayImage image(7, 3); // no multiple of anything
    image.pixels = {0, 0, 0, 255, 255, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 128};
    const PictureFigures figures = measure(image.view());
    EXPECT_EQ(figures.histogram[1], 15U);
    EXPECT_EQ(figures.histogram[128], 1U);
    EXPECT_EQ(figures.clippedLow(), 3U);
    EXPECT_EQ(figures.clippedHigh(), 2U);
    EXPECT_DOUBLE_EQ(figures.mean, (15 + 128 + 510) / 21.0);
    EXPECT_DOUBLE_EQ(telvo::meanOf(image.view()), figures.mean);
}

TEST(PictureFigures, TellSharpEdgesFromSoftOnes)
{
    GrayImage sharp(64, 64);
    GrayImage soft(64, 64);
    for (std::size_t i = 0; i < sharp.pixels.size(); ++i) {
        const std::size_t x = i % 64;
        sharp.pixels[i] = x < 32 ? 50 : 200;
        soft.pixels[i] = x < 29 ? 50 : x > 34 ? 200 : static_cast<std::uint8_t>(50 + (x - 28) * 21);
    }
    EXPECT_GT(measure(sharp.view()).focus, 4 * measure(soft.view()).focus);
    EXPECT_DOUBLE_EQ(measure(sharp.view()).focus, 150.0 * 150.0 / 63);
}

TEST(PictureFigures, SeeEdgesInBothDirections)
{
    GrayImage across(4, 4);
    GrayImage down(4, 4);
    for (std::size_t i = 0; i < 16; ++i) {
        across.pixels[i] = i % 4 < 2 ? 0 : 10;
        down.pixels[i] = i < 8 ? 0 : 10;
    }
    EXPECT_DOUBLE_EQ(measure(across.view()).focus, measure(down.view()).focus);
    EXPECT_GT(measure(down.view()).focus, 0);
}

TEST(PictureFigures, OverflowNowhere)
{
    GrayImage stripes(70'000, 2); // the largest differences there are
    for (std::size_t i = 0; i < stripes.pixels.size(); ++i) {
        stripes.pixels[i] = i % 2 == 0 ? 0 : 255;
    }
    EXPECT_NEAR(measure(stripes.view()).focus, 255.0 * 255.0, 1);
}

TEST(PictureFigures, AreThereForPicturesOfAnySize)
{
    EXPECT_EQ(measure(GrayImage(1, 1).view()).focus, 0);
    EXPECT_EQ(measure(GrayImage(0, 0).view()).mean, 0);
}

} // namespace
