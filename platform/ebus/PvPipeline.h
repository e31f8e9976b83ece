#ifndef TELVO_PLATFORM_EBUS_PVPIPELINE_H
#define TELVO_PLATFORM_EBUS_PVPIPELINE_H

#include "PvStream.h"

#include <cstdint>
#include <memory>

/// Buffers of its own that circulate through a stream. Destroying it stops it.
class PvPipeline
{
  public:
    /// @param stream  borrowed for the pipeline's life
    explicit PvPipeline(PvStream* stream);
    ~PvPipeline();
    PvPipeline(const PvPipeline&) = delete;
    PvPipeline& operator=(const PvPipeline&) = delete;

    /// @param size  bytes per buffer; takes effect at the next Start
    void SetBufferSize(std::uint32_t size);
    /// @return INVALID_PARAMETER for 0, STATE_ERROR while it runs
    PvResult SetBufferCount(std::uint32_t count);

    PvResult Start();
    /// Wakes a waiting retrieval, which fails with ABORTED; may be called from any thread.
    PvResult Stop();

    /// As PvStream::RetrieveBuffer. A buffer retrieved has to be released, or it is lost to the
    /// pipeline until the next Start.
    PvResult RetrieveNextBuffer(PvBuffer** buffer, std::uint32_t timeout,
                                PvResult* operationResult);
    PvResult ReleaseBuffer(PvBuffer* buffer);

  private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

#endif
