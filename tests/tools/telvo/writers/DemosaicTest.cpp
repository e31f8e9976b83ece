#include "Demosaic.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;
using testing::Each;
using testing::ElementsAre;

std::vector<std::uint8_t> pixelOf(const Picture& picture, std::size_t x, std::size_t y)
{
    const auto at =
        picture.pixels.begin() + static_cast<std::ptrdiff_t>((y * picture.width + x) * 3);
    return {at, at + 3};
}

TEST(Demosaic, TakesEachMissingColourFromItsNeighboursMean)
{
    const std::array<std::uint8_t, 16> raw{10,  20,  30,  40,  //
                                           50,  60,  70,  80,  //
                                           90,  100, 110, 120, //
                                           130, 140, 150, 160};
    const Picture picture = demosaic({4, 4, raw}, BayerPattern::RG);
    EXPECT_EQ(picture.channels, 3U);
    // Blue at (1, 1): red from its corners, green from its sides.
    EXPECT_THAT(pixelOf(picture, 1, 1),
                ElementsAre((10 + 30 + 90 + 110) / 4, (20 + 50 + 70 + 100) / 4, 60));
    // Green at (2, 1), in a row with blue: red above and below it, blue beside it.
    EXPECT_THAT(pixelOf(picture, 2, 1), ElementsAre((30 + 110) / 2, 70, (60 + 80) / 2));
    // Green at (1, 2), in a row with red.
    EXPECT_THAT(pixelOf(picture, 1, 2), ElementsAre((90 + 110) / 2, 100, (60 + 140) / 2));
    // Red at (2, 2).
    EXPECT_THAT(pixelOf(picture, 2, 2),
                ElementsAre(110, (70 + 100 + 120 + 150) / 4, (60 + 80 + 140 + 160) / 4));
}

TEST(Demosaic, MirrorsThePictureAtItsEdges)
{
    const std::array<std::uint8_t, 4> raw{200, 100, 60, 20};
    const Picture picture = demosaic({2, 2, raw}, BayerPattern::RG);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(picture.pixels[i * 3], 200) << i;
        EXPECT_EQ(picture.pixels[i * 3 + 2], 20) << i;
    }
    EXPECT_EQ(picture.pixels[1], (2 * 100 + 2 * 60) / 4);
}

TEST(Demosaic, KnowsEveryOrderOfTheFilter)
{
    // A plain red picture behind each filter: only the red pixels are bright.
    constexpr std::array<std::pair<BayerPattern, std::size_t>, 4> kRedAt{{{BayerPattern::RG, 0},
                                                                          {BayerPattern::GR, 1},
                                                                          {BayerPattern::GB, 2},
                                                                          {BayerPattern::BG, 3}}};
    for (const auto& [pattern, red] : kRedAt) {
        std::array<std::uint8_t, 4> raw{};
        raw[red] = 255;
        const Picture picture = demosaic({2, 2, raw}, pattern);
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(picture.pixels[i * 3], 255) << i;
            EXPECT_EQ(picture.pixels[i * 3 + 1], 0) << i;
            EXPECT_EQ(picture.pixels[i * 3 + 2], 0) << i;
        }
    }
}

TEST(Demosaic, TakesPicturesOfOnePixelRowOrColumn)
{
    const std::array<std::uint8_t, 3> raw{7, 7, 7};
    EXPECT_THAT(demosaic({3, 1, raw}, BayerPattern::RG).pixels, Each(7));
    EXPECT_THAT(demosaic({1, 3, raw}, BayerPattern::RG).pixels, Each(7));
    EXPECT_EQ(demosaic({1, 1, std::span(raw).first(1)}, BayerPattern::BG).pixels.size(), 3U);
}

} // namespace
