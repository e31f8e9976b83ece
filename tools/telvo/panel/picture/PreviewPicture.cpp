#include "PreviewPicture.h"

#include "Demosaic.h"
#include "JpegPicture.h"
#include "Picture.h"
#include "Shrink.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace telvo
{

namespace
{

constexpr std::uint32_t kMostScale = 64;

/// The part that lies in the picture; the whole where none does.
Region clipped(const std::optional<Region>& region, GrayView picture)
{
    const Region whole{.width = picture.width, .height = picture.height};
    if (!region || region->x >= picture.width || region->y >= picture.height ||
        region->width == 0 || region->height == 0) {
        return whole;
    }
    return {.x = region->x,
            .y = region->y,
            .width = std::min(region->width, picture.width - region->x),
            .height = std::min(region->height, picture.height - region->y)};
}

std::uint32_t scaleFor(const Region& region, std::uint32_t columns)
{
    const std::uint32_t most = std::min({region.width, region.height, kMostScale});
    return columns == 0 ? 1 : std::clamp(region.width / columns, 1U, most);
}

std::optional<BayerPattern> patternOf(bool isColour, const std::optional<std::string>& colour)
{
    constexpr std::array<std::pair<std::string_view, BayerPattern>, 4> kPatterns{
        {{"RG", BayerPattern::RG},
         {"GR", BayerPattern::GR},
         {"GB", BayerPattern::GB},
         {"BG", BayerPattern::BG}}};
    const std::string name = colour.value_or(isColour ? "RG" : "");
    const auto found =
        std::ranges::find(kPatterns, name, &std::pair<std::string_view, BayerPattern>::first);
    return found == kPatterns.end() ? std::nullopt : std::optional(found->second);
}

PixelRows rowsOf(GrayView picture, const Region& region)
{
    return {.pixels = &picture.pixels[std::size_t{region.y} * picture.width + region.x],
            .stride = picture.width,
            .width = region.width,
            .height = region.height,
            .channels = 1};
}

std::vector<std::uint8_t> copyOf(const PixelRows& rows)
{
    std::vector<std::uint8_t> pixels;
    pixels.reserve(std::size_t{rows.width} * rows.height);
    for (std::uint32_t y = 0; y < rows.height; ++y) {
        const std::uint8_t* const row = rows.pixels + y * rows.stride;
        pixels.insert(pixels.end(), row, row + rows.width);
    }
    return pixels;
}

std::vector<std::uint8_t> jpegOfShrunk(const PixelRows& rows, std::uint32_t scale)
{
    if (scale == 1) {
        return jpegOf(rows);
    }
    const Picture small = shrink(rows, scale);
    return jpegOf(
        {small.pixels.data(), small.view().rowSize(), small.width, small.height, small.channels});
}

/// The colours of a part that begins at the filter's first pixel.
std::vector<std::uint8_t> jpegInColours(GrayView picture, Region& region, BayerPattern pattern,
                                        std::uint32_t scale)
{
    constexpr std::uint32_t kEven = ~1U;
    region.width += region.x & 1U;
    region.height += region.y & 1U;
    region.x &= kEven;
    region.y &= kEven;
    const std::vector<std::uint8_t> part = copyOf(rowsOf(picture, region));
    const Picture coloured = demosaic({region.width, region.height, part}, pattern);
    return jpegOfShrunk({coloured.pixels.data(), coloured.view().rowSize(), coloured.width,
                         coloured.height, coloured.channels},
                        scale);
}

} // namespace

PreviewPicture renderPreview(GrayView picture, bool isColour, const PictureWish& wish)
{
    PreviewPicture preview{.region = clipped(wish.region, picture), .isRaw = wish.isRaw};
    if (wish.isRaw) {
        preview.bytes = copyOf(rowsOf(picture, preview.region));
    } else {
        preview.scale = scaleFor(preview.region, wish.width);
        const auto pattern = patternOf(isColour, wish.colour);
        preview.bytes = pattern ? jpegInColours(picture, preview.region, *pattern, preview.scale)
                                : jpegOfShrunk(rowsOf(picture, preview.region), preview.scale);
    }
    preview.width = preview.region.width / preview.scale;
    preview.height = preview.region.height / preview.scale;
    return preview;
}

} // namespace telvo
