#include "BlockReader.h"
#include "CameraChoice.h"
#include "CancelFlag.h"
#include "CaptureOptions.h"
#include "Commands.h"
#include "FrameCounter.h"
#include "FrameSink.h"
#include "OptionRange.h"
#include "ProgressBar.h"
#include "Recording.h"
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

struct Options {
    CameraOptions camera;
    CaptureOptions capture;
    std::string format = "raw";
    std::uint32_t sequence = 0;
    std::uint32_t first = 0;
    std::optional<std::uint32_t> count;
    std::filesystem::path out;
};

FrameRange rangeOf(const Options& options, const Recording& recording)
{
    if (options.first >= recording.frames) {
        throw Failure("sequence " + std::to_string(options.sequence) + " has " +
                      std::to_string(recording.frames) + " frames");
    }
    const std::uint32_t rest = recording.frames - options.first;
    const std::uint32_t count = options.count.value_or(rest);
    if (count > rest) {
        throw Failure("only " + std::to_string(rest) + " frames were recorded from frame " +
                      std::to_string(options.first) + " on");
    }
    return {.sequence = options.sequence, .first = options.first, .count = count};
}

std::unique_ptr<FrameSink> makeSink(const Options& options)
{
    if (options.format == "png") {
        return std::make_unique<PngFolderSink>(options.out);
    }
    return std::make_unique<RawFileSink>(options.out);
}

void putBlock(std::span<const std::uint8_t> block, const Recording& recording,
              std::uint64_t firstNumber, FrameSink& sink, FrameCounter& counter)
{
    for (std::size_t at = 0; at < block.size(); at += recording.frameSize()) {
        const auto pixels = block.subspan(at, recording.frameSize());
        sink.put(firstNumber++, {recording.width, recording.height, pixels});
        counter.add(frameNumber(pixels));
    }
}

FrameCounter copyFrames(const CameraSession& camera, const Recording& recording, FrameRange range,
                        FrameSink& sink)
{
    const CancelFlag cancel;
    FrameCounter counter;
    ProgressBar progress = terminalProgress("download", range.count);
    BlockReader reader(camera, range, recording.frameSize(), cancel);
    for (auto block = reader.next(); !block.empty(); block = reader.next()) {
        putBlock(block, recording, range.first + counter.received(), sink, counter);
        progress.show(counter.received());
    }
    return counter;
}

/// Throws Failure where frames are missing or repeated.
void judge(const FrameCounter& counter)
{
    if (counter.missing() != 0 || counter.hasRepeats()) {
        throw Failure("frame counter: not continuous, " + std::to_string(counter.missing()) +
                      " frames missing");
    }
    std::cout << "frame counter: continuous\n";
}

void runDownload(const Options& options)
{
    const std::vector<Assignment> settings = options.capture.assignments();
    const CameraSession camera(chooseCamera(options.camera), settings);
    camera.requireNoRecording();
    camera.apply(settings);
    const Recording recording = findRecording(camera, options.sequence);
    const FrameRange range = rangeOf(options, recording);

    const std::unique_ptr<FrameSink> sink = makeSink(options);
    const auto start = std::chrono::steady_clock::now();
    const FrameCounter counter = copyFrames(camera, recording, range, *sink);
    sink->finish();
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;

    std::cout << counter.received() << " frames of " << recording.width << 'x' << recording.height
              << " in " << std::fixed << std::setprecision(1) << time.count()
              << " s: " << options.out.string() << '\n';
    judge(counter);
}

} // namespace

void addDownloadCommand(CLI::App& app)
{
    CLI::App* const command =
        app.add_subcommand("download", "Read a recording out of a camera's memory");
    const auto options = std::make_shared<Options>();
    addCameraOptions(*command, options->camera);
    command
        ->add_option("--format", options->format,
                     "raw: one file of all frames' bytes; png: a folder of pictures")
        ->type_name("raw|png")
        ->check(CLI::IsMember({"raw", "png"}).description(""))
        ->capture_default_str();
    command->add_option("--out", options->out, "File (raw) or folder (png)")
        ->required()
        ->type_name("PATH");
    command->add_option("--sequence", options->sequence, "Recorded sequence, from 0")
        ->type_name("N")
        ->capture_default_str();
    command->add_option("--first", options->first, "First frame, from 0")
        ->type_name("N")
        ->capture_default_str();
    command->add_option("--count", options->count, "Frames to read [all from the first]")
        ->type_name("N")
        ->check(inRange(1, std::numeric_limits<std::uint32_t>::max()));
    options->capture.addTo(*command, {"packet-size", "resends"});
    command->footer("At the end the camera's own frame numbers are checked; a gap is an error, the "
                    "frames are\nkept. Ctrl-C ends it: a raw file then is not written at all.");
    command->callback([options] { runDownload(*options); });
}

} // namespace telvo
