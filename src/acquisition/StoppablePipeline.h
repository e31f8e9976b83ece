#ifndef TELVO_SRC_ACQUISITION_STOPPABLEPIPELINE_H
#define TELVO_SRC_ACQUISITION_STOPPABLEPIPELINE_H

#include "PvPipeline.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <mutex>

constexpr std::uint32_t kPipelineMemory = 16'777'216; // bytes of frames in a pipeline

/// Buffers of a pipeline: as many as its memory holds, 0 for a frame beyond it.
/// @param frameSize  bytes, not 0
constexpr std::uint32_t pipelineBufferCount(std::uint32_t frameSize, std::uint32_t limit)
{
    return std::min(kPipelineMemory / frameSize, limit);
}

/**
 * A pipeline that works for one thread, the worker, and is stopped by another to wake it.
 *
 * Threads: wake() any, at any moment; everything else the worker's, or its owner's before the
 * worker runs. mLock guards the pipeline's start, stop and deletion.
 */
class StoppablePipeline
{
  public:
    /// @param stream      borrowed for this object's life
    /// @param bufferSize  bytes per buffer
    StoppablePipeline(PvStream* stream, std::uint32_t bufferSize);

    PvResult setBufferCount(std::uint32_t count);
    void start();

    /// The next completed buffer, as PvPipeline::RetrieveNextBuffer has it.
    /// @param timeout  milliseconds
    PvResult retrieve(PvBuffer** buffer, std::uint32_t timeout, PvResult* operationResult);
    void release(PvBuffer* buffer);

    /// Stops the pipeline if it runs, so that a retrieval that waits in it fails.
    void wake();
    /// Stops the pipeline if it still runs and deletes it; nothing but wake() may follow.
    void close();

  private:
    void stopIfRunning();

    std::mutex mLock;
    std::unique_ptr<PvPipeline> mPipeline;
    bool mRunning = false;
};

#endif
