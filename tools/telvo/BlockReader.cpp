#include "BlockReader.h"

#include "ToolError.h"

#include "TelvoDll.h"

#include <algorithm>
#include <chrono>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kCancelPoll{50};

/// A wait for a block ends only with the block, the link or an abort, so that somebody else has to
/// look at the flag. The abort is repeated: a request that came later would forget it.
void abortWhenCancelled(const std::stop_token& stop, const CancelFlag& cancel,
                        std::int32_t cameraId)
{
    while (!stop.stop_requested()) {
        if (cancel.isSet()) {
            expAbortCurrentFrameBlockRequest(cameraId);
        }
        std::this_thread::sleep_for(kCancelPoll);
    }
}

} // namespace

BlockReader::BlockReader(const CameraSession& camera, FrameRange range, std::size_t frameSize,
                         const CancelFlag& cancel)
    : mCamera(camera), mCancel(cancel), mRemaining(range), mFrameSize(frameSize)
{
    if (expStartFrameBlockTransfer(camera.id()) != 0 ||
        expGetFrameBlockSize(&mBlockFrames, camera.id()) != 0 || mBlockFrames == 0) {
        expStopFrameBlockTransfer(camera.id());
        camera.requireLink();
        throw Failure("cannot start reading the recording ('telvo log' shows why)");
    }
    mCanceller = std::jthread([&cancel, id = camera.id()](const std::stop_token& stop) {
        abortWhenCancelled(stop, cancel, id);
    });
    request();
}

BlockReader::~BlockReader()
{
    mCanceller = {}; // ends it before the thread that it aborts goes
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

void BlockReader::request()
{
    mRequested = std::min(mBlockFrames, mRemaining.count);
    if (mRequested == 0) {
        return;
    }
    if (expGetRecordedFrameBlock(nullptr, mRemaining.sequence, mRemaining.first, mRequested,
                                 mCamera.id()) != 0) {
        mCamera.requireLink();
        throw Failure("the camera refuses frames " + std::to_string(mRemaining.first) + " to " +
                      std::to_string(mRemaining.first + mRequested - 1));
    }
    mRemaining.first += mRequested;
    mRemaining.count -= mRequested;
}

std::span<const std::uint8_t> BlockReader::await()
{
    std::int64_t frames = 0;
    std::uint32_t status = 0;
    const std::uint8_t* const block =
        expGetRecordedFrameBlockResult(nullptr, &frames, &status, mCamera.id());
    if (mCancel.isSet()) {
        throw Failure("cancelled");
    }
    mCamera.requireLink();
    if (block == nullptr || frames != mRequested) {
        throw Failure("the camera delivered " + std::to_string(frames) + " frames instead of " +
                      std::to_string(mRequested));
    }
    return {block, mRequested * mFrameSize};
}

} // namespace telvo
