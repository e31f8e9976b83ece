// Record mode: the camera records into its memory and streams a preview meanwhile.
#include "CaptureFeatures.h"
#include "LogText.h"
#include "ModeControl.h"

bool ModeControl::canRecord() const
{
    return canAcquire() && mCamera.link.features->recordStart != nullptr &&
           mCamera.link.features->recordStop != nullptr;
}

StartResult ModeControl::startRecordMode(RecordStart start)
{
    if (mMode == Mode::Record) {
        return StartResult::Started;
    }
    mCamera.flashCopy.isStopped = false;
    logLine("Starting record mode");
    const std::uint32_t frameSize = mCamera.geometry.frameSize();
    if (!canRecord() || frameSize == 0) {
        return StartResult::Failed;
    }
    mMode = Mode::Record;
    mIsInStandby = false;
    if (start == RecordStart::New && prepareRecording() != Outcome::Done) {
        return StartResult::Failed; // the mode stays Record
    }
    const StartResult result = startAcquisitionThread(ImageKind::RecordPreview);
    if (result != StartResult::Started) {
        return result;
    }
    mSingleImage.allocate(frameSize);
    execute(mCamera.link.features->acquisitionStart);
    if (start == RecordStart::New) {
        execute(mCamera.link.features->recordStart);
    }
    mAcquisitionThread->enableFrameCounting();
    mIsFlashCopyDue = mCamera.flashCopy.isAfterRecord;
    logLine("Record mode started.");
    return StartResult::Started;
}

Outcome ModeControl::prepareRecording()
{
    stopPlaybackMode();
    if (changeAquisitionSource(Mode::Record) != Outcome::Done) {
        return Outcome::Failed;
    }
    mIsInStandby = read(mCamera, kIsRecordStandbyEnabled).value.value_or(false);
    return Outcome::Done;
}

void ModeControl::abortRecording()
{
    logLine("Abort recording.");
    execute(mCamera.link.features->acquisitionStop);
    (void)stopCurrentMode();
}

std::int32_t ModeControl::getCurrentNumberOfImages() const
{
    return mAcquisitionThread == nullptr ? 0 : mAcquisitionThread->frameCount();
}
