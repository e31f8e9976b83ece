#include "BlockTransfer.h"

#include "LogText.h"
#include "RecordedSequences.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace
{

constexpr std::uint32_t kBlockTarget = 5'800'320; // bytes; a larger frame makes a block of its own
constexpr std::uint32_t kMaxFramesPerBlock = 1000;
constexpr std::uint64_t kMaxBlockMemory = 268'435'456; // bytes of a block that has to grow

constexpr CollectedBlock kTransferEnded{
    .result = RequestResult::ThreadEnded, .frames = 0, .data = nullptr};

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

StartResult BlockTransfer::prepare(std::uint32_t frameSize)
{
    const std::uint32_t blockSize = blockSizeFor(frameSize);
    logLine("Frame size %d  Used block size: %d,  Frames per buffer %d",
            static_cast<std::int32_t>(frameSize), static_cast<std::int32_t>(blockSize),
            static_cast<std::int32_t>(blockSize / frameSize));
    const auto thread = std::make_shared<CQuorReadoutThread>();
    mThread.set(thread);
    const StartResult result =
        thread->initialize(mCamera.link, static_cast<std::uint32_t>(mCamera.geometry.width),
                           static_cast<std::uint32_t>(mCamera.geometry.height), blockSize,
                           mCamera.link.transfer.requestMode);
    if (result != StartResult::Started) {
        return result;
    }
    const auto block = std::make_shared<RecordedBlock>(RecordedBlock{.frameSize = frameSize});
    if (!growTo(block->data, blockSize)) {
        execute(mCamera.link.features->acquisitionStop); // begun by the thread's initialisation
        return StartResult::Failed;
    }
    mBlock.set(block);
    return StartResult::Started;
}

StartResult BlockTransfer::start()
{
    const std::shared_ptr<CQuorReadoutThread> thread = mThread.get();
    thread->start();
    return thread->isRunning() ? StartResult::Started : StartResult::Failed;
}

std::shared_ptr<Thread> BlockTransfer::takeThread()
{
    std::shared_ptr<Thread> thread = mThread.get();
    mThread.set(nullptr);
    return thread;
}

void BlockTransfer::retireBlock()
{
    if (std::shared_ptr<RecordedBlock> block = mBlock.get()) {
        mRetired = std::move(block);
        mBlock.set(nullptr);
    }
}

std::shared_ptr<CQuorReadoutThread> BlockTransfer::runningThread() const
{
    // One whose initialisation has failed stays, but would never answer.
    std::shared_ptr<CQuorReadoutThread> thread = mThread.get();
    return thread != nullptr && thread->isRunning() ? thread : nullptr;
}

std::optional<std::uint32_t> BlockTransfer::getFrameBlockSize() const
{
    const std::uint32_t frameSize = mCamera.geometry.frameSize();
    if (frameSize == 0) {
        return std::nullopt;
    }
    return std::min(blockSizeFor(frameSize) / frameSize, kMaxFramesPerBlock);
}

BlockRequest BlockTransfer::getRecordedFrameBlock(std::uint32_t sequence, std::uint32_t firstFrame,
                                                  std::uint32_t frameCount)
{
    constexpr std::uint32_t kMaxCount = std::numeric_limits<std::int32_t>::max();
    if (mCamera.link.isLost) {
        return BlockRequest::LinkLost;
    }
    const std::shared_ptr<CQuorReadoutThread> thread = runningThread();
    if (thread == nullptr || frameCount == 0 || frameCount > kMaxCount) {
        return BlockRequest::Failed;
    }
    // The number as clamped is not kept: the sequence is selected anew for every block but those of
    // the first one.
    const auto selected = static_cast<std::int32_t>(sequence);
    if (selected != kFirstSequence && !setCurrentStreamSequence(mCamera, selected).isDone()) {
        return BlockRequest::Failed;
    }
    const Outcome outcome =
        thread->requestFrames({.first = static_cast<std::int32_t>(firstFrame),
                               .last = static_cast<std::int32_t>(firstFrame + frameCount - 1)});
    if (mCamera.link.isLost) {
        return BlockRequest::LinkLost; // the loss may have aborted the request before this one
    }
    return outcome == Outcome::Done ? BlockRequest::Sent : BlockRequest::Failed;
}

std::optional<CollectedBlock> BlockTransfer::getRecordedFrameBlockResult()
{
    if (mCamera.link.isLost) {
        return std::nullopt;
    }
    const std::shared_ptr<CQuorReadoutThread> thread = runningThread();
    const std::shared_ptr<RecordedBlock> block = mBlock.get();
    return thread == nullptr || block == nullptr ? kTransferEnded : collect(*thread, block);
}

CollectedBlock BlockTransfer::collect(CQuorReadoutThread& thread,
                                      const std::shared_ptr<RecordedBlock>& block)
{
    const ReadoutRequest::Ending ending = thread.waitForResult();
    const std::int32_t frames = ending.acquired.value_or(0);
    if (ending.result != RequestResult::Complete) {
        return {.result = ending.result, .frames = 0, .data = nullptr};
    }
    if (!holdsFrames(*block, frames)) {
        return kTransferEnded;
    }
    copyBlock(thread, *block, frames);
    if (mBlock.get() != block) {
        return kTransferEnded; // a stop has come meanwhile
    }
    return {.result = RequestResult::Complete, .frames = frames, .data = block->data.data()};
}

bool BlockTransfer::holdsFrames(RecordedBlock& block, std::int32_t frames) const
{
    // The host may have asked for more frames than fit, or the image size may have grown.
    const std::uint64_t size =
        std::uint64_t{mCamera.geometry.frameSize()} * static_cast<std::uint32_t>(frames);
    return size != 0 && size <= kMaxBlockMemory && growTo(block.data, size);
}

std::optional<HeadedFrame> BlockTransfer::getRecordedFrameBlockInfo(std::uint32_t index) const
{
    const std::shared_ptr<RecordedBlock> block = mBlock.get();
    if (mCamera.link.isLost || block == nullptr) {
        return std::nullopt;
    }
    // The index is not checked against the frames collected, only against the block's end.
    const std::uint64_t offset = std::uint64_t{index} * block->frameSize;
    const std::uint32_t imageSize = mCamera.geometry.frameSize();
    if (imageSize == 0 || offset + imageSize > block->data.size()) {
        return std::nullopt;
    }
    return headedFrame(std::span(block->data).subspan(offset));
}

void BlockTransfer::abortCurrentFrameBlockRequest()
{
    if (const std::shared_ptr<CQuorReadoutThread> thread = mThread.get()) {
        thread->abortRequest();
    }
}
