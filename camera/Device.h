#ifndef TELVO_CAMERA_DEVICE_H
#define TELVO_CAMERA_DEVICE_H

#include "CameraCore.h"

#include <condition_variable>
#include <mutex>

namespace camera
{

/// The camera itself, behind its registers and before its stream, for several threads and in real
/// time. Feature values that lie in bootstrap registers (addresses, privilege, stream channel) are
/// not here.
///
/// Thread-safe: one lock guards everything. The control thread writes and reads features, the
/// stream thread waits in nextBlock(), tests trigger.
class Device
{
  public:
    using Status = gige::wire::GvcpStatus;

    /// options and faults must outlive the device.
    Device(const CameraOptions& options, Faults& faults) : mCore(options, faults) {}

    // Features, as the host sees them.
    [[nodiscard]] std::int64_t read(FeatureId id) { return present()->read(featureOf(id)); }
    [[nodiscard]] Limits limits(FeatureId id) { return present()->limits(featureOf(id)); }
    [[nodiscard]] bool isAvailable(FeatureId id) { return locked()->isAvailable(featureOf(id)); }
    /// True while the geometry must not change: live, recording, or locked by the host.
    [[nodiscard]] bool isImaging() { return present()->isImaging(); }
    /// @return Success, WriteProtect, AccessDenied (not now), InvalidParameter (not this value)
    Status write(FeatureId id, std::int64_t value)
    {
        return changed(present()->write(featureOf(id), value));
    }

    [[nodiscard]] std::string userName() { return locked()->userSets.userName(); }
    void setUserName(const std::string& name)
    {
        const LockedCore core = locked();
        core->userSets.setUserName(name, core->settings);
    }

    // Serial bridge. Offsets and lengths in bytes.
    void writeTransmitBuffer(std::size_t offset, std::span<const std::uint8_t> bytes)
    {
        locked()->serial.write(offset, bytes);
    }
    [[nodiscard]] std::vector<std::uint8_t> transmitBuffer()
    {
        return locked()->serial.transmitBuffer();
    }
    [[nodiscard]] std::vector<std::uint8_t> receiveBuffer()
    {
        return locked()->serial.receiveBuffer();
    }

    // Stream.
    [[nodiscard]] StreamChannel channel() { return locked()->stream.channel(); }
    /// A channel that opens begins with block 1.
    void setChannel(const StreamChannel& channel);
    /// The host is gone: stops sending, not recording.
    void dropHost();
    /// The next block, waiting for it at most for `patience`.
    [[nodiscard]] std::optional<StreamOrder> nextBlock(std::chrono::milliseconds patience);
    /// The id after the newest block's: for a frame that is sent twice.
    [[nodiscard]] std::uint64_t takeBlockId() { return locked()->stream.takeBlockId(); }
    /// Ends a wait in nextBlock().
    void wake();

    // The world around the camera.
    /// A pulse on the trigger input. False when nothing came of it.
    bool trigger() { return changed(present()->trigger()); }
    /// The level of the trigger input; its active edge triggers as "ExtTriggerPolarity" says.
    bool setTriggerInput(bool high) { return changed(present()->setTriggerInput(high)); }
    /// Keeps the camera in FlashWrite for so long.
    void occupyFlash(std::chrono::milliseconds time) { locked()->flashCard.occupy(now() + time); }
    /// The frame at an index of a recorded sequence; nothing if there is none.
    [[nodiscard]] std::optional<FrameStamp> recordedFrame(std::uint32_t sequence,
                                                          std::uint32_t index)
    {
        return locked()->recorder.frame(sequence, index);
    }
    [[nodiscard]] SceneView recordedView() { return locked()->recorder.settings().view; }
    [[nodiscard]] SceneView liveView() { return locked()->settings.shownView(); }
    [[nodiscard]] CameraTime now() const { return std::chrono::steady_clock::now() - mPowerOn; }

  private:
    /// The core, with the lock held as long as this lives.
    class LockedCore
    {
      public:
        LockedCore(std::mutex& lock, CameraCore& core) : mHeld(lock), mCore(core) {}
        CameraCore* operator->() const { return &mCore; }

      private:
        std::unique_lock<std::mutex> mHeld;
        CameraCore& mCore;
    };

    [[nodiscard]] LockedCore locked() { return {mLock, mCore}; }
    /// The core at the present time.
    [[nodiscard]] LockedCore present();
    /// Lets nextBlock() look again, after a change that gave this result.
    template <typename Result>
    Result changed(Result result)
    {
        mChanged.notify_all();
        return result;
    }

    const std::chrono::steady_clock::time_point mPowerOn = std::chrono::steady_clock::now();

    std::mutex mLock; // guards all below
    std::condition_variable mChanged;
    CameraCore mCore;
    bool mWoken = false;
};

} // namespace camera

#endif
