#ifndef TELVO_TOOLS_TELVO_WRITERS_PICTURESTYLE_H
#define TELVO_TOOLS_TELVO_WRITERS_PICTURESTYLE_H

#include "Demosaic.h"
#include "Picture.h"

#include <optional>

namespace telvo
{

/// How a camera's frame is made a picture.
struct PictureStyle {
    /// The first 16 bytes of a frame are its header, no pixels. Unless they are kept, pixels of the
    /// same column and colour in the rows below stand in for them.
    bool keepHeader = false;
    /// The filter on the camera's sensor, for a picture in colours; none: gray, as it is.
    std::optional<BayerPattern> colour{};

    std::uint32_t channels() const { return colour ? 3 : 1; }
};

Picture renderPicture(GrayView frame, const PictureStyle& style);

/// Covers the header in a frame's pixels with those below.
void hideHeader(GrayImage& frame);

} // namespace telvo

#endif
