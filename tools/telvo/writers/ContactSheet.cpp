#include "ContactSheet.h"

#include <algorithm>
#include <cmath>

namespace telvo
{

namespace
{

std::uint8_t meanOfSquare(GrayView image, std::size_t left, std::size_t top, std::size_t side)
{
    std::size_t sum = 0;
    for (std::size_t y = top; y < top + side; ++y) {
        for (std::size_t x = left; x < left + side; ++x) {
            sum += image.pixels[y * image.width + x];
        }
    }
    return static_cast<std::uint8_t>(sum / (side * side));
}

void paste(const GrayImage& cell, GrayImage& sheet, std::size_t left, std::size_t top)
{
    for (std::size_t y = 0; y < cell.height; ++y) {
        std::copy_n(&cell.pixels[y * cell.width], cell.width,
                    &sheet.pixels[(top + y) * sheet.width + left]);
    }
}

} // namespace

GrayImage shrink(GrayView image, std::uint32_t maxWidth)
{
    const std::uint32_t wanted = std::max(1U, (image.width + maxWidth - 1) / maxWidth);
    const std::uint32_t side = std::min(wanted, image.height); // a flat picture keeps one row
    GrayImage small(image.width / side, image.height / side);
    for (std::size_t y = 0; y < small.height; ++y) {
        for (std::size_t x = 0; x < small.width; ++x) {
            small.pixels[y * small.width + x] = meanOfSquare(image, x * side, y * side, side);
        }
    }
    return small;
}

void ContactSheet::add(GrayView frame)
{
    const std::size_t cells = std::min(mSeriesLength, kMaxCells);
    // Frame i opens cell floor(i * cells / length): the first frame of each cell is shown.
    if (mFrames < mSeriesLength && mFrames * cells / mSeriesLength == mCells.size()) {
        mCells.push_back(shrink(frame, kCellWidth));
    }
    ++mFrames;
}

GrayImage ContactSheet::render() const
{
    const auto columns =
        static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(mCells.size()))));
    const std::size_t rows = (mCells.size() + columns - 1) / columns;
    const std::size_t stepX = mCells.front().width + kGap;
    const std::size_t stepY = mCells.front().height + kGap;
    GrayImage sheet(static_cast<std::uint32_t>(columns * stepX + kGap),
                    static_cast<std::uint32_t>(rows * stepY + kGap));
    std::ranges::fill(sheet.pixels, kBackground);
    for (std::size_t i = 0; i < mCells.size(); ++i) {
        paste(mCells[i], sheet, kGap + i % columns * stepX, kGap + i / columns * stepY);
    }
    return sheet;
}

} // namespace telvo
