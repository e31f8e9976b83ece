#include "CQuorAcquisitionThread.h"

#include "CQuorGrabber.h"
#include "Commands.h"
#include "FrameHeader.h"
#include "LinkLimits.h"
#include "LogText.h"

namespace
{

constexpr DWORD kBackOffInterval = 1000; // ms
constexpr DWORD kRestartInterval = 1500; // ms
constexpr DWORD kRestartPause = 50;      // ms between "AcquisitionStop" and "AcquisitionStart"

/// Stamps the time if more than `interval` ms have passed since the last stamp.
bool isDue(std::atomic<DWORD>& last, DWORD interval)
{
    const DWORD now = GetTickCount();
    if (now - last <= interval) {
        return false;
    }
    last = now;
    return true;
}

} // namespace

CQuorAcquisitionThread::~CQuorAcquisitionThread()
{
    finish();
}

std::int32_t CQuorAcquisitionThread::initialize(CQuorGrabber* grabber, std::uint32_t bufferCount,
                                                std::uint32_t width, std::uint32_t height,
                                                std::int32_t recordFlag)
{
    mRecordFlag = recordFlag;
    // The first image after a record start was taken before it.
    mSkipNextFrame = recordFlag != 0;
    if (grabber == nullptr) {
        return kFailure;
    }
    mGrabber = grabber;
    if (!grabber->stream().IsOpen()) {
        logLine("!! Error Initialize acquisition thread. Stream not open.");
        return kFailure;
    }
    grabber->stream().FlushPacketQueue();
    mPipeline = std::make_unique<StoppablePipeline>(&grabber->stream(), width * height);
    if (!mPipeline->setBufferCount(bufferCount).IsOK()) {
        logLine("!! Error Initialize acquisition thread. Can't set buffer count.");
        return kBufferCountRefused;
    }
    mInterPacketDelay = grabber->transfer().defaultInterPacketDelay;
    grabber->setInterPacketDelay(mInterPacketDelay);
    mDataRate = grabber->transfer().outputDataRate;
    grabber->SetOutputDatarate(mDataRate);
    if (recordFlag == 1) {
        grabber->getMaxFramesPerSequence(&mMaxFrames);
    }
    logLine("Max frames count %d", mMaxFrames);
    return kSuccess;
}

DWORD CQuorAcquisitionThread::Function()
{
    logLine("Acquisition thread started!");
    mPipeline->start();
    mTotal = FrameCounterTotal(mMaxFrames);
    mFrameCount = 0;
    while (!isStopRequested()) {
        PvBuffer* buffer = nullptr;
        PvResult operation;
        const PvResult retrieval = mPipeline->retrieve(&buffer, INFINITE, &operation);
        if (!retrieval.IsOK()) {
            attempt([&] { handleRetrievalError(retrieval); });
        } else if (!operation.IsOK()) {
            attempt([&] { handleImageError(*buffer, operation); });
        } else {
            handleImage(*buffer);
        }
    }
    mPipeline->close();
    logLine("Acquisition thread stopped!");
    return 0;
}

void CQuorAcquisitionThread::wake()
{
    if (mPipeline != nullptr) {
        mPipeline->wake();
    }
}

void CQuorAcquisitionThread::handleImage(PvBuffer& buffer)
{
    const std::span<const std::uint8_t> image(buffer.GetDataPointer(), buffer.GetSize());
    if (mIsCounting) {
        if (const auto header = decodeFrameHeader(image)) {
            mFrameCount = mTotal.add(header->counter);
        }
    }
    if (mSkipNextFrame) {
        mSkipNextFrame = false;
    } else {
        mGrabber->putLiveFrame(image);
    }
    mPipeline->release(&buffer);
}

void CQuorAcquisitionThread::handleImageError(PvBuffer& buffer, const PvResult& error)
{
    logLine("Internal acquisition state: %s!", error.GetCodeString().GetAscii());
    mPipeline->release(&buffer);
    if (error == PvResult::Code::ImageError) {
        raiseDataRate();
    } else {
        raiseInterPacketDelay();
    }
}

void CQuorAcquisitionThread::raiseDataRate()
{
    if (!isDue(mLastDataRateBackOff, kBackOffInterval)) {
        return;
    }
    mDataRate = raisedDataRate(mDataRate, mGrabber->transfer().outputDataRate);
    mGrabber->SetOutputDatarate(mDataRate);
}

void CQuorAcquisitionThread::raiseInterPacketDelay()
{
    if (!isDue(mLastDelayBackOff, kBackOffInterval)) {
        return;
    }
    mInterPacketDelay =
        raisedInterPacketDelay(mInterPacketDelay, mGrabber->transfer().defaultInterPacketDelay);
    mGrabber->setInterPacketDelay(mInterPacketDelay);
}

void CQuorAcquisitionThread::handleRetrievalError(const PvResult& error)
{
    if (isStopRequested()) {
        return; // the stop has woken the retrieval: no error of the stream
    }
    logLine("External acquisition state: %s!", error.GetCodeString().GetAscii());
    if (mRecordFlag == 0) {
        restartAcquisition();
    }
}

void CQuorAcquisitionThread::restartAcquisition()
{
    const std::lock_guard lock(mRestartLock);
    if (!mMayRestart || !isDue(mLastRestart, kRestartInterval)) {
        return;
    }
    logLine("Restart acquisition!");
    execute(mGrabber->features()->acquisitionStop);
    Sleep(kRestartPause);
    execute(mGrabber->features()->acquisitionStart);
}

void CQuorAcquisitionThread::forbidRestarts()
{
    const std::lock_guard lock(mRestartLock);
    mMayRestart = false;
}

void CQuorAcquisitionThread::allowRestarts()
{
    const DWORD now = GetTickCount();
    mLastDelayBackOff = now;
    mLastDataRateBackOff = now;
    mLastRestart = now;
    const std::lock_guard lock(mRestartLock);
    mMayRestart = true;
}
