#include "TerminalPicture.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;
using testing::HasSubstr;
using testing::StartsWith;

/// White on the left, black on the right.
GrayImage halves(std::uint32_t width, std::uint32_t height)
{
    GrayImage image(width, height);
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
        image.pixels[i] = i % width < width / 2 ? 255 : 0;
    }
    return image;
}

TEST(TerminalPicture, ShowsTwoPixelsInACharacter)
{
    EXPECT_EQ(pictureText(halves(2, 2).view(), {2, 1}, TerminalGraphics::HalfBlocks),
              "\x1b[38;2;255;255;255m\x1b[48;2;255;255;255m▀"
              "\x1b[38;2;0;0;0m\x1b[48;2;0;0;0m▀\x1b[0m\x1b[K\r\n");
}

TEST(TerminalPicture, KeepsItsShape)
{
    const std::string text =
        pictureText(halves(640, 320).view(), {40, 30}, TerminalGraphics::HalfBlocks);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 10); // 40 x 20 pixels
}

TEST(TerminalPicture, ShowsNoHeaderAsPixels)
{
    GrayImage image(16, 2); // the first line is the header
    std::fill_n(image.pixels.begin(), 16, std::uint8_t{77});
    EXPECT_THAT(pictureText(image.view(), {16, 1}, TerminalGraphics::HalfBlocks),
                testing::Not(HasSubstr("77")));
    EXPECT_EQ(histogramText(image.view(), 4), "█   ");
}

TEST(TerminalPicture, SpeaksTheTerminalsOwnGraphics)
{
    EXPECT_THAT(pictureText(halves(2, 1).view(), {1, 1}, TerminalGraphics::Kitty),
                StartsWith("\x1b_Ga=T,f=24,i=1,p=1,q=2,s=8,v=4,m=0;"));
    const std::string sixel = pictureText(halves(2, 1).view(), {1, 1}, TerminalGraphics::Sixel);
    EXPECT_THAT(sixel, StartsWith("\x1bPq#0;2;0;0;0"));
    EXPECT_THAT(sixel, HasSubstr("#0!4?!4N$#63!4N!4?$-\x1b\\"));
}

TEST(TerminalPicture, KnowsTheTerminalByWhatItSays)
{
    EXPECT_EQ(graphicsOf("xterm-256color", false), TerminalGraphics::HalfBlocks);
    EXPECT_EQ(graphicsOf("xterm-256color", true), TerminalGraphics::Kitty);
    EXPECT_EQ(graphicsOf("xterm-kitty", false), TerminalGraphics::Kitty);
    EXPECT_EQ(graphicsOf("foot", false), TerminalGraphics::Sixel);
}

TEST(TerminalPicture, CountsGreyValuesWithoutThoseOfTheHeader)
{
    // 128 of black, 112 of white.
    EXPECT_EQ(histogramText(halves(64, 4).view(), 4), "█  ▇");
}

} // namespace
