// Record mode: the camera records into its memory and streams a preview meanwhile.
#include "CQuorAcquisitionThread.h"
#include "CQuorGrabber.h"
#include "Commands.h"
#include "LogText.h"

bool CQuorGrabber::canRecord() const
{
    return canAcquire() && mFeatures->recordStart != nullptr && mFeatures->recordStop != nullptr;
}

std::int32_t CQuorGrabber::startRecordMode(bool isAttaching)
{
    if (mMode.current == Mode::Record) {
        return kSuccess;
    }
    mMode.flashWriteStopped = false;
    logLine("Starting record mode");
    const std::uint32_t frameSize = mGeometry.frameSize();
    if (!canRecord() || frameSize == 0) {
        return kFailure;
    }
    mMode.current = Mode::Record;
    mMode.recordStandbyLatch = false;
    if (!isAttaching && prepareRecording() != kSuccess) {
        return kFailure; // the mode stays Record
    }
    const std::int32_t result = startAcquisitionThread(1);
    if (result != kSuccess) {
        return result;
    }
    allocateSingleImageBuffer(frameSize);
    execute(mFeatures->acquisitionStart);
    if (!isAttaching) {
        execute(mFeatures->recordStart);
    }
    mAcquisitionThread->enableFrameCounting();
    mMode.flashAfterRecordLatch = mMode.flashAfterRecord;
    logLine("Record mode started.");
    return kSuccess;
}

std::int32_t CQuorGrabber::prepareRecording()
{
    stopPlaybackMode();
    if (changeAquisitionSource(Mode::Record) != kSuccess) {
        return kFailure;
    }
    std::uint8_t isStandby = 0;
    mMode.recordStandbyLatch = isRecordStandbyEnabled(&isStandby) == kSuccess && isStandby != 0;
    return kSuccess;
}

std::int32_t CQuorGrabber::abortRecording()
{
    logLine("Abort recording.");
    execute(mFeatures->acquisitionStop);
    static_cast<void>(stopCurrentMode()); // hosts get 0 however the mode was left
    return kSuccess;
}
