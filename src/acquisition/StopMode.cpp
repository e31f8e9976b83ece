// Leaving a mode: which commands the camera gets, in which order, and what is waited for.
#include "Kernel.h"
#include "LogText.h"
#include "ModeControl.h"

namespace
{
constexpr DWORD kStatePollInterval = 500; // ms
bool isTrue(const Reading<bool>& reading)
{
    return reading.isDone() && *reading.value;
}

} // namespace

StopResult ModeControl::stopCurrentMode()
{
    if (!mCamera.link.device.IsConnected() || mCamera.link.isLost) {
        return stopWithoutCamera();
    }
    switch (mMode) {
    case Mode::Live:
        return stopLive();
    case Mode::BlockTransfer:
        return stopBlockTransfer();
    case Mode::Record:
        return stopRecord();
    case Mode::Idle:
        return StopResult::Stopped;
    case Mode::Playback: // ended only by the start of another mode
        return StopResult::Failed;
    }
    return StopResult::Failed;
}

StopResult ModeControl::stopWithoutCamera()
{
    logLine("Stopping current mode - Connection to device lost!");
    endAcquisitionThread();
    endReadoutThread();
    releaseImageBuffers();
    mMode = Mode::Idle;
    logLine("Stopped current mode - Connection to device lost -");
    return StopResult::Stopped;
}

StopResult ModeControl::stopLive()
{
    logLine("Stopping live mode.");
    if (mAcquisitionThread != nullptr) {
        mAcquisitionThread->forbidRestarts();
    }
    execute(mCamera.link.features->acquisitionStop);
    endAcquisitionThread();
    releaseImageBuffers();
    waitForIdleCamera();
    execute(mCamera.link.features->acquisitionStop);
    mMode = Mode::Idle;
    (void)changeAquisitionSource(Mode::Idle);
    logLine("Live mode stopped.");
    (void)startPlaybackMode();
    return StopResult::Stopped;
}

StopResult ModeControl::stopBlockTransfer()
{
    // The camera's source is its memory already, so unlike live mode nothing is switched, and
    // starting playback sends the second "AcquisitionStop".
    logLine("Stopping BlockTransferMode.");
    execute(mCamera.link.features->acquisitionStop);
    endReadoutThread();
    releaseImageBuffers();
    waitForIdleCamera();
    mMode = Mode::Idle;
    logLine("BlockTransferMode stopped.");
    (void)startPlaybackMode();
    return StopResult::Stopped;
}

StopResult ModeControl::stopRecord()
{
    logLine("Stopping record mode.");
    execute(mCamera.link.features->recordStop);
    endAcquisitionThread();
    releaseImageBuffers();
    if (mIsFlashCopyDue) {
        return leaveRecordInFlashWrite();
    }
    if (mIsInStandby && !mCamera.flashCopy.isStopped) {
        mMode = Mode::Idle;
        logLine("Record mode stopped. Record Standby Enabled");
        return StopResult::InStandby;
    }
    waitForIdleCamera();
    execute(mCamera.link.features->acquisitionStop);
    mMode = Mode::Idle;
    (void)changeAquisitionSource(Mode::Idle);
    logLine("Record mode stopped.");
    (void)startPlaybackMode();
    return StopResult::Stopped;
}

StopResult ModeControl::leaveRecordInFlashWrite()
{
    mIsFlashCopyDue = false;
    waitForFlashWrite();
    logLine("Record mode stopped. Writing to SD card");
    // The mode stays Record: the host learns the copy's end from the camera state and stops again.
    return StopResult::InFlashWrite;
}

void ModeControl::waitForFlashWrite() const
{
    if (!hasCameraState(mCamera.link.features)) {
        return;
    }
    while (mCamera.link.isUp()) {
        Sleep(kStatePollInterval);
        if (isTrue(isStateFlashWrite())) {
            return;
        }
        // A copy that ended between two polls, or never began.
        if (mCamera.link.device.IsConnected() && isTrue(isStateIdle())) {
            return;
        }
    }
}

void ModeControl::waitForIdleCamera() const
{
    if (!hasCameraState(mCamera.link.features)) {
        return;
    }
    while (mCamera.link.isUp()) {
        Sleep(kStatePollInterval);
        if (!mCamera.link.isLost && isTrue(isStateIdle())) {
            return;
        }
    }
}

Reading<bool> ModeControl::isStateIdle() const
{
    if (!mCamera.link.device.IsConnected()) {
        return done(false);
    }
    const std::optional<CameraState> state = readCameraState(mCamera.link.features);
    if (!state) {
        return {};
    }
    // A camera in record mode that has finished recording falls back to streaming.
    const bool hasRecorded = mMode == Mode::Record && state == CameraState::Live;
    return done(state == CameraState::Idle || hasRecorded);
}

Reading<bool> ModeControl::isStateFlashWrite() const
{
    if (!mCamera.link.isUp()) {
        return done(false);
    }
    const std::optional<CameraState> state = readCameraState(mCamera.link.features);
    return state ? done(state == CameraState::FlashWrite) : Reading<bool>{};
}

Reading<bool> ModeControl::isTrailerRecordingActive() const
{
    if (!mCamera.link.isUp()) {
        return done(false);
    }
    PvGenBoolean* const feature = mCamera.link.features->recordTrailerRecordingActive;
    bool isActive = false;
    if (feature == nullptr || !feature->GetValue(isActive).IsOK()) {
        return {.outcome = Outcome::Failed, .value = false};
    }
    return done(isActive);
}
