#ifndef TELVO_SRC_ACQUISITION_MODECONTROL_H
#define TELVO_SRC_ACQUISITION_MODECONTROL_H

#include "BlockTransfer.h"
#include "CQuorAcquisitionThread.h"
#include "CameraSettings.h"
#include "CameraState.h"
#include "LiveImages.h"
#include "Mode.h"
#include "SingleImageBuffer.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

/// How the end of a mode went.
enum class [[nodiscard]] StopResult : std::int32_t{
    Stopped = 0, Failed = -1,
    InFlashWrite = 2, ///< the camera copies the recording to its flash card
    InStandby = 3,    ///< the camera stays ready for the next recording
};

/// Whether a recording is begun, or was under way before the host came and must not be disturbed.
enum class RecordStart { New, Attached };

/**
 * What a camera is doing for the host: live, recording, playback or block transfer, one at a time,
 * and the worker threads that do it. Each mode has its own source.
 *
 * Threads: the host's calls the operations, one at a time; while one of its threads waits for a
 * block, another one may stop the mode. The mode itself is read by the workers as well.
 */
class ModeControl
{
  public:
    /// Both are borrowed for this object's life.
    ModeControl(CameraSettings& camera, SingleImageBuffer& singleImage)
        : mCamera(camera), mSingleImage(singleImage)
    {
    }
    ModeControl(const ModeControl&) = delete;
    ModeControl& operator=(const ModeControl&) = delete;

    LiveImages& liveImages() { return mLiveImages; }
    BlockTransfer& blocks() { return mBlocks; }
    Mode mode() const { return mMode; }
    /// What a camera that is not recording is found in, or left in, before it plays back.
    void becomeIdle();
    /// Whether the stream is a mode's, so that no other may queue a buffer in it.
    bool isStreamInUse() const;

    // LiveMode.cpp
    StartResult startLiveMode();
    Outcome pauseLiveMode(bool pause);

    // RecordMode.cpp
    StartResult startRecordMode(RecordStart start);
    /// However the mode was left.
    void abortRecording();
    /// Frames since recording started; 0 without an acquisition thread.
    std::int32_t getCurrentNumberOfImages() const;

    // Playback.cpp
    Outcome startPlaybackMode();

    // BlockMode.cpp
    StartResult startFrameBlockTransfer();

    // StopMode.cpp
    StopResult stopCurrentMode();
    Reading<bool> isStateIdle() const;
    Reading<bool> isStateFlashWrite() const;
    Reading<bool> isTrailerRecordingActive() const;

    // ModeControl.cpp
    /// Stop a worker thread if it runs (at most 5000 ms) and delete it.
    void endAcquisitionThread();
    void endReadoutThread();
    /// Frees the live images and ends the collection of a block, which stays until the next start.
    void releaseImageBuffers();
    /// Waits, without limit, for workers that did not end in time.
    void awaitOverdueThreads() { mOverdueThreads.clear(); }

  private:
    /// Whether the commands are there that begin and end what a mode does: nothing is begun that
    /// no stop could end. Not before the first initialisation.
    bool canAcquire() const;
    bool canRecord() const;
    void stopPlaybackMode();
    Outcome changeAquisitionSource(Mode mode);
    Outcome prepareRecording();
    StopResult stopWithoutCamera();
    StopResult stopLive();
    StopResult stopBlockTransfer();
    StopResult stopRecord();
    StopResult leaveRecordInFlashWrite();
    /// Wait, without limit, for the camera or for the loss of its link; not for a camera that has
    /// no state to tell.
    void waitForFlashWrite() const;
    void waitForIdleCamera() const;
    StartResult startAcquisitionThread(ImageKind kind);
    void endThread(std::shared_ptr<Thread> thread);
    /// Ends the workers that an earlier start has left, and frees what they filled.
    void clearEarlierMode();

    CameraSettings& mCamera;
    SingleImageBuffer& mSingleImage;
    std::atomic<Mode> mMode = Mode::Idle;
    bool mIsInStandby = false;    // "RecordStandby" when recording started
    bool mIsFlashCopyDue = false; // the flash copy was on when recording started
    LiveImages mLiveImages{mCamera.geometry, mMode};
    BlockTransfer mBlocks{mCamera};
    std::shared_ptr<CQuorAcquisitionThread> mAcquisitionThread; // null unless live or recording
    // They use this object until they have ended.
    std::vector<std::shared_ptr<Thread>> mOverdueThreads;
};

#endif
