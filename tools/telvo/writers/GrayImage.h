/// A picture as the cameras deliver it: 8-bit gray, row by row, no padding.
#ifndef TELVO_TOOLS_TELVO_WRITERS_GRAYIMAGE_H
#define TELVO_TOOLS_TELVO_WRITERS_GRAYIMAGE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace telvo
{

/// Borrows width * height pixels.
struct GrayView {
    std::uint32_t width;  // pixels
    std::uint32_t height; // pixels
    std::span<const std::uint8_t> pixels;
};

struct GrayImage {
    std::uint32_t width;  // pixels
    std::uint32_t height; // pixels
    std::vector<std::uint8_t> pixels;

    GrayImage(std::uint32_t columns, std::uint32_t rows)
        : width(columns), height(rows), pixels(std::size_t{columns} * rows)
    {
    }
    explicit GrayImage(GrayView view)
        : width(view.width), height(view.height), pixels(view.pixels.begin(), view.pixels.end())
    {
    }
    GrayView view() const { return {width, height, pixels}; }
};

} // namespace telvo

#endif
