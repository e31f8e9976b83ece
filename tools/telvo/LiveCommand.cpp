#include "CameraChoice.h"
#include "CancelFlag.h"
#include "CaptureOptions.h"
#include "Commands.h"
#include "ContactSheet.h"
#include "CountText.h"
#include "FrameCounter.h"
#include "Json.h"
#include "LiveStream.h"
#include "LiveView.h"
#include "PngFile.h"
#include "PngFolderSink.h"
#include "ProgressBar.h"
#include "Terminal.h"
#include "ToolError.h"

#include <chrono>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <limits>
#include <memory>
#include <optional>
#include <string>

namespace telvo
{

namespace
{

constexpr std::uint64_t kEndless = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint32_t kMostPictures = 1'000'000; // as many as six digits number

struct LiveOptions {
    CameraOptions camera;
    CaptureOptions capture;
    std::uint32_t frames = 0;
    std::filesystem::path folder;
    std::filesystem::path contactSheet;
    bool view = false;
    bool json = false;
};

/// What came of a live series.
struct Series {
    FrameCounter counter;
    std::chrono::steady_clock::time_point first;
    std::chrono::steady_clock::time_point last;

    void add(std::span<const std::uint8_t> frame)
    {
        last = std::chrono::steady_clock::now();
        if (counter.received() == 0) {
            first = last;
        }
        counter.add(frameNumber(frame));
    }

    /// Frames per second that arrived; 0 for fewer than two.
    double rate() const
    {
        const double seconds = std::chrono::duration<double>(last - first).count();
        return seconds > 0 ? static_cast<double>(counter.received() - 1) / seconds : 0;
    }
};

/// Where the frames of a series go.
struct Destinations {
    std::optional<PngFolderSink> pictures;
    ContactSheet sheet;
    std::optional<LiveView> view;

    /// @return false: the user, who looks at them, wants no more
    bool take(const Series& series, GrayView frame)
    {
        if (pictures) {
            pictures->put(series.counter.received() - 1, frame);
        }
        sheet.add(frame);
        return !view || view->show(frame, series.rate(), series.counter.missing());
    }
};

/// Until the frames are there, or the user wants the end.
Series takeSeries(LiveStream& stream, std::uint64_t frames, Destinations& destinations)
{
    const CancelFlag cancel;
    Series series;
    std::optional<ProgressBar> progress;
    if (!destinations.view) {
        progress.emplace(std::cerr, isTerminal(stderr), "live", frames);
    }
    bool goesOn = true;
    while (goesOn && series.counter.received() < frames && !cancel.isSet()) {
        if (const auto frame = stream.next()) {
            series.add(frame->pixels);
            goesOn = destinations.take(series, *frame);
            if (progress) {
                progress->show(series.counter.received());
            }
        }
    }
    return series;
}

void finish(LiveStream& stream, Destinations& destinations)
{
    destinations.view.reset();
    {
        const Waiting waiting("the camera to end live mode");
        stream.stop();
    }
    if (destinations.pictures) {
        const Waiting waiting("the pictures that were taken to be written");
        destinations.pictures->finish();
    }
}

Json jsonOf(const Series& series, const LiveStream& stream)
{
    return {{"frames", series.counter.received()},
            {"width", stream.width()},
            {"height", stream.height()},
            {"framesPerSecond", series.rate()},
            {"lost", series.counter.missing()}};
}

void report(const Series& series, const LiveStream& stream, const LiveOptions& options)
{
    if (options.json) {
        return printJson(jsonOf(series, stream));
    }
    std::cout << countText(series.counter.received(), "frame") << " of " << stream.width() << 'x'
              << stream.height() << " at " << std::fixed << std::setprecision(1) << series.rate()
              << " frames/s, " << series.counter.missing() << " lost\n";
    if (!options.folder.empty()) {
        std::cout << "pictures: " << options.folder.string() << '\n';
    }
    if (!options.contactSheet.empty()) {
        std::cout << "contact sheet: " << options.contactSheet.string() << '\n';
    }
}

/// Throws Failure where it is less than was asked for. Who only looks has seen what got lost.
void judge(const Series& series, const LiveOptions& options)
{
    if (series.counter.missing() != 0 && !options.folder.empty()) {
        throw Failure(countText(series.counter.missing(), "frame") +
                      (series.counter.missing() == 1 ? " was" : " were") +
                      " lost; 'telvo doctor' looks for the reason");
    }
    if (series.counter.received() < options.frames) {
        throw Cancelled();
    }
}

void check(const LiveOptions& options)
{
    if (!options.view && options.frames == 0) {
        throw UsageError(
            "--frames is required, unless --view is given; 'telvo live --help' has all");
    }
    if (!options.view && options.folder.empty()) {
        throw UsageError("--out is required, unless --view is given; 'telvo live --help' has all");
    }
    if (!options.contactSheet.empty() && options.frames == 0) {
        throw UsageError("--contact-sheet needs --frames; say how many pictures it is of");
    }
    if (options.view && !isTerminal(stdout)) {
        throw Failure("--view needs a terminal; --out writes the pictures to files");
    }
}

void runLive(const LiveOptions& options)
{
    check(options);
    const std::vector<Assignment> settings = options.capture.assignments();
    if (!options.contactSheet.empty()) {
        requireWritable(options.contactSheet, IfThere::Refuse);
    }
    Destinations destinations{.pictures = {}, .sheet = ContactSheet(options.frames), .view = {}};
    if (!options.folder.empty()) {
        destinations.pictures.emplace(options.folder);
    }
    const CameraSession camera(chooseCamera(options.camera), settings);
    camera.requireNoRecording();
    camera.apply(settings);
    if (options.view) {
        destinations.view.emplace(camera);
    }
    LiveStream stream(camera);
    const std::uint64_t frames = options.frames == 0 ? kEndless : options.frames;
    const Series series = takeSeries(stream, frames, destinations);
    finish(stream, destinations);
    if (!options.contactSheet.empty() && !destinations.sheet.isEmpty()) {
        writePngFile(options.contactSheet, destinations.sheet.render().view());
    }
    report(series, stream, options);
    judge(series, options);
}

} // namespace

void addLiveCommand(const Command& app)
{
    const Command command = app.add("live", "Show live pictures, or write them as PNG files");
    const auto options = std::make_shared<LiveOptions>();
    addCameraOptions(command, options->camera);
    command.option("--frames", options->frames, "Pictures to take, 1 to 1000000")
        .type("N")
        .within(1U, kMostPictures);
    command.option("--out", options->folder, "Folder for frame-000000.png and so on")
        .type("FOLDER");
    command
        .option("--contact-sheet", options->contactSheet,
                "Write one PNG with small pictures of the whole series")
        .type("FILE");
    command.flag("--view", options->view,
                 "Show the picture in the terminal, with keys for exposure and gain");
    addJsonOption(command, options->json);
    options->capture.addTo(
        command, {"width", "height", "frame-rate", "exposure", "gain", "packet-size", "resends"});
    command.footer("At the end it prints the frame rate measured and the frames lost, counted by "
                   "the gaps in\nthe camera's own frame numbers. Ctrl-C ends it with what was "
                   "taken so far.\nExit status 1: frames were lost, or fewer taken than asked.");
    command.onRun([options] { runLive(*options); });
}

} // namespace telvo
