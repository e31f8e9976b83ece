#include "Commands.h"
#include "Download.h"
#include "OptionRange.h"

#include <limits>
#include <map>
#include <memory>
#include <string>

namespace telvo
{

namespace
{

constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t kMostFps = 1000;

void addRange(CLI::App& command, DownloadOptions& options)
{
    command.add_option("--sequence", options.sequence, "Recorded sequence, from 0")
        ->type_name("N")
        ->capture_default_str();
    CLI::Option* const first =
        command.add_option("--first", options.range.first, "First frame, from 0")
            ->type_name("N")
            ->capture_default_str();
    CLI::Option* const count =
        command.add_option("--count", options.range.count, "Frames to read [all from the first]")
            ->type_name("N")
            ->check(inRange(1, kMost));
    command.add_option("--every", options.range.every, "Read only every Nth frame")
        ->type_name("N")
        ->check(inRange(1, kMost))
        ->capture_default_str();
    command
        .add_option("--around-trigger", options.range.aroundTrigger,
                    "Read the first frame after the trigger and N frames on each side of it")
        ->type_name("N")
        ->excludes(first)
        ->excludes(count);
}

void addPictures(CLI::App& command, DownloadOptions& options)
{
    command
        .add_option("--format", options.format,
                    "raw: one file of all frames' bytes; tiff: one file of pages; png: a folder of "
                    "pictures; mkv: a video that keeps every pixel; mp4: a small video to show")
        ->type_name("raw|tiff|png|mkv|mp4")
        ->check(CLI::IsMember({"raw", "tiff", "png", "mkv", "mp4"}).description(""))
        ->capture_default_str();
    command.add_option("--playback-fps", options.fps, "Frames per second at which a video plays")
        ->type_name("N")
        ->check(inRange(1, kMostFps))
        ->capture_default_str();
    command.add_flag("--colour", options.colour,
                     "A colour camera's pictures in colours instead of as its sensor has them");
    const std::map<std::string, BayerPattern> patterns{{"RG", BayerPattern::RG},
                                                       {"GR", BayerPattern::GR},
                                                       {"GB", BayerPattern::GB},
                                                       {"BG", BayerPattern::BG}};
    command
        .add_option("--filter", options.filter,
                    "First two colours of a colour camera's first row [RG]")
        ->type_name("RG|GR|GB|BG")
        ->transform(CLI::Transformer(patterns).description(""));
    command.add_flag("--keep-header", options.keepHeader,
                     "Show the 16 bytes of header at a frame's start as pixels; else they are "
                     "covered, but in raw files");
}

void addOutput(CLI::App& command, DownloadOptions& options)
{
    command.add_option("--out", options.out, "File, or folder for png")
        ->required()
        ->type_name("PATH");
    command
        .add_option("--sidecar", options.sidecar,
                    "What is known of the frames, as JSON [PATH.json, in a folder recording.json]")
        ->type_name("FILE");
    CLI::Option* const force =
        command.add_flag("--force", options.force, "Replace a file that is there already");
    command
        .add_flag("--resume", options.resume,
                  "Continue an interrupted download to a raw or TIFF file or a folder of pictures")
        ->excludes(force);
    command.add_flag("--json", options.json, "Print the result as JSON");
}

} // namespace

void addDownloadCommand(CLI::App& app)
{
    CLI::App* const command =
        app.add_subcommand("download", "Read a recording out of a camera's memory");
    const auto options = std::make_shared<DownloadOptions>();
    addCameraOptions(*command, options->camera);
    addOutput(*command, *options);
    addPictures(*command, *options);
    addRange(*command, *options);
    options->capture.addTo(*command, {"packet-size", "resends"});
    command->footer("At the end the camera's own frame numbers are checked; a gap is an error, the "
                    "frames are\nkept. Ctrl-C ends it: the file then holds the frames so far, and "
                    "--resume continues it.");
    command->callback([options] { runDownload(*options); });
}

} // namespace telvo
