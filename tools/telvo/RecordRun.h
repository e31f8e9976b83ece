#ifndef TELVO_TOOLS_TELVO_RECORDRUN_H
#define TELVO_TOOLS_TELVO_RECORDRUN_H

#include "CameraSession.h"
#include "Json.h"
#include "RecordPlan.h"
#include "RecordingEnd.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace telvo
{

/// Why a recording ended.
enum class EndCause : std::uint8_t { Trigger, Full, Frames, Time, Key, Stopped };

/// A recorded sequence.
struct RecordedSequence {
    std::uint32_t frames = 0;
    std::optional<std::uint32_t> trigger; // the first frame after it; may be behind the last
};

struct RecordOutcome {
    EndCause cause = EndCause::Stopped;
    RecordingEnd end{};
    std::uint32_t frames = 0; // of all sequences
    std::uint32_t width = 0;  // pixels
    std::uint32_t height = 0; // pixels
    std::vector<RecordedSequence> sequences{};
    std::string shortfall{}; // what was asked for and did not come about; may be empty

    std::string text() const;
    /// How it ended, as a part of a sentence.
    std::string endText() const;
    Json json() const;
};

/// The user's key, seen by all recordings that run.
using KeyPressed = std::function<bool()>;
/// Takes one short text on how it goes.
using ShowProgress = std::function<void(const std::string&)>;

/// How a recording goes.
struct RecordProgress {
    std::uint32_t frames = 0;
    std::chrono::duration<double> time{}; // since its start
    bool waits = false;                   // for the trigger
    bool isAfterTrigger = false;

    std::string text() const;
};

/// A recording that the constructor has started. It is ended by stop(), by the object's end at
/// last.
class RecordRun
{
  public:
    /// The camera is borrowed until the end. Throws Failure.
    RecordRun(const CameraSession& camera, RecordPlan plan, KeyPressed keyPressed);
    ~RecordRun();
    RecordRun(const RecordRun&) = delete;
    RecordRun& operator=(const RecordRun&) = delete;

    /// Whether it is to be ended, as planned or because the camera did. None: it goes on. Throws
    /// Failure.
    std::optional<EndCause> look();
    RecordProgress progress() const;

    /// The counter of the frame that the preview showed when the key was pressed; none: it was not.
    std::optional<std::uint16_t> keyCounter() const;

    /// As stopRecording().
    std::optional<RecordingEnd> stop();
    /// What came of it, once it is stopped.
    RecordOutcome outcome(EndCause cause, RecordingEnd end) const;

  private:
    using Clock = std::chrono::steady_clock;

    void count();
    bool isEndedByKey();
    bool hasFrames() const;
    bool isIdle() const;

    const CameraSession& mCamera;
    const RecordPlan mPlan;
    const KeyPressed mKeyPressed;
    const Clock::time_point mStart = Clock::now();
    std::uint32_t mCounted = 0;             // by the camera
    std::uint32_t mShown = 0;               // by its preview
    std::optional<std::uint32_t> mKeyFrame; // that the preview showed when the key was pressed
    std::uint32_t mTriggered = 0;           // sequences that had their trigger before the stop
    bool mIsRunning = false;
};

/// Starts the camera's recording, waits for its end as planned, and ends it. Throws Failure.
RecordOutcome record(const CameraSession& camera, const RecordPlan& plan,
                     const KeyPressed& keyPressed, const ShowProgress& show);

} // namespace telvo

#endif
