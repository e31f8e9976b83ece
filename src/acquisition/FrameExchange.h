#ifndef TELVO_SRC_ACQUISITION_FRAMEEXCHANGE_H
#define TELVO_SRC_ACQUISITION_FRAMEEXCHANGE_H

#include "HostMemory.h"
#include "Kernel.h"

#include <array>
#include <cstdint>
#include <span>

/**
 * Hands the newest live image to the host. Of two buffers one takes the images, each over the one
 * before; the other is the host's, until its next successful take() swaps the two.
 *
 * Threads: put() acquisition thread; take() host; reset() and clear() host, while it reads no image
 * taken before. mLock guards all members.
 */
class FrameExchange
{
  public:
    FrameExchange();
    ~FrameExchange();
    FrameExchange(const FrameExchange&) = delete;
    FrameExchange& operator=(const FrameExchange&) = delete;

    /// Begins anew with two empty buffers.
    /// @param frameSize  bytes per image
    void reset(std::uint32_t frameSize);
    /// Frees both buffers; nothing can be put or taken until the next reset().
    void clear();

    /// Copies an image of at most the frame size; of a larger one the beginning.
    void put(std::span<const std::uint8_t> image);

    /// @param size  bytes that the host will read
    /// @return the newest image with as many bytes, and at least a frame header, behind it, the
    /// host's until the next successful take(); empty when none has come since the last one, or
    /// without memory for so many bytes
    std::span<const std::uint8_t> take(std::size_t size);

  private:
    struct Buffer {
        HostMemory data;
        bool filled = false;
    };

    CRITICAL_SECTION mLock{};
    std::array<Buffer, 2> mBuffers;
    std::size_t mWriteIndex = 0;
    std::size_t mFrameSize = 0;
};

#endif
