#include "Shrink.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace telvo
{

namespace
{

/// Of the pixels that lie one below the other.
using ColumnSums = std::vector<std::uint16_t>;

void addRow(const std::uint8_t* row, ColumnSums& sums)
{
    for (std::size_t i = 0; i < sums.size(); ++i) {
        sums[i] = static_cast<std::uint16_t>(sums[i] + row[i]);
    }
}

/// Of one square's channel.
std::uint32_t sumOf(const std::uint16_t* columns, std::uint32_t side, std::uint32_t channels)
{
    std::uint32_t sum = 0;
    for (std::uint32_t column = 0; column < side; ++column) {
        sum += columns[column * channels];
    }
    return sum;
}

} // namespace

Picture shrink(const PixelRows& rows, std::uint32_t side)
{
    Picture small{.width = rows.width / side,
                  .height = rows.height / side,
                  .channels = rows.channels,
                  .pixels = {}};
    ColumnSums sums(std::size_t{small.width} * side * rows.channels);
    small.pixels.reserve(small.view().rowSize() * small.height);
    const std::uint32_t area = side * side;
    for (std::uint32_t y = 0; y < small.height; ++y) {
        std::ranges::fill(sums, 0);
        for (std::uint32_t line = 0; line < side; ++line) {
            addRow(rows.pixels + (std::size_t{y} * side + line) * rows.stride, sums);
        }
        for (std::size_t at = 0; at < sums.size(); at += std::size_t{side} * rows.channels) {
            for (std::uint32_t channel = 0; channel < rows.channels; ++channel) {
                const std::uint32_t sum = sumOf(&sums[at + channel], side, rows.channels);
                small.pixels.push_back(static_cast<std::uint8_t>(sum / area));
            }
        }
    }
    return small;
}

} // namespace telvo
