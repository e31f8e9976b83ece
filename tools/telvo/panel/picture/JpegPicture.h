#ifndef TELVO_TOOLS_TELVO_PANEL_PICTURE_JPEGPICTURE_H
#define TELVO_TOOLS_TELVO_PANEL_PICTURE_JPEGPICTURE_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace telvo
{

/// A part of a picture, gray or red, green and blue. Borrows the pixels.
struct PixelRows {
    const std::uint8_t* pixels; // of the first row
    std::size_t stride;         // bytes from a row to the next
    std::uint32_t width;        // pixels
    std::uint32_t height;
    std::uint32_t channels; // 1 or 3
};

/// A JPEG to look at. Throws Failure where it cannot be made (more than 65500 pixels wide or high).
std::vector<std::uint8_t> jpegOf(const PixelRows& rows);

} // namespace telvo

#endif
