#ifndef TELVO_SRC_ACQUISITION_LIVEIMAGES_H
#define TELVO_SRC_ACQUISITION_LIVEIMAGES_H

#include "FrameExchange.h"
#include "FrameHeader.h"
#include "GeometryCache.h"
#include "Mode.h"

#include <atomic>
#include <cstdint>
#include <optional>
#include <span>

/// The newest live image, from the acquisition thread to the host.
/// Threads: put() acquisition thread; the rest the host's.
class LiveImages
{
  public:
    /// Both are borrowed for this object's life.
    LiveImages(const GeometryCache& geometry, const std::atomic<Mode>& mode)
        : mGeometry(geometry), mMode(mode)
    {
    }

    /// Begins anew with images of so many bytes.
    void reset(std::uint32_t frameSize) { mFrames.reset(frameSize); }
    void release() { mFrames.clear(); }
    /// Dropped in block transfer and playback, whose images are none of a live view.
    void put(std::span<const std::uint8_t> image);
    /// @return the host's until the next image is taken; nothing when none has come since the last
    std::optional<HeadedFrame> take();

  private:
    const GeometryCache& mGeometry;
    const std::atomic<Mode>& mMode;
    FrameExchange mFrames;
};

#endif
