#ifndef TELVO_PLATFORM_EBUS_PVBUFFER_H
#define TELVO_PLATFORM_EBUS_PVBUFFER_H

#include "PvResult.h"

#include <cstdint>
#include <memory>

/// Memory for one image. While it is queued it belongs to the stream.
class PvBuffer
{
  public:
    PvBuffer();
    ~PvBuffer();
    PvBuffer(const PvBuffer&) = delete;
    PvBuffer& operator=(const PvBuffer&) = delete;

    /// Allocates zeroed memory, freeing any earlier one. @return NOT_ENOUGH_MEMORY
    PvResult Alloc(std::uint32_t size);
    void Free();
    /// Null before Alloc and after Free.
    std::uint8_t* GetDataPointer();
    /// Bytes allocated.
    std::uint32_t GetSize() const;

    class Impl;
    /// For the stack's other classes.
    Impl& impl() const { return *mImpl; }

  private:
    std::unique_ptr<Impl> mImpl;
};

#endif
