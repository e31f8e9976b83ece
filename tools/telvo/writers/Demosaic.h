#ifndef TELVO_TOOLS_TELVO_WRITERS_DEMOSAIC_H
#define TELVO_TOOLS_TELVO_WRITERS_DEMOSAIC_H

#include "Picture.h"

#include <cstdint>

namespace telvo
{

/// The colours of a sensor's first two pixels in its first row: a filter of red, green and blue
/// that repeats every two columns and rows.
enum class BayerPattern : std::uint8_t { RG, GR, GB, BG };

/// Each pixel gets the colours that its filter kept off from its neighbours' mean (bilinear).
/// Beyond the edge the picture is mirrored.
Picture demosaic(GrayView raw, BayerPattern pattern);

} // namespace telvo

#endif
