// What the readout thread does with the stream: frames into the block, errors into new requests.
#include "CQuorReadoutThread.h"
#include "FrameHeader.h"
#include "LinkPacing.h"
#include "LogText.h"

#include <algorithm>

namespace
{
constexpr std::int32_t kErrorsBeforeDataRate = 3;
constexpr DWORD kMillisecondsPerSecond = 1000;
} // namespace

DWORD CQuorReadoutThread::Function()
{
    const DWORD start = GetTickCount();
    logLine("ReadoutThread started!\n");
    attempt([this] { prepareLink(); });
    takeImages();
    logLine("\nReadoutThread stopped. Duration: %d seconds\n\n",
            static_cast<std::int32_t>((GetTickCount() - start) / kMillisecondsPerSecond));
    return 0;
}

void CQuorReadoutThread::prepareLink()
{
    sendInterPacketDelay(link().transfer.outputInterPacketDelay);
    logLine("-------------------> ReadoutThread: set interpacket delay: %d \n", interPacketDelay());
    sendDataRate(link().transfer.outputDataRate);
}

void CQuorReadoutThread::handleImage(PvBuffer& buffer)
{
    const ReadoutRequest::Progress progress = mRequest.progress();
    if (progress.acquired < progress.ordered) {
        storeFrame(buffer, progress.acquired);
    } else {
        const auto header = decodeFrameHeader({buffer.GetDataPointer(), buffer.GetSize()});
        logLine("=============> fehler CQuorReadoutThread::Function - Ignore excess frame "
                "(count = %d), acquired %d frames, requested were %d",
                header ? std::int32_t{header->counter} : 0, progress.acquired + 1,
                progress.ordered);
    }
    mRequest.count(progress);
    pipeline().release(&buffer);
}

void CQuorReadoutThread::storeFrame(PvBuffer& buffer, std::int32_t index)
{
    const std::lock_guard lock(mBlockLock);
    const std::size_t offset = static_cast<std::size_t>(index) * mFrameSize;
    if (offset + mFrameSize <= mBlock.size()) {
        std::copy_n(buffer.GetDataPointer(), std::min(buffer.GetSize(), mFrameSize),
                    &mBlock[offset]);
    }
}

void CQuorReadoutThread::handleImageError(PvBuffer& buffer, const PvResult& error)
{
    mHasFrameError = true;
    mRequest.interrupt();
    logLine("=============> Internal error %s, acquired %d frames",
            error.GetCodeString().GetAscii(), mRequest.progress().acquired);
    keepBack(buffer);
    const Drained drained =
        drain("=============> due to external after internal error, sleep ( %d )");
    logLine("=============> After internal error, %d / %d times "
            "mPipeline->RetrieveNextBuffer()/ReleaseBuffer() for clearing",
            drained.passes, drained.buffers);
    repeatRequest();
    ++mConsecutiveErrors;
}

void CQuorReadoutThread::keepBack(PvBuffer& buffer)
{
    // A buffer that carried an error is not used again at once. With half of them kept back they
    // all return, lest a long readout over a poor link leave the pipeline without buffers.
    mKeptBack.push_back(&buffer);
    if (mKeptBack.size() * 2 < mBufferCount) {
        return;
    }
    for (PvBuffer* const kept : mKeptBack) {
        pipeline().release(kept);
    }
    mKeptBack.clear();
}

void CQuorReadoutThread::handleRetrievalError(const PvResult& error)
{
    // Woken by a stop, or nothing came because nothing was asked for.
    if (isStopRequested() || !mRequest.interrupt()) {
        return;
    }
    paceCamera();
    logLine("\n  External error %s Only aquired %d frames", error.GetCodeString().GetAscii(),
            mRequest.progress().acquired);
    const Drained drained = drain("=============> due to external error, sleep ( %d )");
    if (drained.buffers > 0) {
        logLine("=============> After external error, %d / %d times "
                "mPipeline->RetrieveNextBuffer()/ReleaseBuffer() for clearing",
                drained.passes, drained.buffers);
    }
    repeatRequest();
    ++mConsecutiveErrors;
}

Drained CQuorReadoutThread::drain(const LogText<std::int32_t>& pausing)
{
    const ReadoutRequest::Progress progress = mRequest.progress();
    return drainPipeline(pipeline(), progress.ordered, progress.acquired, pausing,
                         [this] { return isStopRequested(); });
}

void CQuorReadoutThread::paceCamera()
{
    if (mHasFrameError) {
        mHasFrameError = false;
        sendInterPacketDelay(
            raisedInterPacketDelay(interPacketDelay(), link().transfer.outputInterPacketDelay));
    } else if (mConsecutiveErrors > kErrorsBeforeDataRate) {
        raiseDataRate();
    }
}

void CQuorReadoutThread::raiseDataRate()
{
    if (dataRate() >= kMaxDataRate) {
        // No rate helps: leave the serial line and begin again at the settings of initialisation.
        mRequester.giveUpSerial();
        sendInterPacketDelay(link().transfer.defaultInterPacketDelay);
    }
    sendDataRate(raisedDataRate(dataRate(), link().transfer.outputDataRate));
    mConsecutiveErrors = 0;
}

void CQuorReadoutThread::completeRequest()
{
    const std::optional<std::int32_t> frames = mRequest.complete();
    if (!frames) {
        return;
    }
    mConsecutiveErrors = 0;
    logLine("     Acquired %d frames", *frames);
    mRequest.signal(); // after the line, which so comes before those of the block's collection
}
