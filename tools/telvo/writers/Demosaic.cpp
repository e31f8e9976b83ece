#include "Demosaic.h"

#include <array>

namespace telvo
{

namespace
{

/// The pixel beyond an edge is the one on its other side, which has the same colour.
std::size_t mirrored(std::size_t index, int step, std::size_t size)
{
    const bool isOutside = step < 0 ? index == 0 : index + 1 >= size;
    const std::size_t inside = step < 0 ? index + 1 : index - 1;
    return !isOutside ? index + static_cast<std::size_t>(step) : size == 1 ? index : inside;
}

/// A pixel's neighbourhood: the rows above, of and below it.
struct Rows {
    const std::uint8_t* above;
    const std::uint8_t* here;
    const std::uint8_t* below;
};

std::uint8_t mean(unsigned sum, unsigned count)
{
    return static_cast<std::uint8_t>((sum + count / 2) / count);
}

using Colours = std::array<std::uint8_t, 3>;

/// A pixel behind red or blue: its own colour, green beside it, the other one at its corners.
Colours atCorner(const Rows& rows, std::size_t left, std::size_t x, std::size_t right)
{
    const unsigned green = 0U + rows.above[x] + rows.below[x] + rows.here[left] + rows.here[right];
    const unsigned other =
        0U + rows.above[left] + rows.above[right] + rows.below[left] + rows.below[right];
    return {rows.here[x], mean(green, 4), mean(other, 4)};
}

/// A pixel behind green: the colour of its row, green, the colour of its column.
Colours atGreen(const Rows& rows, std::size_t left, std::size_t x, std::size_t right)
{
    return {mean(0U + rows.here[left] + rows.here[right], 2), rows.here[x],
            mean(0U + rows.above[x] + rows.below[x], 2)};
}

void demosaicRow(const Rows& rows, std::size_t width, bool greenFirst, bool blueRow,
                 std::uint8_t* out)
{
    for (std::size_t x = 0; x < width; ++x, out += 3) {
        const std::size_t left = mirrored(x, -1, width);
        const std::size_t right = mirrored(x, 1, width);
        const bool isGreen = (x % 2 == 0) == greenFirst;
        const Colours colours =
            isGreen ? atGreen(rows, left, x, right) : atCorner(rows, left, x, right);
        out[0] = colours[blueRow ? 2 : 0];
        out[1] = colours[1];
        out[2] = colours[blueRow ? 0 : 2];
    }
}

} // namespace

Picture demosaic(GrayView raw, BayerPattern pattern)
{
    Picture picture{raw.width, raw.height, 3, {}};
    picture.pixels.resize(std::size_t{raw.width} * raw.height * 3);
    const bool greenFirst = pattern == BayerPattern::GR || pattern == BayerPattern::GB;
    const bool blueFirst = pattern == BayerPattern::GB || pattern == BayerPattern::BG;
    const auto row = [&](std::size_t y) { return &raw.pixels[y * raw.width]; };
    for (std::size_t y = 0; y < raw.height; ++y) {
        const bool isOdd = y % 2 != 0;
        demosaicRow({row(mirrored(y, -1, raw.height)), row(y), row(mirrored(y, 1, raw.height))},
                    raw.width, greenFirst != isOdd, blueFirst != isOdd,
                    &picture.pixels[y * raw.width * 3]);
    }
    return picture;
}

} // namespace telvo
