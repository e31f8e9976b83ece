#include "CameraChoice.h"
#include "CancelFlag.h"
#include "CaptureOptions.h"
#include "Commands.h"
#include "ContactSheet.h"
#include "FrameCounter.h"
#include "LiveStream.h"
#include "OptionRange.h"
#include "PngFile.h"
#include "PngFolderSink.h"
#include "ProgressBar.h"

#include <chrono>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>

namespace telvo
{

namespace
{

constexpr std::uint32_t kMostPictures = 1'000'000; // as many as six digits number

struct Options {
    CameraOptions camera;
    CaptureOptions capture;
    std::uint32_t frames = 0;
    std::filesystem::path folder;
    std::filesystem::path contactSheet;
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

Series takeSeries(LiveStream& stream, const Options& options, FrameSink& pictures,
                  ContactSheet& sheet)
{
    const CancelFlag cancel;
    Series series;
    ProgressBar progress = terminalProgress("live", options.frames);
    while (series.counter.received() < options.frames && !cancel.isSet()) {
        if (const auto frame = stream.next()) {
            pictures.put(series.counter.received(), *frame);
            series.add(frame->pixels);
            sheet.add(*frame);
            progress.show(series.counter.received());
        }
    }
    pictures.finish();
    return series;
}

void report(const Series& series, const LiveStream& stream, const Options& options)
{
    std::cout << series.counter.received() << " frames of " << stream.width() << 'x'
              << stream.height() << " at " << std::fixed << std::setprecision(1) << series.rate()
              << " frames/s, " << series.counter.missing() << " lost\n";
    std::cout << "pictures: " << options.folder.string() << '\n';
}

void runLive(const Options& options)
{
    const std::vector<Assignment> settings = options.capture.assignments();
    if (!options.contactSheet.empty()) {
        requireWritable(options.contactSheet, IfThere::Refuse);
    }
    PngFolderSink pictures(options.folder);
    const CameraSession camera(chooseCamera(options.camera), settings);
    camera.requireNoRecording();
    camera.apply(settings);

    ContactSheet sheet(options.frames);
    LiveStream stream(camera);
    const Series series = takeSeries(stream, options, pictures, sheet);
    stream.stop();
    report(series, stream, options);
    if (!options.contactSheet.empty() && !sheet.isEmpty()) {
        writePngFile(options.contactSheet, sheet.render().view());
        std::cout << "contact sheet: " << options.contactSheet.string() << '\n';
    }
}

} // namespace

void addLiveCommand(CLI::App& app)
{
    CLI::App* const command = app.add_subcommand("live", "Write live pictures as PNG files");
    const auto options = std::make_shared<Options>();
    addCameraOptions(*command, options->camera);
    command->add_option("--frames", options->frames, "Pictures to take, 1 to 1000000")
        ->required()
        ->type_name("N")
        ->check(inRange(1, kMostPictures));
    command->add_option("--out", options->folder, "Folder for frame-000000.png and so on")
        ->required()
        ->type_name("FOLDER");
    command
        ->add_option("--contact-sheet", options->contactSheet,
                     "Write one PNG with small pictures of the whole series")
        ->type_name("FILE");
    options->capture.addTo(*command,
                           {"width", "height", "frame-rate", "exposure", "packet-size", "resends"});
    command->footer("At the end it prints the frame rate measured and the frames lost, counted by "
                    "the gaps in\nthe camera's own frame numbers. Ctrl-C ends it with what was "
                    "taken so far.");
    command->callback([options] { runLive(*options); });
}

} // namespace telvo
