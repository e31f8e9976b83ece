// The thread's life and its requests; what its body does with the stream is in ReadoutBody.cpp.
#include "CQuorReadoutThread.h"

#include "CQuorGrabber.h"
#include "LinkLimits.h"
#include "LogText.h"

namespace
{
constexpr std::uint32_t kMaxBuffers = 1024;
}

CQuorReadoutThread::CQuorReadoutThread()
    : mResultEvent(CreateEventA(nullptr, FALSE, FALSE, nullptr))
{
}

CQuorReadoutThread::~CQuorReadoutThread()
{
    finish();
}

std::int32_t CQuorReadoutThread::initialize(CQuorGrabber* grabber, std::uint32_t width,
                                            std::uint32_t height, std::uint32_t blockSize,
                                            std::int32_t readoutMode)
{
    mFramesOrdered = -1;
    mGrabber = grabber;
    if (!mResultEvent) {
        return kFailure; // nothing could end a wait for a result
    }
    if (!grabber->stream().IsOpen()) {
        logLine("!! Error Initialize readout thread. Stream not open.");
        return kFailure;
    }
    grabber->stream().FlushPacketQueue();
    mFrameSize = width * height;
    mPipeline = std::make_unique<StoppablePipeline>(&grabber->stream(), mFrameSize);
    mBufferCount = pipelineBufferCount(mFrameSize, kMaxBuffers);
    if (!mPipeline->setBufferCount(mBufferCount).IsOK()) {
        logLine("!! Error Initialize readout thread. Can't set buffer count.");
        return kBufferCountRefused;
    }
    mBlock.resize(blockSize);
    mRequester.bind(*grabber, readoutMode);
    mPipeline->start();
    mRequester.startAcquisition();
    logLine("Readout Thread initialized! Width %d Height %d Buffersize %d Queue Size %d Mode %d\n",
            static_cast<std::int32_t>(width), static_cast<std::int32_t>(height),
            static_cast<std::int32_t>(blockSize), static_cast<std::int32_t>(mBufferCount),
            mRequester.isSerial() ? 1 : 0);
    return kSuccess;
}

void CQuorReadoutThread::wake()
{
    if (mPipeline != nullptr) {
        mPipeline->wake();
    }
}

void CQuorReadoutThread::clearResult()
{
    mIsAborted = false;
    mResult = RequestResult::Complete;
    ResetEvent(mResultEvent.get());
}

std::int32_t CQuorReadoutThread::requestFrames(std::int32_t first, std::int32_t last)
{
    const std::lock_guard lock(mRequestLock);
    return sendRequest({.first = first, .last = last});
}

std::int32_t CQuorReadoutThread::sendRequest(const FrameRange& range)
{
    logLine("\nRequest frames: %d - %d\n", range.first, range.last);
    if (!mRequester.canSend()) {
        return kFailure;
    }
    mIsAborted = false;
    mFramesAcquired = 0;
    mFramesOrdered = static_cast<std::int32_t>(std::int64_t{range.last} - range.first + 1);
    // Pending from here on: the last frame may come before the camera's acknowledge does.
    mIsPending = true;
    if (!mRequester.send(range)) {
        mIsPending = false;
        logLine("\n   Error!!! request frames: %d - %d\n", range.first, range.last);
        return kFailure;
    }
    mRequest = range;
    mIsAwaited = true;
    return kSuccess;
}

void CQuorReadoutThread::repeatRequest()
{
    const std::lock_guard lock(mRequestLock);
    if (mRequest && !isStopRequested()) {
        sendRequest(*mRequest);
    }
}

void CQuorReadoutThread::abortRequest()
{
    mIsAborted = true;
    logLine("Current request aborted!");
    signalResult(RequestResult::Aborted);
}

void CQuorReadoutThread::signalResult(RequestResult result)
{
    mResult = result;
    SetEvent(mResultEvent.get());
}

std::int32_t CQuorReadoutThread::waitForResult(std::int32_t* framesAcquired)
{
    constexpr auto kAborted = static_cast<std::int32_t>(RequestResult::Aborted);
    if (mIsAborted) {
        return kAborted;
    }
    if (!mIsAwaited) {
        return static_cast<std::int32_t>(RequestResult::ThreadEnded); // nothing would end the wait
    }
    while (true) {
        if (WaitForSingleObject(mResultEvent.get(), INFINITE) != WAIT_OBJECT_0) {
            if (mIsAborted) {
                return kAborted;
            }
            continue;
        }
        const std::int32_t acquired = mFramesAcquired;
        const std::int32_t ordered = mFramesOrdered;
        const RequestResult result = mResult;
        if (result == RequestResult::Complete && !mIsAborted && acquired < ordered) {
            continue; // the signal of an earlier request, whose last frame came late
        }
        if (mIsAborted || result == RequestResult::ThreadEnded || acquired <= ordered) {
            *framesAcquired = acquired;
            mIsAwaited = false;
            return static_cast<std::int32_t>(result);
        }
        logLine("\nError: Acquired (%d) more frames than ordered (%d) Reorder frames!", acquired,
                ordered);
        repeatRequest();
    }
}

void CQuorReadoutThread::readBlock(const std::function<void(std::span<const std::uint8_t>)>& read)
{
    const std::lock_guard lock(mBlockLock);
    read(mBlock);
}
