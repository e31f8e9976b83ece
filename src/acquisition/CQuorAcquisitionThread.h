#ifndef TELVO_ACQUISITION_CQUORACQUISITIONTHREAD_H
#define TELVO_ACQUISITION_CQUORACQUISITIONTHREAD_H

#include "FrameCounterTotal.h"
#include "StoppablePipeline.h"
#include "Thread.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

class CQuorGrabber;

/**
 * Takes live images from the stream into the grabber's frame exchange, counts the frames of a
 * recording, and answers stream errors by slowing the camera down or restarting it.
 *
 * Threads: initialize() and start() come before the body runs; everything else public may be
 * called while it does. Atomic: the time stamps, the frame count and the counting flag;
 * mRestartLock guards mMayRestart and every restart; the rest is the body's.
 */
class CQuorAcquisitionThread final : public Thread
{
  public:
    CQuorAcquisitionThread() = default;
    ~CQuorAcquisitionThread() override;
    CQuorAcquisitionThread(const CQuorAcquisitionThread&) = delete;
    CQuorAcquisitionThread& operator=(const CQuorAcquisitionThread&) = delete;

    /**
     * @param grabber      borrowed for the thread's life
     * @param bufferCount  of the pipeline
     * @param width        pixels; an image has width * height bytes
     * @param recordFlag   1: the camera records and what comes is its preview, 0: live mode
     * @return 0, -1 stream not open, -2 the pipeline refuses the buffer count
     */
    std::int32_t initialize(CQuorGrabber* grabber, std::uint32_t bufferCount, std::uint32_t width,
                            std::uint32_t height, std::int32_t recordFlag);

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
    void wake() override;
    void handleImage(PvBuffer& buffer);
    void handleImageError(PvBuffer& buffer, const PvResult& error);
    void handleRetrievalError(const PvResult& error);
    void raiseDataRate();
    void raiseInterPacketDelay();
    void restartAcquisition();

    CQuorGrabber* mGrabber = nullptr;
    std::unique_ptr<StoppablePipeline> mPipeline;
    std::int32_t mRecordFlag = 0;
    std::int32_t mInterPacketDelay = 0;
    std::int32_t mDataRate = 0;
    std::atomic<DWORD> mLastDelayBackOff{0}; // ticks, ms
    std::atomic<DWORD> mLastDataRateBackOff{0};
    std::atomic<DWORD> mLastRestart{0};
    std::int32_t mMaxFrames = 0;
    FrameCounterTotal mTotal;
    std::atomic<std::int32_t> mFrameCount{0};
    std::atomic<bool> mIsCounting{false};
    bool mSkipNextFrame = false;
    std::mutex mRestartLock;
    bool mMayRestart = true;
};

#endif
