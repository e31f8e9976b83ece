#ifndef TELVO_TOOLS_TELVO_WRITERS_FRAMELIST_H
#define TELVO_TOOLS_TELVO_WRITERS_FRAMELIST_H

#include "FrameHeader.h"

#include <cstdint>
#include <vector>

namespace telvo
{

/// A frame that was written, without its pixels. A long series has millions: 24 bytes each.
struct ListedFrame {
    std::uint32_t frame; // number in the camera's sequence
    FrameHeader header;
};

using FrameList = std::vector<ListedFrame>;

} // namespace telvo

#endif
