#ifndef TELVO_GIGE_PV_PVBUFFERIMPL_H
#define TELVO_GIGE_PV_PVBUFFERIMPL_H

#include "PvBuffer.h"
#include "StreamBuffer.h"

#include <cstdlib>
#include <memory>

/// A buffer as the stream sees it, with the memory behind it.
class PvBuffer::Impl : public gige::stream::StreamBuffer
{
  public:
    explicit Impl(PvBuffer& owner) : mOwner(owner) {}

    PvBuffer& owner() const { return mOwner; }
    /// @return false: not enough memory; the buffer is then empty
    bool allocate(std::uint32_t size);
    void free();

    /// The buffer that was queued as this stream buffer.
    static PvBuffer& ownerOf(StreamBuffer& buffer) { return static_cast<Impl&>(buffer).owner(); }

  private:
    struct FreeMemory {
        void operator()(std::uint8_t* memory) const { std::free(memory); }
    };

    PvBuffer& mOwner;
    std::unique_ptr<std::uint8_t, FreeMemory> mMemory;
};

#endif
