#include "PictureStyle.h"

#include <algorithm>
#include <utility>

namespace telvo
{

namespace
{

constexpr std::size_t kHeaderSize = 16; // bytes, at the start of a frame

} // namespace

void hideHeader(GrayImage& frame)
{
    const std::size_t twoRows = std::size_t{frame.width} * 2; // the next row of the same colours
    for (std::size_t i = 0; i < std::min(kHeaderSize, frame.pixels.size()); ++i) {
        std::size_t below = i + twoRows;
        while (below < kHeaderSize) { // a very narrow picture
            below += twoRows;
        }
        frame.pixels[i] = below < frame.pixels.size() ? frame.pixels[below] : 0;
    }
}

Picture renderPicture(GrayView frame, const PictureStyle& style)
{
    GrayImage pixels(frame);
    if (!style.keepHeader) {
        hideHeader(pixels);
    }
    if (style.colour) {
        return demosaic(pixels.view(), *style.colour);
    }
    return {pixels.width, pixels.height, 1, std::move(pixels.pixels)};
}

} // namespace telvo
