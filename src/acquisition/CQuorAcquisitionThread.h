#ifndef TELVO_SRC_ACQUISITION_CQUORACQUISITIONTHREAD_H
#define TELVO_SRC_ACQUISITION_CQUORACQUISITIONTHREAD_H

#include "FrameCounterTotal.h"
#include "LiveImages.h"
#include "StreamWorker.h"

#include <atomic>
#include <cstdint>
#include <mutex>

/// What the images of an acquisition thread are.
enum class ImageKind { Live, RecordPreview };

/**
 * Takes live images from the stream to the host's side, counts the frames of a recording, and
 * answers stream errors by slowing the camera down or restarting it.
 *
 * Threads: initialize() and start() come before the body runs; everything else public may be
 * called while it does. Atomic: the time stamps, the frame count and the counting flag;
 * mRestartLock guards mMayRestart and every restart; the rest is the body's.
 */
class CQuorAcquisitionThread final : public StreamWorker
{
  public:
    CQuorAcquisitionThread() = default;
    ~CQuorAcquisitionThread() override;
    CQuorAcquisitionThread(const CQuorAcquisitionThread&) = delete;
    CQuorAcquisitionThread& operator=(const CQuorAcquisitionThread&) = delete;

    /**
     * @param camera       its link is borrowed for the thread's life
     * @param images       takes the images; borrowed for the thread's life
     * @param bufferCount  of the pipeline
     * @param frameSize    bytes of an image
     */
    StartResult initialize(CameraSettings& camera, LiveImages& images, std::uint32_t bufferCount,
                           std::uint32_t frameSize, ImageKind kind);

    DWORD Function() override;

    void enableFrameCounting() { mIsCounting = true; }
    /// Frames of the recording so far; 0 until counting is enabled.
    std::int32_t frameCount() const { return mFrameCount; }

    /// From its return on the body sends no "AcquisitionStart" of its own accord, so that an
    /// "AcquisitionStop" of the host's lasts.
    void forbidRestarts();
    /// Restarts are allowed again; none, and no back-off, within the next 1500 or 1000 ms.
    void allowRestarts();

  private:
    void handleImage(PvBuffer& buffer) override;
    void handleImageError(PvBuffer& buffer, const PvResult& error) override;
    void handleRetrievalError(const PvResult& error) override;
    void slowDown(const PvResult& error);
    void restartAcquisition();

    LiveImages* mImages = nullptr;
    ImageKind mKind = ImageKind::Live;
    std::atomic<DWORD> mLastDelayBackOff{0}; // ticks, ms
    std::atomic<DWORD> mLastDataRateBackOff{0};
    std::atomic<DWORD> mLastRestart{0};
    std::int32_t mMaxFrames = 0; // of a sequence
    FrameCounterTotal mTotal;
    std::atomic<std::int32_t> mFrameCount{0};
    std::atomic<bool> mIsCounting{false};
    bool mSkipNextFrame = false;
    std::mutex mRestartLock;
    bool mMayRestart = true;
};

#endif
