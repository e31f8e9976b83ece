#include "PictureStyle.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <numeric>

namespace
{

using namespace telvo;

GrayImage counted(std::uint32_t width, std::uint32_t height)
{
    GrayImage frame(width, height);
    std::iota(frame.pixels.begin(), frame.pixels.end(), std::uint8_t{0});
    return frame;
}

TEST(PictureStyle, CoversTheHeaderWithThePixelsTwoRowsBelow)
{
    const GrayImage frame = counted(20, 4);
    const Picture picture = renderPicture(frame.view(), {});
    EXPECT_TRUE(
        std::equal(picture.pixels.begin(), picture.pixels.begin() + 16, frame.pixels.begin() + 40));
    EXPECT_TRUE(
        std::equal(picture.pixels.begin() + 16, picture.pixels.end(), frame.pixels.begin() + 16));
}

TEST(PictureStyle, KeepsTheHeaderForThoseWhoWantIt)
{
    const GrayImage frame = counted(20, 4);
    EXPECT_EQ(renderPicture(frame.view(), {.keepHeader = true}).pixels, frame.pixels);
}

TEST(PictureStyle, CoversTheHeaderOfPicturesThatAreNarrowOrFlat)
{
    const Picture flat = renderPicture(counted(32, 1).view(), {});
    EXPECT_TRUE(std::all_of(flat.pixels.begin(), flat.pixels.begin() + 16,
                            [](std::uint8_t pixel) { return pixel == 0; }));
    const Picture narrow = renderPicture(counted(4, 20).view(), {});
    EXPECT_EQ(narrow.pixels[0], 16); // the next below the header that two rows divide
    EXPECT_EQ(narrow.pixels[15], 23);
    EXPECT_EQ(renderPicture(counted(2, 2).view(), {}).pixels.size(), 4U);
}

TEST(PictureStyle, ShowsNoHeaderInColours)
{
    GrayImage frame(16, 6);
    std::ranges::fill(frame.pixels, 50);
    std::fill_n(frame.pixels.begin(), 16, 255);
    const Picture picture = renderPicture(frame.view(), {.colour = BayerPattern::RG});
    EXPECT_EQ(picture.channels, 3U);
    EXPECT_THAT(picture.pixels, testing::Each(50));
}

} // namespace
