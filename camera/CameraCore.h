#ifndef TELVO_CAMERA_CAMERACORE_H
#define TELVO_CAMERA_CAMERACORE_H

#include "Faults.h"
#include "FlashCard.h"
#include "SerialBridge.h"
#include "StreamSource.h"
#include "UserSets.h"

namespace camera
{

/// The parts of the camera, and what takes several of them. The rows of the feature table read and
/// work them. Time is handed in: between two calls of advance() it stands still. Not thread-safe.
class CameraCore
{
  public:
    using Status = gige::wire::GvcpStatus;

    /// Switched on at time 0. options and faults must outlive the camera.
    CameraCore(const CameraOptions& options, Faults& faults);
    CameraCore(const CameraCore&) = delete;
    CameraCore& operator=(const CameraCore&) = delete;

    /// It is now so late: a running recording takes what was exposed until then.
    void advance(CameraTime now);
    [[nodiscard]] CameraTime now() const { return mNow; }

    // Features, as the host sees them.
    [[nodiscard]] std::int64_t read(const Feature& feature) const;
    [[nodiscard]] Limits limits(const Feature& feature) const;
    [[nodiscard]] bool isAvailable(const Feature& feature) const;
    Status write(const Feature& feature, std::int64_t value);

    // What the rows do.
    [[nodiscard]] std::int64_t temperature() const; ///< degrees Celsius
    [[nodiscard]] std::int64_t state() const;
    /// The geometry must not change: live, recording, or locked by the host.
    [[nodiscard]] bool isImaging() const;
    /// Of the selected sequence; while recording, of the current one.
    [[nodiscard]] std::uint32_t framesOfSequence() const;
    [[nodiscard]] std::int64_t lastSelectedFrame() const;
    Status startAcquisition();
    void stopAcquisition();
    void changeFrameRate(std::uint32_t rate);
    Status startRecording();
    void stopRecording();
    Status writeFlashCard();
    Status requestFrame(std::uint32_t number);
    // Ends of a range: while a fault demands it, it may not be out of order, not even for a moment.
    Status acceptFirst(std::uint32_t number);
    Status acceptLast(std::uint32_t number);
    Status requestRange();
    void transmit(std::uint32_t count);
    Status loadUserSet();
    Status saveUserSet();

    /// The host is gone: stops sending, not recording.
    void dropHost();

    // Trigger input. False when nothing came of it.
    bool trigger();
    bool setTriggerInput(bool high);

    const CameraOptions& options;
    Faults& faults;
    Settings settings;
    Recorder recorder;
    LiveSource live;
    Playback playback;
    StreamSource stream;
    FlashCard flashCard;
    SerialBridge serial;
    UserSets userSets;

  private:
    Status check(const Feature& feature, std::int64_t value) const;
    Status acceptRange(std::uint32_t first, std::uint32_t last) const;
    void powerOn();
    void stopSending();
    void recordingEnded();
    bool writeSerialRegister(std::uint16_t address, std::uint32_t value);

    CameraTime mNow{0};
    bool mTriggerHigh = false;
};

} // namespace camera

#endif
