#ifndef TELVO_TOOLS_TELVO_PANEL_DOWNLOADMODE_H
#define TELVO_TOOLS_TELVO_PANEL_DOWNLOADMODE_H

#include "CameraSession.h"
#include "DeskMode.h"
#include "Download.h"
#include "DownloadJobs.h"
#include "DownloadTarget.h"
#include "SeriesTransfer.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>

namespace telvo
{

/// A part of a recording is transferred to a file. That is one long step.
class DownloadMode : public DeskMode
{
  public:
    /// @param camera, jobs  borrowed until the end
    /// @param end           cancels the job, too
    DownloadMode(const CameraSession& camera, DownloadOptions options, DownloadTarget target,
                 DownloadJobs& jobs, const std::stop_token& end);
    /// Tells how the job has ended: now there may be another one.
    ~DownloadMode() override;

    std::uint32_t job() const { return mJob; }

    Step step() override;
    Json state() const override;
    const char* busy() const override { return "a download is running; wait for it, or cancel it"; }

  private:
    using Clock = std::chrono::steady_clock;

    Json transfer();
    void follow(const TransferStep& step);
    Json progress() const;
    Json result(const Outcome& outcome) const;

    const CameraSession& mCamera;
    const DownloadOptions mOptions;
    std::optional<DownloadTarget> mTarget; // none: used up
    DownloadJobs& mJobs;
    const std::uint32_t mJob;
    const std::stop_token mCancel;
    std::stop_callback<std::function<void()>> mEnd;
    TransferStep mStep{};
    Json mResult; // null: it has not ended
    const Clock::time_point mStart = Clock::now();
    Clock::time_point mNextNews{};
};

} // namespace telvo

#endif
