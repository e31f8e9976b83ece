#include "Download.h"

#include "CancelFlag.h"
#include "DownloadSeries.h"
#include "DownloadTarget.h"
#include "Json.h"
#include "RecordedSize.h"
#include "RecordingDescription.h"
#include "ToolError.h"
#include "TransferProgress.h"
#include "TriggerSearch.h"
#include "VideoFileSink.h"

#include "TelvoDll.h"

#include <array>
#include <chrono>
#include <iomanip>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace telvo
{

namespace
{

/// How often what is written is noted, for when the process is killed.
constexpr std::chrono::milliseconds kAccountInterval{200};

void requireSense(const DownloadOptions& options)
{
    const FileFormat format = parseFileFormat(options.format);
    if (isVideo(format) && !canWriteVideo()) {
        throw UsageError("telvo writes no videos on this system; use tiff or png");
    }
    if (isVideo(format) && options.resume) {
        throw UsageError("a video cannot be continued; download it anew");
    }
    if (options.colour && options.keepHeader) {
        throw UsageError("--keep-header is for pictures as the sensor has them, not for --colour");
    }
}

/// Of the first two colours of the first row.
BayerPattern patternOf(const std::string& colours)
{
    static const std::map<std::string, BayerPattern> patterns{{"RG", BayerPattern::RG},
                                                              {"GR", BayerPattern::GR},
                                                              {"GB", BayerPattern::GB},
                                                              {"BG", BayerPattern::BG}};
    return patterns.at(colours);
}

bool hasColours(const CameraSession& camera)
{
    std::uint8_t isColour = 0;
    std::array<double, 3> factors{};
    expGetColorInformation(&isColour, &factors[0], &factors[1], &factors[2], camera.id());
    return isColour != 0;
}

PictureStyle styleFor(const DownloadOptions& options, const CameraSession& camera)
{
    if (options.colour && !hasColours(camera)) {
        throw Failure("this camera has no colours; leave out --colour");
    }
    return {.keepHeader = options.keepHeader,
            .colour = options.colour ? std::optional(patternOf(options.filter)) : std::nullopt};
}

SequenceFacts factsOf(const CameraSession& camera, const Recording& recording)
{
    if (recording.frames == 0) {
        throw Failure("sequence " + std::to_string(recording.sequence) + " has no frames");
    }
    const auto headerOf = [&](std::uint32_t frame) {
        return decodeFrameHeader(readFrame(camera, recording.info, frame));
    };
    std::uint32_t capacity = 0;
    expGetMaxFramesPerSequence(&capacity, camera.id());
    const FrameHeader last = headerOf(recording.frames - 1);
    return {recording, findTrigger(recording.frames, headerOf),
            endCause(recording, last, capacity)};
}

DownloadSeries describeSeries(const DownloadOptions& options, const CameraSession& camera,
                              const SequenceFacts& facts, const PictureStyle& style, Json about)
{
    const FrameSelection selection = selectFrames(options.range, facts.recording, facts.trigger);
    const bool isRaw = parseFileFormat(options.format) == FileFormat::Raw;
    about["recording"] = describeSequence(facts);
    about["selection"] = describeSelection(selection);
    about["pictures"] = describePictures(
        facts.recording.info, {.fileFormat = options.format,
                               .style = style,
                               .isColourCamera = hasColours(camera),
                               .filter = patternOf(options.filter),
                               .hasHeader = (isRaw || options.keepHeader) && !style.colour});
    return {selection, {std::move(about), {}}, FrameCounter(selection.every)};
}

/// Takes frames until there are no more, or until one cannot be read: what is written by then is
/// good as far as it goes.
class FrameReading
{
  public:
    FrameReading(const CameraSession& camera, const Recording& recording, FrameSelection selection)
        : mCamera(camera), mRecording(recording), mSelection(selection)
    {
    }

    /// None: that was the last, or reason() says why there is none.
    std::optional<RecordedFrame> next()
    {
        try {
            if (!mSource) {
                mSource = openFrames(mCamera, mRecording, mSelection, mCancel);
            }
            return mSource->next();
        } catch (const Failure& failure) {
            mReason = failure.what();
            return std::nullopt;
        }
    }
    const std::string& reason() const { return mReason; }

  private:
    const CameraSession& mCamera;
    const Recording& mRecording;
    FrameSelection mSelection;
    CancelFlag mCancel;
    std::unique_ptr<FrameSource> mSource; // none before the first frame
    std::string mReason;                  // empty: none
};

/// Puts the frames of a series where they go, and keeps account of them.
class SeriesWriting
{
  public:
    /// @param sidecar  null: there is none
    SeriesWriting(DownloadSeries& series, FrameSink& sink, SidecarFile* sidecar)
        : mSeries(series), mSink(sink), mSidecar(sidecar), mThere(series.written())
    {
        keepAccount(mThere);
    }

    void put(const RecordingInfo& info, const RecordedFrame& frame)
    {
        mSink.put(frame.number, {info.width, info.height, frame.bytes});
        mSeries.add({frame.number, decodeFrameHeader(frame.bytes)});
        if (const auto now = Clock::now(); now >= mNextAccount) {
            mNextAccount = now + kAccountInterval;
            keepAccount(mThere + mSink.written());
        }
    }
    void flush() { mSink.flush(); }
    /// Drops the frames that could not be written.
    void cut() { mSeries.cut(mThere + mSink.written()); }
    std::uint32_t done() const { return mSeries.written() - mThere; }

  private:
    using Clock = std::chrono::steady_clock;

    void keepAccount(std::size_t frames)
    {
        if (mSidecar != nullptr) {
            mSidecar->keep(mSeries.sidecar.frames, frames);
        }
    }

    DownloadSeries& mSeries;
    FrameSink& mSink;
    SidecarFile* mSidecar;
    std::uint32_t mThere; // frames, when it began
    Clock::time_point mNextAccount;
};

/// @return why the frames end before their last; empty: they do not
std::string copyFrames(const CameraSession& camera, const Recording& recording,
                       const FrameSelection& frames, SeriesWriting& writing)
{
    TransferProgress progress(frames.count, recording.info.frameSize());
    FrameReading reading(camera, recording, frames);
    try {
        while (const auto frame = reading.next()) {
            writing.put(recording.info, *frame);
            progress.show(writing.done());
        }
        writing.flush();
        return reading.reason();
    } catch (const Failure& failure) { // a full disk
        writing.cut();
        return failure.what();
    }
}

/// What came of a download.
struct Outcome {
    DownloadSeries series;
    RecordingInfo info;
    std::unique_ptr<SidecarFile> sidecar; // null: none
    std::uint64_t transferred;            // frames, of this time
    std::chrono::duration<double> time;   // likewise
    std::string interruption;             // empty: none
};

std::unique_ptr<SidecarFile> openSidecar(const DownloadTarget& target, const DownloadSeries& series,
                                         const std::filesystem::path& output)
{
    return target.sidecar ? std::make_unique<SidecarFile>(*target.sidecar, target.sidecarIfThere,
                                                          series.sidecar.about, output,
                                                          target.ifThere, series.selection.count)
                          : nullptr;
}

/// Writes what is not there yet.
Outcome writeSeries(const DownloadOptions& options, DownloadTarget& target,
                    const CameraSession& camera, const Recording& recording,
                    const PictureStyle& style, DownloadSeries series)
{
    const std::uint32_t there = series.written();
    const FrameSelection rest = series.rest();
    const std::filesystem::path output = target.place.output();
    const auto sink = target.place.begin({.frameSize = recording.info.frameSize(),
                                          .there = there,
                                          .count = rest.count,
                                          .fps = options.fps},
                                         style);
    auto sidecar = openSidecar(target, series, output);
    const auto start = std::chrono::steady_clock::now();
    SeriesWriting writing(series, *sink, sidecar.get());
    std::string interruption =
        rest.count > 0 ? copyFrames(camera, recording, rest, writing) : std::string();
    if (series.written() == 0) {
        throw Failure(interruption);
    }
    sink->finish();
    const std::uint32_t transferred = writing.done();
    return {std::move(series),
            recording.info,
            std::move(sidecar),
            transferred,
            std::chrono::steady_clock::now() - start,
            std::move(interruption)};
}

Outcome transfer(const DownloadOptions& options, DownloadTarget& target)
{
    const std::vector<Assignment> assignments = options.capture.assignments();
    const CameraSession camera(chooseCamera(options.camera), assignments);
    camera.requireNoRecording();
    camera.apply(assignments);
    Json about{{"complete", false},
               {"camera", describeCamera(camera)},
               {"settings", describeSettings(camera)}};

    const RecordingInfo info = readRecordingInfo(camera);
    const RecordedSize size(camera, info);
    const Recording recording = selectSequence(camera, info, options.sequence);
    const PictureStyle style = styleFor(options, camera);
    DownloadSeries series =
        describeSeries(options, camera, factsOf(camera, recording), style, std::move(about));
    if (target.earlier) {
        continueSeries(series, *target.earlier, camera, info);
    }
    return writeSeries(options, target, camera, recording, style, std::move(series));
}

void saveSidecar(Outcome& outcome, const DownloadTarget& target)
{
    if (outcome.sidecar) {
        outcome.series.sidecar.about["complete"] = outcome.series.isWhole();
        outcome.sidecar->finish(outcome.series.sidecar, outcome.series.counter);
    }
    for (const std::filesystem::path& journal : target.journals) {
        std::error_code ignored; // it says nothing wrong
        remove(journal, ignored);
    }
}

void printJson(std::ostream& out, const Outcome& outcome, const DownloadOptions& options,
               const DownloadTarget& target)
{
    Json json{{"output", options.out.string()},
              {"sidecar", target.sidecar ? Json(target.sidecar->string()) : Json()},
              {"width", outcome.info.width},
              {"height", outcome.info.height},
              {"frames", outcome.series.written()},
              {"transferred", outcome.transferred},
              {"seconds", outcome.time.count()},
              {"complete", outcome.series.isWhole()},
              {"counter-check", verdictOf(outcome.series.counter, outcome.series.selection.count)}};
    out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void printText(std::ostream& out, const Outcome& outcome, const DownloadOptions& options)
{
    const double seconds = outcome.time.count();
    const double bytes = static_cast<double>(outcome.transferred * outcome.info.frameSize());
    out << outcome.transferred << " frames of " << outcome.info.width << 'x' << outcome.info.height
        << " in " << std::fixed << std::setprecision(1) << seconds << " s, "
        << (seconds > 0 ? bytes / seconds * 1e-6 : 0) << " MB/s: " << options.out.string() << '\n';
    if (outcome.series.counter.isContinuous()) {
        out << "frame counter: continuous, " << outcome.series.written() << " of "
            << outcome.series.selection.count << " frames\n";
    }
}

void report(const Outcome& outcome, const DownloadOptions& options, const DownloadTarget& target)
{
    // Frames that go to the standard output have it for themselves.
    std::ostream& out = isStandardOutput(options.out) ? std::cerr : std::cout;
    if (options.json) {
        printJson(out, outcome, options, target);
    } else {
        printText(out, outcome, options);
    }
}

/// Throws Failure where the result is less than asked for.
void judge(const Outcome& outcome, const DownloadOptions& options)
{
    const DownloadSeries& series = outcome.series;
    if (!outcome.interruption.empty()) {
        const bool canResume = !isVideo(parseFileFormat(options.format));
        throw Failure(outcome.interruption + "; " + options.out.string() + " holds " +
                      std::to_string(series.written()) + " of " +
                      std::to_string(series.selection.count) + " frames" +
                      (canResume ? ", --resume continues" : ""));
    }
    if (!series.counter.isContinuous()) {
        throw Failure("frame counter: not continuous, " + std::to_string(series.counter.missing()) +
                      " frames missing in " + std::to_string(series.counter.gapCount()) +
                      " places");
    }
}

} // namespace

void runDownload(const DownloadOptions& options)
{
    requireSense(options);
    DownloadTarget target = prepareTarget(options);
    Outcome outcome = transfer(options, target);
    saveSidecar(outcome, target);
    report(outcome, options, target);
    judge(outcome, options);
}

} // namespace telvo
