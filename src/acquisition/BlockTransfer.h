#ifndef TELVO_SRC_ACQUISITION_BLOCKTRANSFER_H
#define TELVO_SRC_ACQUISITION_BLOCKTRANSFER_H

#include "CQuorReadoutThread.h"
#include "CameraSettings.h"
#include "FrameHeader.h"
#include "RecordedBlock.h"
#include "SharedSlot.h"

#include <cstdint>
#include <memory>
#include <optional>

/// What became of the request for a block.
enum class [[nodiscard]] BlockRequest : std::int32_t{Sent = 0, Failed = -1, LinkLost = 1};

struct CollectedBlock {
    RequestResult result;
    std::int32_t frames;      ///< of a complete request, as the data
    const std::uint8_t* data; ///< the host's until the next block is collected or a transfer starts
};

/**
 * Recorded frames in blocks: requests to the readout thread, and its results to the host.
 *
 * Threads: the host's. While one of its threads waits in getRecordedFrameBlockResult, another one
 * may abort the request or end the transfer, and the stack's thread may abort it: both slots guard
 * themselves, and whoever got what is in them keeps it alive.
 */
class BlockTransfer
{
  public:
    /// @param camera  borrowed for this object's life
    explicit BlockTransfer(CameraSettings& camera) : mCamera(camera) {}

    /// Makes the readout thread, which begins the camera's acquisition, and the block.
    /// @param frameSize  bytes, not 0
    StartResult prepare(std::uint32_t frameSize);
    /// @return Failed: the system gives no thread
    StartResult start();
    /// A prepared thread that runs, not one whose preparation has failed.
    bool isRunning() const { return runningThread() != nullptr; }
    /// Hands the readout thread out to be stopped, if there is one.
    std::shared_ptr<Thread> takeThread();
    /// Ends the collection of the block, which the host may read until forgetBlock().
    void retireBlock();
    void forgetBlock() { mRetired.reset(); }

    /// Frames per block at the present geometry; nothing for one without an image.
    std::optional<std::uint32_t> getFrameBlockSize() const;
    BlockRequest getRecordedFrameBlock(std::uint32_t sequence, std::uint32_t firstFrame,
                                       std::uint32_t frameCount);
    /// @return nothing when the link is lost
    std::optional<CollectedBlock> getRecordedFrameBlockResult();
    /// @param index  of a frame in the block last collected
    std::optional<HeadedFrame> getRecordedFrameBlockInfo(std::uint32_t index) const;
    /// Any thread.
    void abortCurrentFrameBlockRequest();

  private:
    std::shared_ptr<CQuorReadoutThread> runningThread() const;
    /// Waits for the request's end and copies its frames, with memory for the present geometry
    /// behind them.
    CollectedBlock collect(CQuorReadoutThread& thread, const std::shared_ptr<RecordedBlock>& block);
    /// Makes the block hold so many images of the present geometry. @return false: it cannot
    bool holdsFrames(RecordedBlock& block, std::int32_t frames) const;

    CameraSettings& mCamera;
    SharedSlot<CQuorReadoutThread> mThread;
    SharedSlot<RecordedBlock> mBlock; // empty outside a block transfer
    std::shared_ptr<RecordedBlock> mRetired;
};

#endif
