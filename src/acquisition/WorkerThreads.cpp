// The grabber's two worker threads: their beginning and end, and the buffers that they fill.
#include "CQuorAcquisitionThread.h"
#include "CQuorGrabber.h"
#include "CQuorReadoutThread.h"
#include "FrameExchange.h"
#include "LinkLimits.h"

#include <utility>

namespace
{
constexpr std::uint32_t kMaxLiveBuffers = 256;
}

std::int32_t CQuorGrabber::startAcquisitionThread(std::int32_t recordFlag)
{
    clearEarlierMode();
    const std::uint32_t frameSize = mGeometry.frameSize();
    mAcquisitionThread = std::make_unique<CQuorAcquisitionThread>();
    const std::int32_t result =
        mAcquisitionThread->initialize(this, pipelineBufferCount(frameSize, kMaxLiveBuffers),
                                       static_cast<std::uint32_t>(mGeometry.width),
                                       static_cast<std::uint32_t>(mGeometry.height), recordFlag);
    if (result != kSuccess) {
        return result;
    }
    mFrames->reset(frameSize);
    mAcquisitionThread->start();
    if (!mAcquisitionThread->isRunning()) {
        mAcquisitionThread.reset();
        return kFailure; // the system gives no thread
    }
    return kSuccess;
}

void CQuorGrabber::endAcquisitionThread()
{
    if (mAcquisitionThread != nullptr) {
        endThread(std::exchange(mAcquisitionThread, nullptr));
    }
}

void CQuorGrabber::endReadoutThread()
{
    if (const std::shared_ptr<CQuorReadoutThread> thread = mReadoutThread.get()) {
        mReadoutThread.set(nullptr);
        endThread(thread);
    }
}

void CQuorGrabber::endThread(std::shared_ptr<Thread> thread)
{
    // A worker that has not ended in time still uses its object and this grabber: both are kept
    // until it has.
    if (thread->isRunning() && !thread->stop()) {
        mOverdueThreads.push_back(std::move(thread));
    }
}

bool CQuorGrabber::isStreamInUse() const
{
    // A mode has the camera's images even without its worker, a worker the stream even when an
    // initialisation has changed the mode.
    const Mode mode = mMode.current;
    return (mode != Mode::Idle && mode != Mode::Playback) ||
           (mAcquisitionThread != nullptr && mAcquisitionThread->isRunning()) ||
           runningReadoutThread() != nullptr;
}

void CQuorGrabber::clearEarlierMode()
{
    endAcquisitionThread();
    endReadoutThread();
    releaseImageBuffers();
    mStoppedBlock.reset();
}

void CQuorGrabber::releaseImageBuffers()
{
    mFrames->clear();
    if (std::shared_ptr<RecordedBlock> block = mBlock.get()) {
        mStoppedBlock = std::move(block);
        mBlock.set(nullptr);
    }
}
