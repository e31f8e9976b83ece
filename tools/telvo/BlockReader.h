#ifndef TELVO_TOOLS_TELVO_BLOCKREADER_H
#define TELVO_TOOLS_TELVO_BLOCKREADER_H

#include "CameraSession.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stop_token>
#include <thread>

namespace telvo
{

/// Recorded frames that lie one after the other in the camera's memory.
struct FrameBlock {
    std::uint32_t sequence;
    std::uint32_t first;
    std::uint32_t count;
};

/**
 * Reads recorded frames block by block. While the caller works on a block, the camera already sends
 * the next. The constructor starts the camera's block transfer, the destructor stops it.
 */
class BlockReader
{
  public:
    /// @param camera     borrowed until the end
    /// @param frameSize  bytes of a frame
    /// @param cancel     ends a wait for the camera
    BlockReader(const CameraSession& camera, FrameBlock frames, std::size_t frameSize,
                std::stop_token cancel);
    ~BlockReader();
    BlockReader(const BlockReader&) = delete;
    BlockReader& operator=(const BlockReader&) = delete;

    /// The next frames' bytes, valid until the next call; none after the last frame. Throws
    /// Failure, also when cancelled, or when a block does not come whole within a minute.
    std::span<const std::uint8_t> next();

  private:
    using Clock = std::chrono::steady_clock;

    void request();
    std::span<const std::uint8_t> await();
    void watch(const std::stop_token& stop);
    bool isOverdue() const { return Clock::now() > mDeadline.load(); }

    const CameraSession& mCamera;
    const std::stop_token mCancel;
    FrameBlock mRemaining; // not requested yet
    std::size_t mFrameSize;
    std::uint32_t mBlockFrames = 0; // most frames that a block takes
    std::uint32_t mRequested = 0;   // frames of the block on its way; 0: none
    std::atomic<Clock::time_point> mDeadline{Clock::time_point::max()}; // of the awaited block
    std::jthread mWatcher;
};

} // namespace telvo

#endif
