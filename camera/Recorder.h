#ifndef TELVO_CAMERA_RECORDER_H
#define TELVO_CAMERA_RECORDER_H

#include "FrameClock.h"
#include "FrameStamp.h"
#include "Scene.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace camera
{

inline constexpr std::uint32_t kMaxSequences = 16;

/// How a recording is taken; fixed from its start to its end.
struct RecordSettings {
    SceneView view{};
    std::uint32_t pixelFormat = 0;
    std::uint32_t frameRate = 1;         ///< images a second
    bool continuous = false;             ///< over and over until a trigger; else until full
    std::uint32_t sequences = 1;         ///< 1..kMaxSequences; more than 1 only if continuous
    std::uint32_t framesPerSequence = 1; ///< what the memory holds of each
    std::uint32_t trailer = 0;           ///< frames taken after the trigger
    bool waitForTrigger = false;         ///< single mode: nothing is taken before a trigger
    std::uint32_t burst = 0;             ///< single mode: frames of one trigger, 0: all that fit
    bool whileTriggerActive = false;     ///< single mode: frames only while the input is active
    bool irigB = false;                  ///< frames carry the time of day
    std::uint8_t flags = 0;              ///< header flags of every frame
    /// True when the content of this frame shall trigger; empty: never.
    std::function<bool(const FrameStamp&)> contentTrigger{};
};

/// The recording memory. A picture follows from its sequence and number, so the memory keeps each
/// frame's header and counts what its pixels would take; a frame is drawn when it is read. Time is
/// handed in: advance() takes all frames that were exposed since the call before. Not thread-safe.
class Recorder
{
  public:
    /// Forgets the last recording and begins one; frame 0 is exposed now.
    void start(RecordSettings settings, CameraTime now);
    /// Ends a running recording after the frames exposed until now.
    void stop(CameraTime now);
    void advance(CameraTime now);
    /// The trigger input's pulse: continuous mode begins the trailer, single mode takes frames.
    void trigger(CameraTime now);
    /// The trigger input's level, for recording only while it is active.
    void setTriggerActive(CameraTime now, bool active);
    void setFrameRate(CameraTime now, std::uint32_t rate);

    [[nodiscard]] bool isRecording() const { return mRecording; }
    [[nodiscard]] bool isTrailerActive() const { return mRecording && mTrailerLeft.has_value(); }
    [[nodiscard]] std::uint32_t currentSequence() const { return mCurrent; }
    /// When the next frame is exposed, and how many were since the start: for the preview.
    [[nodiscard]] CameraTime nextExposure() const { return mClock.timeOf(mExposed); }
    [[nodiscard]] std::uint64_t exposed() const { return mExposed; }
    /// The frame exposed last, kept or not; none before the first.
    [[nodiscard]] const FrameStamp& newest() const { return mNewest; }
    /// Of the last recording; default values before the first.
    [[nodiscard]] const RecordSettings& settings() const { return mSettings; }
    [[nodiscard]] bool hasRecorded() const { return mHasRecorded; }
    // Of the recorded images; 0 before the first recording.
    [[nodiscard]] std::uint32_t recordedWidth() const
    {
        return mHasRecorded ? mSettings.view.width : 0;
    }
    [[nodiscard]] std::uint32_t recordedHeight() const
    {
        return mHasRecorded ? mSettings.view.height : 0;
    }

    /// Frames kept in a sequence; 0 for one that was not used.
    [[nodiscard]] std::uint32_t frames(std::uint32_t sequence) const;
    [[nodiscard]] std::uint32_t allFrames() const;
    /// A kept frame, index 0 being the oldest; nothing beyond the last.
    [[nodiscard]] std::optional<FrameStamp> frame(std::uint32_t sequence,
                                                  std::uint32_t index) const;
    /// Place in the sequence's memory behind its newest frame, 1..framesPerSequence; 0: unused.
    [[nodiscard]] std::uint32_t stopPointer(std::uint32_t sequence) const;

  private:
    struct Stored {
        std::uint32_t number = 0;
        std::uint8_t flags = 0;
        bool last = false;
        std::uint64_t time = 0;
    };
    struct Sequence { // a ring of framesPerSequence places, grown as it fills
        std::vector<Stored> frames{};
        std::uint32_t oldest = 0;
        std::uint32_t next = 0;
    };

    void take();
    [[nodiscard]] bool isTaking() const;
    [[nodiscard]] bool isFull() const;
    void keep(const FrameStamp& stamp);
    void lookForTrigger();
    void beginTrailer();
    void finishSequence();
    void markLast();

    RecordSettings mSettings;
    std::vector<Sequence> mSequences;
    FrameClock mClock;
    std::uint32_t mCurrent = 0;
    std::uint64_t mExposed = 0;    // frames since the clock's start
    std::uint32_t mNextNumber = 0; // of the next frame kept
    FrameStamp mNewest;
    std::optional<std::uint32_t> mTrailerLeft;
    std::uint32_t mBurstLeft = 0;
    bool mTriggered = false;     // single mode: the trigger that was waited for has come
    bool mTriggerActive = false; // level of the input
    bool mMarkTrigger = false;   // the next frame is the first after the trigger
    bool mRecording = false;
    bool mHasRecorded = false;
};

/// The 56-bit time of a frame's header: microseconds since power-on, or the time of day.
[[nodiscard]] std::uint64_t headerTime(CameraTime time, bool irigB);

} // namespace camera

#endif
