#ifndef TELVO_CAMERA_VIRTUALCAMERA_H
#define TELVO_CAMERA_VIRTUALCAMERA_H

#include "CameraLog.h"
#include "CameraOptions.h"
#include "Faults.h"
#include "FrameStamp.h"
#include "Scene.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace camera
{

/// A camera on an address of this machine, port 3956. Any number may run in one process and on one
/// machine, each on its own address; the first byte of its MAC marks it as locally administered.
/// Thread-safe, except that start() and stop() are one thread's.
class VirtualCamera
{
  public:
    explicit VirtualCamera(CameraOptions options = {});
    ~VirtualCamera(); ///< stops it
    VirtualCamera(const VirtualCamera&) = delete;
    VirtualCamera& operator=(const VirtualCamera&) = delete;

    /// Switches the camera on. @return nothing on success, else one line that says why not
    [[nodiscard]] std::optional<std::string> start();
    /// Switches it off, as if its plug were pulled: no goodbye to the host.
    void stop();

    [[nodiscard]] const CameraOptions& options() const { return mOptions; }
    /// "02:54:45:00:00:0b"
    [[nodiscard]] std::string macText() const;
    /// False when DISCOVERY reaches the camera only if it is sent to its own address.
    [[nodiscard]] bool hearsBroadcasts() const;

    /// May be used before start(), too.
    [[nodiscard]] Faults& faults() { return mFaults; }
    [[nodiscard]] const CameraLog& log() const { return mLog; }

    // Only while it runs.
    /// A pulse on the trigger input. False when nothing came of it ("ExtTriggerEnable" is off).
    bool trigger();
    /// The level of the trigger input; "ExtTriggerPolarity" says which edge triggers.
    bool setTriggerInput(bool high);
    /// Keeps the camera state at FlashWrite for so long.
    void occupyFlash(std::chrono::milliseconds time);
    /// A feature's value as the host would read it.
    [[nodiscard]] std::int64_t value(FeatureId feature) const;

    // The truth about a recording, to compare with what the host got. Pixels: renderFrame().
    /// Header of a recorded frame, index 0 being the oldest; nothing if there is none.
    [[nodiscard]] std::optional<FrameStamp> recordedFrame(std::uint32_t sequence,
                                                          std::uint32_t index) const;
    [[nodiscard]] SceneView recordedView() const;
    [[nodiscard]] SceneView liveView() const;
    /// All bytes of a recorded frame, header included; empty if there is none.
    [[nodiscard]] std::vector<std::uint8_t> recordedBytes(std::uint32_t sequence,
                                                          std::uint32_t index) const;

  private:
    struct Running; // all that exists only while the camera is on

    CameraOptions mOptions;
    Faults mFaults;
    CameraLog mLog;
    std::unique_ptr<Running> mRunning;
};

/// 02:54:45 and the last three octets of the address, so unique on a machine.
[[nodiscard]] std::string defaultMac(const std::string& address);

} // namespace camera

#endif
