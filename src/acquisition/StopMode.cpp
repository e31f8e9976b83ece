// Leaving a mode: which commands the camera gets, in which order, and what is waited for.
#include "CQuorAcquisitionThread.h"
#include "CQuorGrabber.h"
#include "Commands.h"
#include "LogText.h"

namespace
{
constexpr DWORD kStatePollInterval = 500; // ms
constexpr std::int32_t kStoppedInFlashWrite = 2;
constexpr std::int32_t kStoppedInStandby = 3;
} // namespace

std::int32_t CQuorGrabber::stopCurrentMode()
{
    if (!isConnected() || mIsConnectionLost) {
        return stopWithoutCamera();
    }
    switch (mMode.current) {
    case Mode::Live:
        return stopLive();
    case Mode::BlockTransfer:
        return stopBlockTransfer();
    case Mode::Record:
        return stopRecord();
    case Mode::Idle:
        return kSuccess;
    case Mode::Playback: // ended only by the start of another mode
        return kFailure;
    }
    return kFailure;
}

std::int32_t CQuorGrabber::stopWithoutCamera()
{
    logLine("Stopping current mode - Connection to device lost!");
    endAcquisitionThread();
    endReadoutThread();
    releaseImageBuffers();
    mMode.current = Mode::Idle;
    logLine("Stopped current mode - Connection to device lost -");
    return kSuccess;
}

std::int32_t CQuorGrabber::stopLive()
{
    logLine("Stopping live mode.");
    if (mAcquisitionThread != nullptr) {
        mAcquisitionThread->forbidRestarts();
    }
    execute(mFeatures->acquisitionStop);
    endAcquisitionThread();
    releaseImageBuffers();
    waitForIdleCamera();
    execute(mFeatures->acquisitionStop);
    mMode.current = Mode::Idle;
    changeAquisitionSource(Mode::Idle);
    logLine("Live mode stopped.");
    startPlaybackMode();
    return kSuccess;
}

std::int32_t CQuorGrabber::stopBlockTransfer()
{
    // The camera's source is its memory already, so unlike live mode nothing is switched, and
    // starting playback sends the second "AcquisitionStop".
    logLine("Stopping BlockTransferMode.");
    execute(mFeatures->acquisitionStop);
    endReadoutThread();
    releaseImageBuffers();
    waitForIdleCamera();
    mMode.current = Mode::Idle;
    logLine("BlockTransferMode stopped.");
    startPlaybackMode();
    return kSuccess;
}

std::int32_t CQuorGrabber::stopRecord()
{
    logLine("Stopping record mode.");
    execute(mFeatures->recordStop);
    endAcquisitionThread();
    releaseImageBuffers();
    if (mMode.flashAfterRecordLatch) {
        return leaveRecordInFlashWrite();
    }
    if (mMode.recordStandbyLatch && !mMode.flashWriteStopped) {
        mMode.current = Mode::Idle;
        logLine("Record mode stopped. Record Standby Enabled");
        return kStoppedInStandby;
    }
    waitForIdleCamera();
    execute(mFeatures->acquisitionStop);
    mMode.current = Mode::Idle;
    changeAquisitionSource(Mode::Idle);
    logLine("Record mode stopped.");
    startPlaybackMode();
    return kSuccess;
}

std::int32_t CQuorGrabber::leaveRecordInFlashWrite()
{
    mMode.flashAfterRecordLatch = false;
    waitForFlashWrite();
    logLine("Record mode stopped. Writing to SD card");
    // The mode stays Record: the host learns the copy's end from the camera state and stops again.
    return kStoppedInFlashWrite;
}

void CQuorGrabber::waitForFlashWrite()
{
    if (!hasCameraState()) {
        return;
    }
    while (!mIsConnectionLost && isConnected()) {
        Sleep(kStatePollInterval);
        std::uint8_t isReached = 0;
        if (isStateFlashWrite(&isReached) == kSuccess && isReached != 0) {
            return;
        }
        // A copy that ended between two polls, or never began.
        if (isConnected() && isStateIdle(&isReached) == kSuccess && isReached != 0) {
            return;
        }
    }
}

void CQuorGrabber::waitForIdleCamera()
{
    if (!hasCameraState()) {
        return;
    }
    while (!mIsConnectionLost && isConnected()) {
        Sleep(kStatePollInterval);
        std::uint8_t isIdle = 0;
        if (!mIsConnectionLost && isStateIdle(&isIdle) == kSuccess && isIdle != 0) {
            return;
        }
    }
}
