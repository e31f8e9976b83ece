#include "PictureFigures.h"

#include <cstddef>

namespace telvo
{

namespace
{

using Histogram = std::array<std::uint32_t, 256>;

/// Four counts side by side: with one, a pixel would wait for the pixel before it.
Histogram histogramOf(GrayView picture)
{
    constexpr std::size_t kWays = 4;
    std::array<Histogram, kWays> counts{};
    const std::size_t whole = picture.pixels.size() / kWays * kWays;
    for (std::size_t i = 0; i < whole; i += kWays) {
        for (std::size_t way = 0; way < kWays; ++way) {
            ++counts[way][picture.pixels[i + way]];
        }
    }
    for (std::size_t i = whole; i < picture.pixels.size(); ++i) {
        ++counts[0][picture.pixels[i]];
    }
    Histogram sum{};
    for (std::size_t value = 0; value < sum.size(); ++value) {
        sum[value] = counts[0][value] + counts[1][value] + counts[2][value] + counts[3][value];
    }
    return sum;
}

/// Of two rows, pixel by pixel. 64 kilopixels of the largest differences fit the sum.
std::uint64_t squaresOf(const std::uint8_t* one, const std::uint8_t* other, std::size_t count)
{
    constexpr std::size_t kPart = 32'768;
    std::uint64_t sum = 0;
    for (std::size_t begin = 0; begin < count; begin += kPart) {
        const std::size_t end = begin + kPart < count ? begin + kPart : count;
        std::uint32_t part = 0;
        for (std::size_t i = begin; i < end; ++i) {
            const int difference = int{one[i]} - int{other[i]};
            part += static_cast<std::uint32_t>(difference * difference);
        }
        sum += part;
    }
    return sum;
}

double focusOf(GrayView picture)
{
    if (picture.width < 2 || picture.height < 2) {
        return 0;
    }
    const std::size_t across = picture.width - 1;
    std::uint64_t sum = 0;
    for (std::size_t y = 0; y + 1 < picture.height; ++y) {
        const std::uint8_t* const row = &picture.pixels[y * picture.width];
        sum += squaresOf(row, row + 1, across) + squaresOf(row, row + picture.width, across);
    }
    return static_cast<double>(sum) /
           (static_cast<double>(across) * static_cast<double>(picture.height - 1));
}

} // namespace

PictureFigures measure(GrayView picture)
{
    PictureFigures figures{.histogram = histogramOf(picture)};
    double sum = 0;
    for (std::size_t value = 0; value < figures.histogram.size(); ++value) {
        sum += static_cast<double>(value) * figures.histogram[value];
    }
    if (!picture.pixels.empty()) {
        figures.mean = sum / static_cast<double>(picture.pixels.size());
    }
    figures.focus = focusOf(picture);
    return figures;
}

double meanOf(GrayView picture)
{
    std::uint64_t sum = 0;
    for (const std::uint8_t pixel : picture.pixels) {
        sum += pixel;
    }
    return picture.pixels.empty()
               ? 0
               : static_cast<double>(sum) / static_cast<double>(picture.pixels.size());
}

} // namespace telvo
