#ifndef TELVO_TOOLS_TELVO_PANEL_PICTURE_PICTUREFIGURES_H
#define TELVO_TOOLS_TELVO_PANEL_PICTURE_PICTUREFIGURES_H

#include "GrayImage.h"

#include <array>
#include <cstdint>

namespace telvo
{

/// What exposure and focus are judged by.
struct PictureFigures {
    std::array<std::uint32_t, 256> histogram{}; // pixels of each grey value
    double mean = 0;                            // grey value
    double focus = 0; // edge energy: mean square of the differences to the pixel right and below

    std::uint32_t clippedLow() const { return histogram.front(); }
    std::uint32_t clippedHigh() const { return histogram.back(); }
};

PictureFigures measure(GrayView picture);

/// The mean grey value alone.
double meanOf(GrayView picture);

} // namespace telvo

#endif
