// The thread's life and its requests; what its body does with the stream is in ReadoutBody.cpp.
#include "CQuorReadoutThread.h"

#include "LogText.h"

namespace
{
constexpr std::uint32_t kMaxBuffers = 1024;
}

CQuorReadoutThread::~CQuorReadoutThread()
{
    finish();
}

StartResult CQuorReadoutThread::initialize(CameraLink& link, std::uint32_t width,
                                           std::uint32_t height, std::uint32_t blockSize,
                                           std::int32_t readoutMode)
{
    constexpr OpenTexts kTexts{"!! Error Initialize readout thread. Stream not open.",
                               "!! Error Initialize readout thread. Can't set buffer count."};
    if (!mRequest.canAwait()) {
        return StartResult::Failed;
    }
    mFrameSize = width * height;
    mBufferCount = pipelineBufferCount(mFrameSize, kMaxBuffers);
    const StartResult result = open(link, mFrameSize, mBufferCount, kTexts);
    if (result != StartResult::Started) {
        return result;
    }
    mBlock.resize(blockSize);
    mRequester.bind(link, readoutMode);
    pipeline().start();
    mRequester.startAcquisition();
    logLine("Readout Thread initialized! Width %d Height %d Buffersize %d Queue Size %d Mode %d\n",
            static_cast<std::int32_t>(width), static_cast<std::int32_t>(height),
            static_cast<std::int32_t>(blockSize), static_cast<std::int32_t>(mBufferCount),
            mRequester.isSerial() ? 1 : 0);
    return StartResult::Started;
}

void CQuorReadoutThread::wake()
{
    mRequest.end(); // a host that waits for its block need not wait for the body's end
    StreamWorker::wake();
}

Outcome CQuorReadoutThread::requestFrames(const FrameRange& range)
{
    const std::lock_guard lock(mSendLock);
    mRequest.begin();
    if (!sendNewRequest(range)) {
        return Outcome::Failed;
    }
    mRequest.accept(range);
    return Outcome::Done;
}

bool CQuorReadoutThread::sendNewRequest(const FrameRange& range)
{
    const bool wasSerial = mRequester.isSerial();
    if (sendRequest(range)) {
        return true;
    }
    if (!wasSerial) {
        return false;
    }
    logLine("Readout mode fallback: Non serial read!");
    mRequester.giveUpSerial();
    return sendRequest(range);
}

bool CQuorReadoutThread::sendRequest(const FrameRange& range)
{
    logLine("\nRequest frames: %d - %d\n", range.first, range.last);
    if (!mRequester.canSend()) {
        return false;
    }
    mRequest.start(range);
    if (!mRequester.send(range)) {
        mRequest.refuse();
        logLine("\n   Error!!! request frames: %d - %d\n", range.first, range.last);
        return false;
    }
    return true;
}

void CQuorReadoutThread::repeatRequest()
{
    const std::lock_guard lock(mSendLock);
    const std::optional<FrameRange> range = mRequest.accepted();
    if (range && !isStopRequested()) {
        sendRequest(*range); // refused, the host waits on: it may abort
    }
}

void CQuorReadoutThread::abortRequest()
{
    logLine("Current request aborted!");
    mRequest.abort();
}

ReadoutRequest::Ending CQuorReadoutThread::waitForResult()
{
    ReadoutRequest::Ending ending = mRequest.await();
    while (ending.isExcess()) {
        logLine("\nError: Acquired (%d) more frames than ordered (%d) Reorder frames!",
                *ending.acquired, ending.ordered);
        repeatRequest();
        ending = mRequest.await();
    }
    return ending;
}

void CQuorReadoutThread::readBlock(const std::function<void(std::span<const std::uint8_t>)>& read)
{
    const std::lock_guard lock(mBlockLock);
    read(mBlock);
}
