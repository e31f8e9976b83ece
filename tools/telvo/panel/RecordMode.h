#ifndef TELVO_TOOLS_TELVO_PANEL_RECORDMODE_H
#define TELVO_TOOLS_TELVO_PANEL_RECORDMODE_H

#include "CameraSession.h"
#include "DeskMode.h"
#include "LivePictures.h"
#include "RecordPlan.h"
#include "RecordRun.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace telvo
{

/// A mode in which the camera records.
class RecordingMode : public DeskMode
{
  public:
    const char* busy() const override { return "a recording is running; stop it first"; }
    /// What the panel's user gives as a trigger. Throws Failure where none is waited for.
    virtual void trigger() = 0;
    /// Ends the recording. @return what comes then
    virtual std::unique_ptr<DeskMode> stop() = 0;
    /// The counter of the frame that was shown when the panel's user gave the trigger; none: he has
    /// not.
    virtual std::optional<std::uint16_t> givenTrigger() const { return std::nullopt; }
};

/// A recording that the panel has armed.
class RecordMode : public RecordingMode
{
  public:
    /// Starts it. All are borrowed until the end. Throws Failure.
    RecordMode(const CameraSession& camera, LivePictures& pictures, const RecordPlan& plan);

    Step step() override;
    Json state() const override;
    void trigger() override;
    std::unique_ptr<DeskMode> stop() override { return end(EndCause::Stopped); }
    std::optional<std::uint16_t> givenTrigger() const override { return mRun.keyCounter(); }

  private:
    using Clock = std::chrono::steady_clock;

    std::unique_ptr<DeskMode> end(EndCause cause);

    const CameraSession& mCamera;
    LivePictures& mPictures;
    const RecordPlan mPlan;
    const std::uint32_t mRoom; // frames that a sequence holds; 0: not known
    bool mIsTriggered = false;
    Clock::time_point mNextLook{};
    RecordRun mRun; // last: it asks whether the trigger was given
};

/// A recording that ran when the camera was connected, and goes on.
class FoundRecordingMode : public RecordingMode
{
  public:
    /// Both are borrowed until the end.
    FoundRecordingMode(const CameraSession& camera, LivePictures& pictures);

    Step step() override;
    Json state() const override;
    void trigger() override;
    std::unique_ptr<DeskMode> stop() override;

  private:
    using Clock = std::chrono::steady_clock;

    const CameraSession& mCamera;
    LivePictures& mPictures;
    Clock::time_point mNextLook{};
};

} // namespace telvo

#endif
