#include "ModeControl.h"

#include "LogText.h"

#include <utility>

namespace
{
constexpr std::uint32_t kMaxLiveBuffers = 256;
}

void ModeControl::becomeIdle()
{
    mMode = Mode::Idle;
    (void)changeAquisitionSource(Mode::Idle);
}

StartResult ModeControl::startAcquisitionThread(ImageKind kind)
{
    clearEarlierMode();
    const std::uint32_t frameSize = mCamera.geometry.frameSize();
    mAcquisitionThread = std::make_shared<CQuorAcquisitionThread>();
    const StartResult result = mAcquisitionThread->initialize(
        mCamera, mLiveImages, pipelineBufferCount(frameSize, kMaxLiveBuffers), frameSize, kind);
    if (result != StartResult::Started) {
        return result;
    }
    mLiveImages.reset(frameSize);
    mAcquisitionThread->start();
    if (!mAcquisitionThread->isRunning()) {
        mAcquisitionThread.reset();
        return StartResult::Failed; // the system gives no thread
    }
    return StartResult::Started;
}

void ModeControl::endAcquisitionThread()
{
    endThread(std::exchange(mAcquisitionThread, nullptr));
}

void ModeControl::endReadoutThread()
{
    endThread(mBlocks.takeThread());
}

void ModeControl::endThread(std::shared_ptr<Thread> thread)
{
    // A worker that has not ended in time still uses its object and this one: both are kept until
    // it has.
    if (thread != nullptr && thread->isRunning() && !thread->stop()) {
        mOverdueThreads.push_back(std::move(thread));
    }
}

bool ModeControl::isStreamInUse() const
{
    // A mode has the camera's images even without its worker, a worker the stream even when an
    // initialisation has changed the mode.
    const Mode mode = mMode;
    return (mode != Mode::Idle && mode != Mode::Playback) ||
           (mAcquisitionThread != nullptr && mAcquisitionThread->isRunning()) ||
           mBlocks.isRunning();
}

void ModeControl::clearEarlierMode()
{
    endAcquisitionThread();
    endReadoutThread();
    releaseImageBuffers();
    mBlocks.forgetBlock();
}

void ModeControl::releaseImageBuffers()
{
    mLiveImages.release();
    mBlocks.retireBlock();
}
