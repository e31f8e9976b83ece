#ifndef TELVO_SRC_ACQUISITION_SINGLEIMAGEBUFFER_H
#define TELVO_SRC_ACQUISITION_SINGLEIMAGEBUFFER_H

#include "PvBuffer.h"

#include <cstdint>
#include <memory>

/// The buffer into which single images are read out of the camera's memory. The host reads it.
class SingleImageBuffer
{
  public:
    /// Replaces the buffer by one of `size` bytes and logs the size. There is none afterwards for a
    /// size of 0 or without memory.
    void allocate(std::uint32_t size);
    void release();
    /// Makes it hold so many bytes at least. @return false: it cannot
    bool reserve(std::uint32_t size);
    /// Null before the first allocation.
    PvBuffer* get() const { return mBuffer.get(); }

  private:
    std::unique_ptr<PvBuffer> mBuffer;
};

#endif
