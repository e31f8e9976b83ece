#ifndef TELVO_TOOLS_TELVO_PANEL_PICTURE_PREVIEWPICTURE_H
#define TELVO_TOOLS_TELVO_PANEL_PICTURE_PREVIEWPICTURE_H

#include "GrayImage.h"
#include "PictureWish.h"

#include <cstdint>
#include <vector>

namespace telvo
{

/// A picture as it is sent to a page.
struct PreviewPicture {
    std::uint32_t width = 0; // pixels
    std::uint32_t height = 0;
    std::uint32_t scale = 1; // pixels of the camera's for one of these, in each direction
    Region region{};         // of the camera's picture, which is shown
    bool isRaw = false;      // its bytes are grey values, else a JPEG
    std::vector<std::uint8_t> bytes{};
};

/**
 * Cuts out what is wanted, shrinks it by the largest whole factor that leaves at least as many
 * columns as the page shows, and encodes it.
 * @param isColour  the camera has a colour filter; by default the picture gets its colours then
 */
PreviewPicture renderPreview(GrayView picture, bool isColour, const PictureWish& wish);

} // namespace telvo

#endif
