#include "BlockReader.h"

#include "CountText.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kAbortPoll{50};

/// A camera that sends some of a block again and again, and never all of it, has its limit here.
constexpr std::chrono::seconds kBlockTime{60};

} // namespace

BlockReader::BlockReader(const CameraSession& camera, FrameBlock frames, std::size_t frameSize,
                         std::stop_token cancel)
    : mCamera(camera), mCancel(std::move(cancel)), mRemaining(frames), mFrameSize(frameSize)
{
    if (expStartFrameBlockTransfer(camera.id()) != 0 ||
        expGetFrameBlockSize(&mBlockFrames, camera.id()) != 0 || mBlockFrames == 0) {
        expStopFrameBlockTransfer(camera.id());
        camera.fail("cannot start reading the recording ('telvo log' shows why)");
    }
    mWatcher = std::jthread([this](const std::stop_token& stop) { watch(stop); });
    request();
}

BlockReader::~BlockReader()
{
    mWatcher = {}; // ends it before the thread that it aborts goes
    expStopFrameBlockTransfer(mCamera.id());
}

std::span<const std::uint8_t> BlockReader::next()
{
    if (mRequested == 0) {
        return {};
    }
    const std::span<const std::uint8_t> block = await();
    request();
    return block;
}

/// A wait for a block ends only with the block, the link or an abort, so that somebody else has to
/// look at flag and time. The abort is repeated: a request that came later would forget it.
void BlockReader::watch(const std::stop_token& stop)
{
    while (!stop.stop_requested()) {
        if (mCancel.stop_requested() || isOverdue()) {
            expAbortCurrentFrameBlockRequest(mCamera.id());
        }
        std::this_thread::sleep_for(kAbortPoll);
    }
}

void BlockReader::request()
{
    mRequested = std::min(mBlockFrames, mRemaining.count);
    if (mRequested == 0) {
        return;
    }
    if (expGetRecordedFrameBlock(nullptr, mRemaining.sequence, mRemaining.first, mRequested,
                                 mCamera.id()) != 0) {
        mCamera.fail("the camera refuses frames " + std::to_string(mRemaining.first) + " to " +
                     std::to_string(mRemaining.first + mRequested - 1));
    }
    mRemaining.first += mRequested;
    mRemaining.count -= mRequested;
}

std::span<const std::uint8_t> BlockReader::await()
{
    std::int64_t frames = 0;
    std::uint32_t status = 0;
    mDeadline = Clock::now() + kBlockTime;
    const std::uint8_t* const block =
        expGetRecordedFrameBlockResult(nullptr, &frames, &status, mCamera.id());
    if (mCancel.stop_requested()) {
        throw Failure("cancelled");
    }
    if (isOverdue()) {
        mCamera.fail("a block of frames does not come whole ('telvo log' shows why)");
    }
    mDeadline = Clock::time_point::max();
    if (block == nullptr || frames != mRequested) {
        mCamera.fail("the camera delivered " + countText(frames, "frame") + " instead of " +
                     std::to_string(mRequested));
    }
    return {block, mRequested * mFrameSize};
}

} // namespace telvo
