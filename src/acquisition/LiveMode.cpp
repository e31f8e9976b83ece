// Live mode: the camera streams what it sees.
#include "LogText.h"
#include "ModeControl.h"

StartResult ModeControl::startLiveMode()
{
    logLine("Start live mode");
    stopPlaybackMode();
    if (!canAcquire()) {
        return StartResult::Failed;
    }
    if (auto* const acquisitionMode = mCamera.link.features.find<PvGenEnum>("AcquisitionMode")) {
        (void)acquisitionMode->SetValue("Continuous");
    }
    const std::uint32_t frameSize = mCamera.geometry.frameSize();
    logLine("Frame size: %d", static_cast<std::int32_t>(frameSize));
    if (frameSize == 0) {
        return StartResult::Failed;
    }
    mMode = Mode::Live;
    if (changeAquisitionSource(Mode::Live) != Outcome::Done) {
        return StartResult::Failed;
    }
    const StartResult result = startAcquisitionThread(ImageKind::Live);
    if (result != StartResult::Started) {
        return result;
    }
    execute(mCamera.link.features->acquisitionStart);
    return StartResult::Started;
}

Outcome ModeControl::pauseLiveMode(bool pause)
{
    if (mAcquisitionThread == nullptr) {
        return doneIf(pause);
    }
    if (!pause) {
        mAcquisitionThread->allowRestarts();
        execute(mCamera.link.features->acquisitionStart);
    } else if (mAcquisitionThread->isRunning()) {
        mAcquisitionThread->forbidRestarts();
        execute(mCamera.link.features->acquisitionStop);
    }
    return Outcome::Done;
}
