#include "PngFile.h"
#include "Failure.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <png.h>
#include <random>

namespace
{

using namespace telvo;

/// The pixels of a PNG file's bytes, read back as 8-bit gray.
GrayImage decode(std::span<const std::uint8_t> file)
{
    png_image description{};
    description.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_memory(&description, file.data(), file.size()), 0);
    EXPECT_EQ(description.format, png_uint_32{PNG_FORMAT_GRAY});
    GrayImage image(description.width, description.height);
    EXPECT_NE(png_image_finish_read(&description, nullptr, image.pixels.data(), 0, nullptr), 0);
    return image;
}

TEST(PngFile, KeepsEveryPixel)
{
    GrayImage image(37, 11); // a width that is no multiple of anything
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
        image.pixels[i] = static_cast<std::uint8_t>(i * 31);
    }
    const GrayImage read = decode(encodePng(image.view()));
    EXPECT_EQ(read.width, 37U);
    EXPECT_EQ(read.height, 11U);
    EXPECT_EQ(read.pixels, image.pixels);
}

TEST(PngFile, TakesWhatCannotBeSqueezed)
{
    GrayImage image(640, 480);
    std::minstd_rand random;
    for (std::uint8_t& pixel : image.pixels) {
        pixel = static_cast<std::uint8_t>(random() >> 8);
    }
    EXPECT_EQ(decode(encodePng(image.view())).pixels, image.pixels);
}

/// A slope, as a lens makes it.
TEST(PngFile, SqueezesSmoothPictures)
{
    GrayImage image(640, 480);
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
        image.pixels[i] = static_cast<std::uint8_t>(i % 640 / 4 + i / 640 / 8);
    }
    EXPECT_LT(encodePng(image.view()).size(), image.pixels.size() / 20);
}

TEST(PngFile, IsEightBitGray)
{
    const std::vector<std::uint8_t> file = encodePng(GrayImage(2, 3).view());
    // Signature, then the header chunk: length 13, "IHDR", width, height, depth 8, colour type 0.
    const std::vector<std::uint8_t> start(file.begin(), file.begin() + 26);
    EXPECT_THAT(start, testing::ElementsAre(0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0, 0, 0,
                                            13, 'I', 'H', 'D', 'R', 0, 0, 0, 2, 0, 0, 0, 3, 8, 0));
}

TEST(PngFile, RefusesAPictureWithoutPixels)
{
    EXPECT_THROW(encodePng(PictureView{0, 0, 1, {}}), Failure);
    const std::array<std::uint8_t, 3> tooFew{};
    EXPECT_THROW(encodePng(PictureView{2, 2, 1, tooFew}), Failure);
}

TEST(PngFile, LeavesOnlyTheFinishedFile)
{
    const TemporaryFolder folder;
    writePngFile(folder / "a.png", GrayImage(4, 4).view());
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        names.push_back(entry.path().filename().string());
    }
    EXPECT_THAT(names, testing::ElementsAre("a.png"));
}

} // namespace
