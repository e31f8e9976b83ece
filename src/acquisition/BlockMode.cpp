// Block transfer: the camera sends ranges of recorded frames as the host asks for them.
#include "LogText.h"
#include "ModeControl.h"
#include "RecordedSequences.h"

StartResult ModeControl::startFrameBlockTransfer()
{
    logLine("Start Frame Block Transfer.");
    if (!canAcquire()) {
        return StartResult::Failed;
    }
    stopPlaybackMode();
    // Once more, now that the queue is empty.
    execute(mCamera.link.features->acquisitionStop);
    const std::uint32_t frameSize = mCamera.geometry.frameSize();
    if (!setCurrentStreamSequence(mCamera, kFirstSequence).isDone() || frameSize == 0) {
        return StartResult::Failed;
    }
    clearEarlierMode();
    const StartResult result = mBlocks.prepare(frameSize);
    if (result != StartResult::Started) {
        return result;
    }
    mMode = Mode::BlockTransfer;
    return mBlocks.start();
}
