/// A picture to show: gray or red, green and blue, 8 bits each, row by row, no padding.
#ifndef TELVO_TOOLS_TELVO_WRITERS_PICTURE_H
#define TELVO_TOOLS_TELVO_WRITERS_PICTURE_H

#include "GrayImage.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace telvo
{

/// Borrows width * height * channels bytes.
struct PictureView {
    std::uint32_t width;    // pixels
    std::uint32_t height;   // pixels
    std::uint32_t channels; // 1: gray; 3: red, green, blue
    std::span<const std::uint8_t> pixels;

    PictureView(std::uint32_t columns, std::uint32_t rows, std::uint32_t bytesPerPixel,
                std::span<const std::uint8_t> bytes)
        : width(columns), height(rows), channels(bytesPerPixel), pixels(bytes)
    {
    }
    // NOLINTNEXTLINE(google-explicit-constructor): a gray image is a picture
    PictureView(GrayView gray)
        : width(gray.width), height(gray.height), channels(1), pixels(gray.pixels)
    {
    }
    std::size_t rowSize() const { return std::size_t{width} * channels; }
    std::size_t size() const { return rowSize() * height; }
};

struct Picture {
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t channels;
    std::vector<std::uint8_t> pixels;

    PictureView view() const { return {width, height, channels, pixels}; }
};

} // namespace telvo

#endif
