#include "Commands.h"
#include "Download.h"
#include "FileFormat.h"

#include <limits>
#include <memory>
#include <string>

namespace telvo
{

namespace
{

constexpr std::uint32_t kAnyNumber = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t kMostFps = 1000;

void addRange(const Command& command, DownloadOptions& options)
{
    command.option("--sequence", options.sequence, "Recorded sequence, from 0")
        .type("N")
        .showDefault();
    const Option first = command.option("--first", options.range.first, "First frame, from 0")
                             .type("N")
                             .showDefault();
    const Option count =
        command.option("--count", options.range.count, "Frames to read [all from the first]")
            .type("N")
            .within(1U, kAnyNumber);
    command.option("--every", options.range.every, "Read only every Nth frame")
        .type("N")
        .within(1U, kAnyNumber)
        .showDefault();
    command
        .option("--around-trigger", options.range.aroundTrigger,
                "Read the first frame after the trigger and N frames on each side of it")
        .type("N")
        .excludes(first)
        .excludes(count);
}

void addPictures(const Command& command, DownloadOptions& options)
{
    command
        .option("--format", options.format,
                "raw: one file of all frames' bytes; tiff: one file of pages; png: a folder of "
                "pictures; mkv: a video that keeps every pixel; mp4: a small video to show [what "
                "PATH ends with, such as .tif; else raw]")
        .type("raw|tiff|png|mkv|mp4")
        .oneOf(formatNames());
    command.option("--playback-fps", options.fps, "Frames per second at which a video plays")
        .type("N")
        .within(1U, kMostFps)
        .showDefault();
    command.flag("--colour", options.colour,
                 "A colour camera's pictures in colours instead of as its sensor has them");
    command
        .option("--filter", options.filter, "First two colours of a colour camera's first row [RG]")
        .type("RG|GR|GB|BG")
        .oneOf({"RG", "GR", "GB", "BG"});
    command.flag("--keep-header", options.keepHeader,
                 "Show the 16 bytes of header at a frame's start as pixels; else they are "
                 "covered, but in raw files");
}

void addOutput(const Command& command, DownloadOptions& options)
{
    command
        .option("--out", options.out,
                "File, or folder for png; {ip}, {serial} and {name} in it are the camera's, other "
                "words in braces are refused")
        .required()
        .type("PATH");
    command
        .option("--sidecar", options.sidecar,
                "What is known of the frames, as JSON [PATH.json, in a folder recording.json]")
        .type("FILE");
    const Option force =
        command.flag("--force", options.force, "Replace a file that is there already");
    command
        .flag("--resume", options.resume,
              "Continue an interrupted download to a raw or TIFF file or a folder of pictures")
        .excludes(force);
    command.flag("--json", options.json, "Print the result as JSON");
}

} // namespace

void addDownloadCommand(const Command& app)
{
    const Command command = app.add("download", "Read a recording out of a camera's memory");
    const auto options = std::make_shared<DownloadOptions>();
    addCamerasOptions(command, options->cameras);
    addOutput(command, *options);
    addPictures(command, *options);
    addRange(command, *options);
    options->capture.addTo(command, {"packet-size", "resends"});
    command.footer(
        "At the end the camera's own frame numbers are checked; a gap is an error, the "
        "frames are\nkept. Ctrl-C, a lost link or a full disk end it: the output then "
        "holds the frames so far, and\n--resume continues it. Where the tool was killed "
        "they are in a file OUT.XXXXXXXX.part,\nwhich --resume finds.\n"
        "Several cameras are read at once: --camera left --camera right --out 'shot-{name}.tif'");
    command.onRun([options] {
        if (options->format.empty()) {
            options->format = formatByName(options->out);
        }
        runDownload(*options);
    });
}

} // namespace telvo
