#ifndef TELVO_CAMERA_DEVICE_H
#define TELVO_CAMERA_DEVICE_H

#include "CameraOptions.h"
#include "Faults.h"
#include "FeatureTable.h"
#include "GvcpStatus.h"
#include "Recorder.h"
#include "SerialLine.h"
#include "StreamOrder.h"
#include "UserSets.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <vector>

namespace camera
{

/**
 * The camera itself, behind its registers and before its stream: the values of all features, what
 * they do, the recording, and which block is to be sent next. Feature values that lie in bootstrap
 * registers (addresses, privilege, stream channel) are not here.
 *
 * Thread-safe: one lock guards everything. The control thread writes and reads features, the stream
 * thread waits in nextBlock(), tests trigger.
 */
class Device
{
  public:
    using Status = gige::wire::GvcpStatus;

    /** options and faults must outlive the device. */
    Device(const CameraOptions& options, Faults& faults);

    // Features, as the host sees them.
    [[nodiscard]] std::int64_t read(FeatureId id);
    [[nodiscard]] Limits limits(FeatureId id);
    [[nodiscard]] bool isAvailable(FeatureId id) const;
    /** True while the geometry must not change: live, recording, or locked by the host. */
    [[nodiscard]] bool isImaging();
    /** @return Success, WriteProtect, AccessDenied (not now), InvalidParameter (not this value) */
    Status write(FeatureId id, std::int64_t value);

    [[nodiscard]] const CameraModel& model() const { return mModel; }
    [[nodiscard]] SensorSize sensor() const { return mSensor; }
    [[nodiscard]] std::string userName();
    void setUserName(const std::string& name);

    // Serial bridge. Offsets and lengths in bytes.
    void writeTransmitBuffer(std::size_t offset, std::span<const std::uint8_t> bytes);
    [[nodiscard]] std::vector<std::uint8_t> transmitBuffer();
    [[nodiscard]] std::vector<std::uint8_t> receiveBuffer();

    // Stream.
    [[nodiscard]] StreamChannel channel();
    /** A channel that opens begins with block 1. */
    void setChannel(const StreamChannel& channel);
    /** The host is gone: stops sending, not recording. */
    void dropHost();
    /** The next block, waiting for it at most for `patience`. */
    [[nodiscard]] std::optional<StreamOrder> nextBlock(std::chrono::milliseconds patience);
    /** The id after the newest block's: for a frame that is sent twice. */
    [[nodiscard]] std::uint64_t takeBlockId();
    /** Ends a wait in nextBlock(). */
    void wake();

    // The world around the camera.
    /** A pulse on the trigger input. False when nothing came of it. */
    bool trigger();
    /** The level of the trigger input; its active edge triggers as "ExtTriggerPolarity" says. */
    bool setTriggerInput(bool high);
    /** Keeps the camera in FlashWrite for so long. */
    void occupyFlash(std::chrono::milliseconds time);
    /** The frame at an index of a recorded sequence; nothing if there is none. */
    [[nodiscard]] std::optional<FrameStamp> recordedFrame(std::uint32_t sequence,
                                                          std::uint32_t index);
    [[nodiscard]] SceneView recordedView();
    [[nodiscard]] SceneView liveView();
    [[nodiscard]] CameraTime now() const;

  private:
    enum class Acquisition : std::uint8_t { Stopped, Live, Playback };
    struct Request { // what the host asked of the recording
        bool info = false;
        std::uint32_t sequence = 0;
        std::uint32_t next = 0;
        std::uint32_t last = 0;
        std::uint32_t position = 0;
    };

    [[nodiscard]] std::int64_t get(FeatureId id) const
    {
        return mValues[static_cast<std::size_t>(id)];
    }
    [[nodiscard]] std::uint32_t get32(FeatureId id) const
    {
        return static_cast<std::uint32_t>(get(id));
    }
    [[nodiscard]] bool isOn(FeatureId id) const { return get(id) != 0; }
    void set(FeatureId id, std::int64_t value) { mValues[static_cast<std::size_t>(id)] = value; }

    // Device.cpp
    void initialiseValues();
    [[nodiscard]] bool hasOption(Option option) const;
    [[nodiscard]] std::int64_t valueOf(FeatureId id);
    [[nodiscard]] Status check(const Feature& feature, std::int64_t value);
    [[nodiscard]] Status store(FeatureId id, std::int64_t value);
    [[nodiscard]] Status execute(FeatureId id);
    [[nodiscard]] bool imaging() const;

    // DeviceGeometry.cpp
    [[nodiscard]] Limits limitsOf(FeatureId id) const;
    [[nodiscard]] SensorSize largestImage() const;
    [[nodiscard]] SceneView view() const;
    [[nodiscard]] SceneView shownView() const;
    [[nodiscard]] std::uint32_t framesPerSequence() const;
    [[nodiscard]] std::uint32_t sequences() const;
    void settle();

    // DeviceAcquisition.cpp
    [[nodiscard]] Status startAcquisition();
    void stopAcquisition();
    void changeFrameRate();
    [[nodiscard]] std::optional<StreamOrder> liveOrder(CameraTime time, CameraTime& due);
    [[nodiscard]] std::optional<StreamOrder> previewOrder(CameraTime& due);
    [[nodiscard]] StreamOrder order(const SceneView& view, const FrameStamp& stamp);
    [[nodiscard]] std::uint64_t nextBlockId();

    // DevicePlayback.cpp
    [[nodiscard]] Status requestInfo();
    [[nodiscard]] Status requestFrame(std::uint32_t number);
    [[nodiscard]] Status requestRange();
    [[nodiscard]] Status selectRange(FeatureId id, std::uint32_t number);
    [[nodiscard]] bool serialWrite(std::uint16_t address, std::uint32_t value);
    [[nodiscard]] Status transmit(std::uint32_t count);
    [[nodiscard]] std::optional<StreamOrder> playbackOrder();
    [[nodiscard]] StreamOrder infoOrder();

    // DeviceRecording.cpp
    void advance();
    [[nodiscard]] std::int64_t state() const;
    [[nodiscard]] Status startRecording();
    void stopRecording();
    void recordingEnded();
    [[nodiscard]] bool pulse();
    [[nodiscard]] Status startFlashWrite();
    [[nodiscard]] bool isFlashBusy() const;

    // DeviceUserSets.cpp
    void powerOn();
    [[nodiscard]] Status loadUserSet();
    [[nodiscard]] Status saveUserSet();
    void take(const std::map<FeatureId, std::int64_t>& settings);
    [[nodiscard]] bool keep();

    const CameraOptions& mOptions;
    Faults& mFaults;
    const CameraModel mModel;
    const SensorSize mSensor;
    const std::chrono::steady_clock::time_point mPowerOn = std::chrono::steady_clock::now();

    std::mutex mLock; // guards all below
    std::condition_variable mChanged;
    FeatureValues mValues{};
    FeatureValues mFactory{}; // what the "Default" user set loads
    StoredState mStored;
    StreamChannel mChannel;
    std::uint64_t mLastBlockId = 0;
    Acquisition mAcquisition = Acquisition::Stopped;
    FrameClock mLiveClock;
    std::uint64_t mLiveSent = 0;    // frames of the clock that are sent or left out
    std::uint64_t mLiveFirst = 0;   // frame number of the clock's frame 0
    std::uint64_t mPreviewSent = 0; // exposures of the recording that are sent or left out
    std::deque<Request> mRequests;
    Recorder mRecorder;
    std::optional<CameraTime> mFlashEnd;
    bool mTriggerHigh = false;
    bool mWoken = false;
    SerialLine mSerial;
    std::array<std::uint8_t, kSerialBufferLength> mTransmitBuffer{};
    std::uint32_t mTransmitted = 0; // bytes that the line took of the last write
};

} // namespace camera

#endif
