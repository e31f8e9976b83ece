#include "DownloadMode.h"

#include "CameraDownload.h"
#include "CountText.h"
#include "IdleMode.h"
#include "PanelMessages.h"

#include <exception>
#include <utility>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kNewsInterval{250};

} // namespace

DownloadMode::DownloadMode(const CameraSession& camera, DownloadOptions options,
                           DownloadTarget target, DownloadJobs& jobs, const std::stop_token& end)
    : mCamera(camera),
      mOptions(std::move(options)),
      mTarget(std::move(target)),
      mJobs(jobs),
      mJob(jobs.begin()),
      mCancel(jobs.cancelToken(mJob)),
      mEnd(end, [&jobs, job = mJob] { jobs.cancel(job); })
{
}

DownloadMode::~DownloadMode()
{
    if (mResult.is_null()) {
        mResult = progress();
        mResult["state"] = "cancelled";
    }
    mJobs.end(mJob, mResult);
}

DeskMode::Step DownloadMode::step()
{
    mResult = transfer();
    mTarget.reset(); // nothing is half there any more when the end is told
    mCamera.requireLink();
    return {.next = std::make_unique<IdleMode>(mCamera, "the download has ended")};
}

/// @return what is told of its end
Json DownloadMode::transfer()
{
    try {
        const auto follow = [this](const TransferStep& step) { this->follow(step); };
        const Outcome outcome = downloadFrom(mCamera, mOptions, *mTarget, follow, mCancel);
        return result(outcome);
    } catch (const std::exception& error) {
        Json failure = progress();
        failure["state"] = mCancel.stop_requested() ? "cancelled" : "failed";
        failure["error"] = error.what();
        return failure;
    }
}

void DownloadMode::follow(const TransferStep& step)
{
    mStep = step;
    if (const auto now = Clock::now(); now >= mNextNews) {
        mNextNews = now + kNewsInterval;
        mJobs.tell(mJob, progress());
    }
}

Json DownloadMode::progress() const
{
    const std::chrono::duration<double> time = Clock::now() - mStart;
    const auto bytes = static_cast<double>(mStep.done * mStep.frameSize);
    Json json{{"camera", mCamera.address().mac},
              {"name", mOptions.out.filename().string()},
              {"state", "running"},
              {"frames", mStep.done},
              {"of", mStep.of}};
    if (mStep.done > 0 && time.count() > 0) {
        const double left = time.count() * static_cast<double>(mStep.of - mStep.done) /
                            static_cast<double>(mStep.done);
        json["megabytesPerSecond"] = tenths(bytes * 1e-6 / time.count());
        json["secondsLeft"] = tenths(left);
    }
    return json;
}

Json DownloadMode::result(const Outcome& outcome) const
{
    const DownloadSeries& series = outcome.series;
    Json json = progress();
    json.erase("secondsLeft");
    json["state"] = outcome.interruption.empty() ? "done"
                    : mCancel.stop_requested()   ? "cancelled"
                                                 : "failed";
    json["frames"] = series.written();
    json["of"] = series.selection.count;
    json["verdict"] = verdictOf(series.counter, series.selection.count);
    if (!outcome.interruption.empty()) {
        json["error"] = outcome.interruption + "; " + std::to_string(series.written()) + " of " +
                        countText(series.selection.count, "frame") + " are kept";
    }
    return json;
}

Json DownloadMode::state() const
{
    Json state{{"state", "downloading"},
               {"text", "downloading to " + mOptions.out.filename().string()},
               {"frames", mStep.done}};
    if (mStep.of > 0) {
        state["of"] = mStep.of;
    }
    return state;
}

} // namespace telvo
