#include "Shrink.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace telvo
{

namespace
{

/// Adds a row to the sums of its squares.
void addRow(const std::uint8_t* row, std::uint32_t side, std::uint32_t channels,
            std::vector<std::uint32_t>& sums)
{
    for (std::size_t at = 0; at < sums.size(); at += channels) {
        for (std::uint32_t column = 0; column < side; ++column, row += channels) {
            for (std::uint32_t channel = 0; channel < channels; ++channel) {
                sums[at + channel] += row[channel];
            }
        }
    }
}

} // namespace

Picture shrink(const PixelRows& rows, std::uint32_t side)
{
    Picture small{.width = rows.width / side,
                  .height = rows.height / side,
                  .channels = rows.channels,
                  .pixels = {}};
    std::vector<std::uint32_t> sums(std::size_t{small.width} * rows.channels);
    small.pixels.reserve(sums.size() * small.height);
    const std::uint32_t area = side * side;
    for (std::uint32_t y = 0; y < small.height; ++y) {
        std::ranges::fill(sums, 0);
        for (std::uint32_t line = 0; line < side; ++line) {
            addRow(rows.pixels + (std::size_t{y} * side + line) * rows.stride, side, rows.channels,
                   sums);
        }
        for (const std::uint32_t sum : sums) {
            small.pixels.push_back(static_cast<std::uint8_t>(sum / area));
        }
    }
    return small;
}

} // namespace telvo
