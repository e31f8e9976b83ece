// Live mode: the camera streams what it sees.
#include "CQuorAcquisitionThread.h"
#include "CQuorGrabber.h"
#include "Commands.h"
#include "LogText.h"

std::int32_t CQuorGrabber::startLiveMode()
{
    logLine("Start live mode");
    stopPlaybackMode();
    if (!canAcquire()) {
        return kFailure;
    }
    if (auto* const acquisitionMode = mFeatures.find<PvGenEnum>("AcquisitionMode")) {
        acquisitionMode->SetValue("Continuous");
    }
    const std::uint32_t frameSize = mGeometry.frameSize();
    logLine("Frame size: %d", static_cast<std::int32_t>(frameSize));
    if (frameSize == 0) {
        return kFailure;
    }
    mMode.current = Mode::Live;
    if (changeAquisitionSource(Mode::Live) != kSuccess) {
        return kFailure;
    }
    const std::int32_t result = startAcquisitionThread(0);
    if (result != kSuccess) {
        return result;
    }
    execute(mFeatures->acquisitionStart);
    return kSuccess;
}

std::int32_t CQuorGrabber::pauseLiveMode(bool pause)
{
    if (mAcquisitionThread == nullptr) {
        return pause ? kSuccess : kFailure;
    }
    if (!pause) {
        mAcquisitionThread->allowRestarts();
        execute(mFeatures->acquisitionStart);
    } else if (mAcquisitionThread->isRunning()) {
        mAcquisitionThread->forbidRestarts();
        execute(mFeatures->acquisitionStop);
    }
    return kSuccess;
}
