#include "PreviewPicture.h"

#include "JpegBytes.h"

#include <gtest/gtest.h>
#include <vector>

namespace
{

using namespace telvo;

/// Its grey value tells a pixel's place: rising from left to right, and by rows.
GrayImage gradient(std::uint32_t width, std::uint32_t height)
{
    GrayImage image(width, height);
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            image.pixels[std::size_t{y} * width + x] = static_cast<std::uint8_t>(2 * x + y);
        }
    }
    return image;
}

TEST(PreviewPicture, IsTheWholePictureWithoutAnyWish)
{
    const GrayImage image = gradient(64, 48);
    const PreviewPicture preview = renderPreview(image.view(), false, {});
    EXPECT_EQ(preview.width, 64U);
    EXPECT_EQ(preview.height, 48U);
    EXPECT_EQ(preview.scale, 1U);
    EXPECT_EQ(preview.region, (Region{0, 0, 64, 48}));
    const DecodedJpeg decoded = decodeJpeg(preview.bytes);
    EXPECT_EQ(decoded.width, 64U);
    EXPECT_EQ(decoded.height, 48U);
    EXPECT_EQ(decoded.channels, 1U);
    EXPECT_NEAR(decoded.pixels[20 * 64 + 30], 80, 4);
}

TEST(PreviewPicture, IsShrunkAsLongAsItIsAsWideAsItsPage)
{
    const GrayImage image = gradient(64, 48);
    EXPECT_EQ(renderPreview(image.view(), false, {.width = 64}).scale, 1U);
    EXPECT_EQ(renderPreview(image.view(), false, {.width = 33}).scale, 1U);
    EXPECT_EQ(renderPreview(image.view(), false, {.width = 32}).scale, 2U);
    EXPECT_EQ(renderPreview(image.view(), false, {.width = 1}).scale, 48U); // a row stays
    const PreviewPicture preview = renderPreview(image.view(), false, {.width = 16});
    EXPECT_EQ(preview.scale, 4U);
    EXPECT_EQ(preview.width, 16U);
    EXPECT_EQ(preview.height, 12U);
    const DecodedJpeg decoded = decodeJpeg(preview.bytes);
    EXPECT_NEAR(decoded.pixels[5 * 16 + 7], 2 * 29 + 21,
                4); // the mean of columns 28-31, rows 20-23
}

TEST(PreviewPicture, GivesTheSensorsValuesOfAPart)
{
    const GrayImage image = gradient(64, 48);
    const PreviewPicture preview = renderPreview(
        image.view(), true, {.width = 1, .region = Region{10, 20, 3, 2}, .isRaw = true});
    EXPECT_TRUE(preview.isRaw);
    EXPECT_EQ(preview.scale, 1U);
    EXPECT_EQ(preview.bytes, (std::vector<std::uint8_t>{40, 42, 44, 41, 43, 45}));
}

TEST(PreviewPicture, IsClippedToThePicture)
{
    const GrayImage image = gradient(64, 48);
    const auto regionOf = [&](Region region) {
        return renderPreview(image.view(), false, {.region = region}).region;
    };
    EXPECT_EQ(regionOf({60, 40, 100, 100}), (Region{60, 40, 4, 8}));
    EXPECT_EQ(regionOf({0, 0, 0xFFFFFFFF, 0xFFFFFFFF}), (Region{0, 0, 64, 48}));
    EXPECT_EQ(regionOf({64, 0, 1, 1}), (Region{0, 0, 64, 48})); // none of it
    EXPECT_EQ(regionOf({0, 0, 0, 5}), (Region{0, 0, 64, 48}));
}

TEST(PreviewPicture, HasTheColoursOfAColourCamera)
{
    GrayImage red(32, 32); // light behind the red filters only
    for (std::size_t y = 0; y < 32; y += 2) {
        for (std::size_t x = 0; x < 32; x += 2) {
            red.pixels[y * 32 + x] = 200;
        }
    }
    const DecodedJpeg decoded = decodeJpeg(renderPreview(red.view(), true, {}).bytes);
    ASSERT_EQ(decoded.channels, 3U);
    const std::uint8_t* const pixel = &decoded.pixels[(16 * 32 + 16) * 3];
    EXPECT_NEAR(pixel[0], 200, 12);
    EXPECT_LT(pixel[1], 12);
    EXPECT_LT(pixel[2], 12);
    EXPECT_EQ(decodeJpeg(renderPreview(red.view(), true, {.colour = ""}).bytes).channels, 1U);
}

TEST(PreviewPicture, KeepsItsColoursInEveryPart)
{
    GrayImage red(32, 32);
    for (std::size_t y = 0; y < 32; y += 2) {
        for (std::size_t x = 0; x < 32; x += 2) {
            red.pixels[y * 32 + x] = 200;
        }
    }
    const PreviewPicture preview = renderPreview(red.view(), true, {.region = Region{7, 9, 9, 7}});
    EXPECT_EQ(preview.region, (Region{6, 8, 10, 8})); // from a filter's first pixel on
    const DecodedJpeg decoded = decodeJpeg(preview.bytes);
    EXPECT_GT(decoded.pixels[0], 150);
    EXPECT_LT(decoded.pixels[2], 50);
}

} // namespace
