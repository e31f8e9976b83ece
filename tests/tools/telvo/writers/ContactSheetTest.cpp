#include "ContactSheet.h"

#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;

GrayImage plain(std::uint32_t width, std::uint32_t height, std::uint8_t gray)
{
    GrayImage image(width, height);
    std::ranges::fill(image.pixels, gray);
    return image;
}

std::uint8_t pixel(const GrayImage& image, std::size_t x, std::size_t y)
{
    return image.pixels[y * image.width + x];
}

TEST(Shrink, TakesTheMeanOfEachSquare)
{
    const std::array<std::uint8_t, 8> pixels{10, 20, 100, 200, //
                                             30, 40, 100, 200};
    const GrayImage small = shrink({.width = 4, .height = 2, .pixels = pixels}, 2);
    EXPECT_EQ(small.width, 2U);
    EXPECT_EQ(small.height, 1U);
    EXPECT_THAT(small.pixels, testing::ElementsAre(25, 150));
}

TEST(Shrink, LeavesOutWhatFillsNoSquare)
{
    const GrayImage small = shrink(plain(7, 5, 50).view(), 4);
    EXPECT_EQ(small.width, 3U);
    EXPECT_EQ(small.height, 2U);
    EXPECT_THAT(small.pixels, testing::Each(50));
}

TEST(Shrink, KeepsANarrowPicture)
{
    const GrayImage image = plain(100, 3, 9);
    EXPECT_EQ(shrink(image.view(), 160).pixels, image.pixels);
}

TEST(Shrink, KeepsARowOfAVeryFlatPicture)
{
    const GrayImage small = shrink(plain(1280, 2, 9).view(), 160);
    EXPECT_EQ(small.height, 1U);
    EXPECT_EQ(small.width, 640U);
}

TEST(ContactSheet, ShowsFramesRowByRow)
{
    ContactSheet sheet(3);
    for (const std::uint8_t gray : std::to_array<std::uint8_t>({100, 150, 200})) {
        sheet.add(plain(10, 5, gray).view());
    }
    const GrayImage picture = sheet.render(); // two columns, two rows
    EXPECT_EQ(picture.width, 4U + 14 + 14);
    EXPECT_EQ(picture.height, 4U + 9 + 9);
    EXPECT_EQ(pixel(picture, 0, 0), ContactSheet::kBackground);
    EXPECT_EQ(pixel(picture, 4, 4), 100);
    EXPECT_EQ(pixel(picture, 4 + 9, 4 + 4), 100);
    EXPECT_EQ(pixel(picture, 4 + 10, 4), ContactSheet::kBackground);
    EXPECT_EQ(pixel(picture, 4 + 14, 4), 150);
    EXPECT_EQ(pixel(picture, 4, 4 + 9), 200);
    EXPECT_EQ(pixel(picture, 4 + 14, 4 + 9), ContactSheet::kBackground); // no fourth frame
}

TEST(ContactSheet, SpreadsItsCellsOverALongSeries)
{
    ContactSheet sheet(600);
    for (int frame = 0; frame < 600; ++frame) {
        sheet.add(plain(1, 1, static_cast<std::uint8_t>(frame / 10)).view());
    }
    const GrayImage picture = sheet.render(); // 60 cells: 8 columns, 8 rows
    EXPECT_EQ(picture.width, 4U + 8 * 5);
    EXPECT_EQ(picture.height, 4U + 8 * 5);
    for (std::size_t cell = 0; cell < 60; ++cell) {
        EXPECT_EQ(pixel(picture, 4 + cell % 8 * 5, 4 + cell / 8 * 5), cell); // frame 10 * cell
    }
}

TEST(ContactSheet, ShowsWhatCameOfASeriesThatEndedEarly)
{
    ContactSheet sheet(1000);
    EXPECT_TRUE(sheet.isEmpty());
    sheet.add(plain(10, 5, 77).view());
    EXPECT_FALSE(sheet.isEmpty());
    const GrayImage picture = sheet.render();
    EXPECT_EQ(picture.width, 18U);
    EXPECT_EQ(picture.height, 13U);
    EXPECT_EQ(pixel(picture, 4, 4), 77);
}

TEST(ContactSheet, IgnoresFramesBeyondTheSeries)
{
    ContactSheet sheet(1);
    sheet.add(plain(1, 1, 1).view());
    sheet.add(plain(1, 1, 2).view());
    EXPECT_EQ(sheet.render().width, 9U); // one cell
}

} // namespace
