#ifndef TELVO_TOOLS_TELVO_WRITERS_VIDEOFILESINK_H
#define TELVO_TOOLS_TELVO_WRITERS_VIDEOFILESINK_H

#include "FrameSink.h"
#include "OutputFile.h"
#include "PictureStyle.h"

#include <cstdint>
#include <memory>

namespace telvo
{

enum class VideoKind : std::uint8_t {
    Lossless, ///< FFV1 in Matroska: every pixel as it was
    Report,   ///< H.264 in MP4: small, plays everywhere; an odd last column or row is left out
};

/// False where the tool was built without what encodes videos.
bool canWriteVideo();

/// A video of the frames. Throws Failure where canWriteVideo() is false.
/// @param fps  frames a second when it is played
std::unique_ptr<FrameSink> makeVideoSink(std::unique_ptr<OutputFile> file, VideoKind kind,
                                         const PictureStyle& style, std::uint32_t fps);

} // namespace telvo

#endif
