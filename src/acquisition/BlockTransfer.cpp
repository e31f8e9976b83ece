// Recorded frames in blocks: requests to the readout thread, and its results to the host.
#include "CQuorGrabber.h"
#include "CQuorReadoutThread.h"
#include "Commands.h"
#include "FrameHeader.h"
#include "LogText.h"

#include <algorithm>
#include <limits>

namespace
{

constexpr std::uint32_t kBlockTarget = 5'800'320; // bytes; a larger frame makes a block of its own
constexpr std::uint32_t kMaxFramesPerBlock = 1000;
constexpr std::uint64_t kMaxBlockMemory = 268'435'456; // bytes of a block that has to grow
constexpr std::int32_t kFirstSequence = 0;             // selected by the start of a transfer
constexpr std::int32_t kLinkLost = 1;
constexpr auto kComplete = static_cast<std::int32_t>(RequestResult::Complete);
constexpr auto kTransferEnded = static_cast<std::int32_t>(RequestResult::ThreadEnded);

constexpr std::uint32_t blockSizeFor(std::uint32_t frameSize)
{
    return std::max(kBlockTarget, frameSize);
}

/// The counters of all frames, so that the gaps can be judged. The texts are in German, coded in
/// Windows-1252, and known to those who read these lines.
void logGaps(const std::vector<FrameCounterCheck::Gap>& gaps, const BlockCounters& counters,
             std::uint32_t frameSize, std::int32_t frameCount)
{
    for (const FrameCounterCheck::Gap& gap : gaps) {
        logLine("======> CQuorGrabber::getRecordedFrameBlockResult: Sequenzfehler, Vorg\xE4"
                "nger frame = %d, Nachfolger frame = %d, )",
                gap.previous, gap.counter);
    }
    if (gaps.empty()) {
        return;
    }
    // The size is in 16-bit words.
    logLine("======> CQuorGrabber::getRecordedFrameBlockResult: Framesize = %d, Frames im Block: "
            "%d, Anzahl der Sequenzfehler = %d)",
            static_cast<std::int32_t>(frameSize / 2), frameCount,
            static_cast<std::int32_t>(gaps.size()));
    for (std::size_t frame = 0; frame < counters.size(); ++frame) {
        logLine("======> CQuorGrabber::getRecordedFrameBlockResult: Frame Nr. %d im Block hat "
                "Framcounter = %d",
                static_cast<std::int32_t>(frame), counters[frame]);
    }
}

void copyBlock(CQuorReadoutThread& thread, RecordedBlock& target, std::int32_t frameCount)
{
    thread.readBlock([&](std::span<const std::uint8_t> block) {
        const BlockCounters counters(block, target.frameSize, static_cast<std::size_t>(frameCount));
        logGaps(target.counterCheck.check(counters), counters, target.frameSize, frameCount);
        std::copy_n(block.begin(), std::min(block.size(), target.data.size()), target.data.begin());
    });
}

} // namespace

std::int32_t CQuorGrabber::getFrameBlockSize(std::uint32_t* frames) const
{
    const std::uint32_t frameSize = mGeometry.frameSize();
    if (frameSize == 0) {
        return kFailure;
    }
    *frames = std::min(blockSizeFor(frameSize) / frameSize, kMaxFramesPerBlock);
    return kSuccess;
}

std::int32_t CQuorGrabber::startFrameBlockTransfer()
{
    logLine("Start Frame Block Transfer.");
    if (!canAcquire()) {
        return kFailure;
    }
    stopPlaybackMode();
    // Once more, now that the queue is empty.
    execute(mFeatures->acquisitionStop);
    std::int32_t sequence = kFirstSequence;
    if (setCurrentStreamSequence(&sequence) != kSuccess) {
        return kFailure;
    }
    const std::uint32_t frameSize = mGeometry.frameSize();
    if (frameSize == 0) {
        return kFailure;
    }
    const std::int32_t result = startReadoutThread(frameSize);
    if (result != kSuccess) {
        return result;
    }
    mMode.current = Mode::BlockTransfer;
    const std::shared_ptr<CQuorReadoutThread> thread = mReadoutThread.get();
    thread->start();
    return thread->isRunning() ? kSuccess : kFailure; // the system may give no thread
}

std::int32_t CQuorGrabber::startReadoutThread(std::uint32_t frameSize)
{
    clearEarlierMode();
    const std::uint32_t blockSize = blockSizeFor(frameSize);
    logLine("Frame size %d  Used block size: %d,  Frames per buffer %d",
            static_cast<std::int32_t>(frameSize), static_cast<std::int32_t>(blockSize),
            static_cast<std::int32_t>(blockSize / frameSize));
    const auto thread = std::make_shared<CQuorReadoutThread>();
    mReadoutThread.set(thread);
    const std::int32_t result = thread->initialize(
        this, static_cast<std::uint32_t>(mGeometry.width),
        static_cast<std::uint32_t>(mGeometry.height), blockSize, mTransfer.requestMode);
    if (result != kSuccess) {
        return result;
    }
    const auto block = std::make_shared<RecordedBlock>(RecordedBlock{.frameSize = frameSize});
    if (!growTo(block->data, blockSize)) {
        execute(mFeatures->acquisitionStop); // begun by the thread's initialisation
        return kFailure;
    }
    mBlock.set(block);
    return kSuccess;
}

std::shared_ptr<CQuorReadoutThread> CQuorGrabber::runningReadoutThread() const
{
    // One whose initialisation has failed stays, but would never answer.
    std::shared_ptr<CQuorReadoutThread> thread = mReadoutThread.get();
    return thread != nullptr && thread->isRunning() ? thread : nullptr;
}

std::int32_t CQuorGrabber::getRecordedFrameBlock(std::uint32_t sequence, std::uint32_t firstFrame,
                                                 std::uint32_t frameCount)
{
    constexpr std::uint32_t kMaxCount = std::numeric_limits<std::int32_t>::max();
    if (mIsConnectionLost) {
        return kLinkLost;
    }
    const std::shared_ptr<CQuorReadoutThread> thread = runningReadoutThread();
    if (thread == nullptr || frameCount == 0 || frameCount > kMaxCount) {
        return kFailure;
    }
    // The number as clamped is not kept: the sequence is selected anew for every block but those of
    // the first one.
    auto selected = static_cast<std::int32_t>(sequence);
    if (selected != kFirstSequence && setCurrentStreamSequence(&selected) != kSuccess) {
        return kFailure;
    }
    const auto first = static_cast<std::int32_t>(firstFrame);
    const auto last = static_cast<std::int32_t>(firstFrame + frameCount - 1);
    const std::int32_t result = thread->requestFrames(first, last);
    // A loss in the meantime may have aborted the request before this one.
    return mIsConnectionLost ? kLinkLost : result;
}

const std::uint8_t* CQuorGrabber::getRecordedFrameBlockResult(std::int64_t* frames,
                                                              std::uint32_t* status)
{
    if (mIsConnectionLost) {
        return nullptr;
    }
    const std::shared_ptr<CQuorReadoutThread> thread = runningReadoutThread();
    const std::shared_ptr<RecordedBlock> block = mBlock.get();
    std::int32_t frameCount = 0;
    const std::int32_t result = thread == nullptr || block == nullptr
                                    ? kTransferEnded
                                    : collectBlock(*thread, block, &frameCount);
    *status = static_cast<std::uint32_t>(result);
    if (result != kComplete) {
        return nullptr;
    }
    *frames = frameCount;
    return block->data.data();
}

bool CQuorGrabber::holdsFrames(RecordedBlock& block, std::int32_t frames) const
{
    // The host may have asked for more frames than fit, or the image size may have grown.
    const std::uint64_t size =
        std::uint64_t{mGeometry.frameSize()} * static_cast<std::uint32_t>(frames);
    return size != 0 && size <= kMaxBlockMemory && growTo(block.data, size);
}

std::int32_t CQuorGrabber::collectBlock(CQuorReadoutThread& thread,
                                        const std::shared_ptr<RecordedBlock>& block,
                                        std::int32_t* frames)
{
    const std::int32_t result = thread.waitForResult(frames);
    if (result != kComplete) {
        return result;
    }
    if (!holdsFrames(*block, *frames)) {
        return kTransferEnded;
    }
    copyBlock(thread, *block, *frames);
    return mBlock.get() == block ? kComplete : kTransferEnded; // a stop may have come meanwhile
}

const std::uint8_t* CQuorGrabber::getRecordedFrameBlockInfo(std::uint32_t index,
                                                            std::uint64_t* header,
                                                            std::uint8_t* flags,
                                                            std::uint8_t* extra) const
{
    const std::shared_ptr<RecordedBlock> block = mBlock.get();
    if (mIsConnectionLost || block == nullptr) {
        return nullptr;
    }
    // The index is not checked against the frames collected, only against the block's end.
    const std::uint64_t offset = std::uint64_t{index} * block->frameSize;
    const std::uint32_t imageSize = mGeometry.frameSize();
    if (imageSize == 0 || offset + imageSize > block->data.size()) {
        return nullptr;
    }
    const std::span<const std::uint8_t> frame = std::span(block->data).subspan(offset);
    const auto decoded = decodeFrameHeader(frame);
    if (!decoded) {
        return nullptr;
    }
    *header = decoded->value;
    *flags = decoded->flags;
    *extra = decoded->extra;
    return frame.data();
}

std::int32_t CQuorGrabber::abortCurrentFrameBlockRequest()
{
    if (const std::shared_ptr<CQuorReadoutThread> thread = mReadoutThread.get()) {
        thread->abortRequest();
    }
    return kSuccess;
}
