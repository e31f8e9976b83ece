#ifndef TELVO_SRC_ACQUISITION_STREAMWORKER_H
#define TELVO_SRC_ACQUISITION_STREAMWORKER_H

#include "CameraSettings.h"
#include "LogText.h"
#include "StoppablePipeline.h"
#include "Thread.h"

#include "PvBuffer.h"
#include "PvResult.h"

#include <cstdint>
#include <memory>

/// How the start of a mode ended.
enum class [[nodiscard]] StartResult : std::int32_t{
    Started = 0, Failed = -1,
    BufferCountRefused = -2, ///< by the pipeline
};

/**
 * A worker that takes images out of the stream, and paces the camera when they do not come whole.
 *
 * Threads: open() comes before the body runs; wake() any; the rest is the body's.
 */
class StreamWorker : public Thread
{
  protected:
    struct OpenTexts {
        LogText<> streamNotOpen;
        LogText<> bufferCountRefused;
    };

    /// Makes a pipeline on the stream, whose packets of an earlier one are dropped.
    /// @param link         borrowed for the thread's life
    /// @param frameSize    bytes per buffer
    /// @param bufferCount  of the pipeline
    StartResult open(CameraLink& link, std::uint32_t frameSize, std::uint32_t bufferCount,
                     const OpenTexts& texts);
    /// Takes images until a stop is requested, then closes the pipeline.
    void takeImages();

    CameraLink& link() const { return *mLink; }
    StoppablePipeline& pipeline() const { return *mPipeline; }
    void wake() override;

    std::int32_t interPacketDelay() const { return mInterPacketDelay; }
    std::int32_t dataRate() const { return mDataRate; }
    void sendInterPacketDelay(std::int32_t delay);
    void sendDataRate(std::int32_t rate);

  private:
    /// Releases the buffer, as the next one does unless it keeps it back.
    virtual void handleImage(PvBuffer& buffer) = 0;
    virtual void handleImageError(PvBuffer& buffer, const PvResult& error) = 0;
    virtual void handleRetrievalError(const PvResult& error) = 0;
    /// There was no memory to handle an error.
    virtual void giveUp() {}
    /// After each image and each error.
    virtual void finishTurn() {}

    CameraLink* mLink = nullptr;
    std::unique_ptr<StoppablePipeline> mPipeline;
    std::int32_t mInterPacketDelay = 0; // as last sent
    std::int32_t mDataRate = 0;         // as last sent
};

#endif
