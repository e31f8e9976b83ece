#ifndef TELVO_TOOLS_TELVO_PANEL_PICTURE_PICTUREWISH_H
#define TELVO_TOOLS_TELVO_PANEL_PICTURE_PICTUREWISH_H

#include <cstdint>
#include <optional>
#include <string>

namespace telvo
{

/// A part of a picture, in pixels.
struct Region {
    std::uint32_t x = 0;
    std::uint32_t y = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool operator==(const Region&) const = default;
};

/// How a page wants its pictures.
struct PictureWish {
    std::uint32_t width = 0;             // columns that it shows; 0: all there are
    std::optional<Region> region{};      // of the picture; none: the whole
    bool isRaw = false;                  // the sensor's values instead of something to look at
    std::optional<std::string> colour{}; // "RG" and so on, or "" for gray; none: as the camera is
    bool operator==(const PictureWish&) const = default;
};

} // namespace telvo

#endif
