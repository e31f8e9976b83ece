#ifndef TELVO_TOOLS_TELVO_PANEL_PICTURE_SHRINK_H
#define TELVO_TOOLS_TELVO_PANEL_PICTURE_SHRINK_H

#include "JpegPicture.h"
#include "Picture.h"

namespace telvo
{

/// Each pixel is the mean of a square of this side. Pixels at the right and lower edge that fill no
/// square are left out.
/// @param side  at most 256
Picture shrink(const PixelRows& rows, std::uint32_t side);

} // namespace telvo

#endif
