#include "Download.h"

#include "CameraDownload.h"
#include "CancelFlag.h"
#include "CountText.h"
#include "DownloadTarget.h"
#include "EachCamera.h"
#include "Json.h"
#include "OutputPattern.h"
#include "SharedStatus.h"
#include "ToolError.h"
#include "TransferProgress.h"
#include "VideoFileSink.h"

#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace telvo
{

namespace
{

void requireSense(const DownloadOptions& options)
{
    const FileFormat format = parseFileFormat(options.format);
    if (isVideo(format) && !canWriteVideo()) {
        throw UsageError("telvo writes no videos on this system; use tiff or png");
    }
    if (isVideo(format) && options.resume) {
        throw UsageError("a video cannot be continued; download it anew");
    }
    requireKnownPlaces(options.out);
    requireKnownPlaces(options.sidecar);
    if (options.cameras.cameras.size() > 1 && !isPattern(options.out)) {
        throw UsageError(
            "several cameras need a file each: put {ip}, {serial} or {name} into --out, "
            "such as 'shot-{ip}.raw'");
    }
    if (!options.sidecar.empty() && isPattern(options.out) && !isPattern(options.sidecar)) {
        throw UsageError("put {ip}, {serial} or {name} into --sidecar, too");
    }
    if (options.colour && options.keepHeader) {
        throw UsageError("--keep-header is for pictures as the sensor has them, not for --colour; "
                         "leave one of them out");
    }
}

/// A camera that is connected, and where its frames go.
struct Job {
    DownloadOptions options; // with its own paths
    std::optional<DownloadTarget> target;
    std::unique_ptr<CameraSession> camera;
};

void connect(Job& job, const CameraAddress& address)
{
    const std::vector<Assignment> assignments = job.options.capture.assignments();
    job.camera = std::make_unique<CameraSession>(address, assignments);
    job.camera->requireNoRecording();
    job.camera->apply(assignments);
}

/// Shows on the terminal how it goes.
FollowTransfer showProgress(const TransferProgress::ShowText& beside)
{
    const auto progress = std::make_shared<std::optional<TransferProgress>>();
    return [progress, beside](const TransferStep& step) {
        if (!*progress) {
            progress->emplace(step.of, step.frameSize, beside);
        } else {
            (*progress)->show(step.done);
        }
    };
}

Json jsonOf(const Outcome& outcome, const Job& job)
{
    return {{"output", job.options.out.string()},
            {"sidecar", job.target->sidecar ? Json(job.target->sidecar->string()) : Json()},
            {"width", outcome.info.width},
            {"height", outcome.info.height},
            {"frames", outcome.series.written()},
            {"transferred", outcome.transferred},
            {"seconds", outcome.time.count()},
            {"complete", outcome.series.isWhole()},
            {"counter-check", verdictOf(outcome.series.counter, outcome.series.selection.count)}};
}

void printText(std::ostream& out, const Outcome& outcome, const DownloadOptions& options)
{
    const double seconds = outcome.time.count();
    const auto bytes = static_cast<double>(outcome.transferred * outcome.info.frameSize());
    out << countText(outcome.transferred, "frame") << " of " << outcome.info.width << 'x'
        << outcome.info.height << " in " << std::fixed << std::setprecision(1) << seconds << " s, "
        << (seconds > 0 ? bytes / seconds * 1e-6 : 0) << " MB/s: " << options.out.string() << '\n';
    if (outcome.series.counter.isContinuous()) {
        out << "frame counter: continuous, " << outcome.series.written() << " of "
            << countText(outcome.series.selection.count, "frame") << "\n";
    }
}

using Outcomes = std::vector<Verdict<Outcome>>;

void printAsJson(std::ostream& out, const Outcomes& outcomes, const std::vector<Job>& jobs,
                 const std::vector<CameraAddress>& cameras)
{
    Json all = Json::array();
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        all.push_back({{"camera", cameras[i].ip}});
        all.back().update(outcomes[i].result ? jsonOf(*outcomes[i].result, jobs[i])
                                             : Json{{"failure", outcomes[i].failure}});
    }
    const bool isOne = jobs.size() == 1;
    if (!isOne || outcomes.front().result) {
        out << (isOne ? all.front() : all).dump(2, ' ', false, Json::error_handler_t::replace)
            << '\n';
    }
}

void report(const Outcomes& outcomes, const std::vector<Job>& jobs,
            const std::vector<CameraAddress>& cameras)
{
    // Frames that go to the standard output have it for themselves.
    std::ostream& out = isStandardOutput(jobs.front().options.out) ? std::cerr : std::cout;
    if (jobs.front().options.json) {
        printAsJson(out, outcomes, jobs, cameras);
        return;
    }
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        if (outcomes[i].result) {
            out << (jobs.size() > 1 ? cameras[i].ip + ":\n" : "");
            printText(out, *outcomes[i].result, jobs[i].options);
        }
    }
}

/// Whether an interrupted download can go on where it ended.
bool canResume(const DownloadOptions& options)
{
    return !isVideo(parseFileFormat(options.format)) && kindOf(options.out) != TargetKind::Stream;
}

/// What is less than asked for; empty: nothing.
std::string shortfallOf(const Outcome& outcome, const DownloadOptions& options)
{
    const DownloadSeries& series = outcome.series;
    if (!outcome.interruption.empty()) {
        return outcome.interruption + "; " + options.out.string() + " holds " +
               std::to_string(series.written()) + " of " +
               countText(series.selection.count, "frame") +
               (canResume(options) ? ", --resume continues" : "");
    }
    if (!series.counter.isContinuous()) {
        return "frame counter: not continuous, " + countText(series.counter.missing(), "frame") +
               " missing in " + countText(series.counter.gapCount(), "place") +
               "; the sidecar lists them, the frames are kept";
    }
    return "";
}

/// @param camera  null where the paths are the camera's already
Job makeJob(const DownloadOptions& options, const CameraAddress* camera)
{
    Job job{.options = options, .target = {}, .camera = {}};
    if (camera != nullptr) {
        job.options.out = pathFor(options.out, *camera);
        job.options.sidecar = pathFor(options.sidecar, *camera);
    }
    job.target.emplace(prepareTarget(job.options));
    return job;
}

/// Only a pattern needs a camera; all else is found wrong before one is looked for.
std::vector<Job> makeJobs(const DownloadOptions& options, std::vector<CameraAddress>& cameras)
{
    std::vector<Job> jobs;
    if (!isPattern(options.out)) {
        jobs.push_back(makeJob(options, nullptr));
    }
    cameras = chooseCameras(options.cameras);
    for (std::size_t i = jobs.size(); i < cameras.size(); ++i) {
        jobs.push_back(makeJob(options, &cameras[i]));
    }
    return jobs;
}

/// Connects all, then transfers from those that are connected.
Outcomes transferAll(std::vector<Job>& jobs, const std::vector<CameraAddress>& cameras)
{
    const auto connected = tryEach<bool>(cameras, [&](std::size_t i, const CameraAddress& camera) {
        connect(jobs[i], camera);
        return true;
    });
    const CancelToken cancel;
    SharedStatus status(jobs.size());
    return tryEach<Outcome>(cameras, [&](std::size_t i, const CameraAddress&) {
        if (!connected[i].result) {
            throw Failure(connected[i].failure);
        }
        const auto show = [&status, i](const std::string& text) { status.show(i, text); };
        Outcome outcome =
            downloadFrom(*jobs[i].camera, jobs[i].options, *jobs[i].target,
                         showProgress(jobs.size() > 1 ? TransferProgress::ShowText(show) : nullptr),
                         cancel.token());
        jobs[i].camera.reset();
        return outcome;
    });
}

} // namespace

void runDownload(const DownloadOptions& options)
{
    requireSense(options);
    std::vector<CameraAddress> cameras;
    std::vector<Job> jobs = makeJobs(options, cameras);
    const Outcomes outcomes = transferAll(jobs, cameras);
    report(outcomes, jobs, cameras);

    std::vector<std::string> failures = failuresOf(outcomes);
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        if (outcomes[i].result) {
            failures[i] = shortfallOf(*outcomes[i].result, jobs[i].options);
        }
    }
    requireNone(failures, cameras);
}

} // namespace telvo
