/// What is said of a picture that is sent to a page.
#ifndef TELVO_TOOLS_TELVO_PANEL_PICTUREDESCRIPTION_H
#define TELVO_TOOLS_TELVO_PANEL_PICTUREDESCRIPTION_H

#include "FrameHeader.h"
#include "GrayImage.h"
#include "Json.h"
#include "PictureFigures.h"
#include "PreviewPicture.h"

namespace telvo
{

/// Counter, time and flags of the frame.
Json describeHeader(const FrameHeader& header);

/// Which part of the whole is shown how, and the whole picture's figures.
Json describePicture(GrayView whole, const PictureFigures& figures, const PreviewPicture& preview);

} // namespace telvo

#endif
