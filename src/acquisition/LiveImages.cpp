#include "LiveImages.h"

#include "StoppablePipeline.h"

void LiveImages::put(std::span<const std::uint8_t> image)
{
    const Mode mode = mMode;
    if (mode != Mode::BlockTransfer && mode != Mode::Playback) {
        mFrames.put(image);
    }
}

std::optional<HeadedFrame> LiveImages::take()
{
    // Of the size that the host knows by now, unless that is none that live mode could have.
    const std::uint32_t frameSize = mGeometry.frameSize();
    if (frameSize == 0 || frameSize > kPipelineMemory) {
        return std::nullopt;
    }
    return headedFrame(mFrames.take(frameSize));
}
