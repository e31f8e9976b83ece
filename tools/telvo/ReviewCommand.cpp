#include "CameraChoice.h"
#include "CancelFlag.h"
#include "Commands.h"
#include "ContactSheet.h"
#include "ForcedOutput.h"
#include "FrameSource.h"
#include "PictureStyle.h"
#include "PngFile.h"
#include "RecordedSize.h"
#include "SequenceReview.h"
#include "TextTable.h"
#include "ToolError.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace telvo
{

namespace
{

constexpr std::uint32_t kEnds = 2; // a sequence's first and its last frame tell its time span

struct ReviewOptions {
    CameraOptions camera;
    std::uint32_t sequence = 0;
    std::uint32_t frames = 16;
    std::filesystem::path contactSheet;
    bool force = false;
    bool json = false;
};

/// Looks at some of the sequence's frames. @param sheet  where they are shown; null: nowhere
SequenceReview look(const CameraSession& camera, const Recording& recording, std::uint32_t count,
                    ContactSheet* sheet)
{
    const CancelFlag cancel;
    SequenceReview review{recording, {}};
    for (const std::uint32_t number : spreadFrames(recording.frames, count)) {
        cancel.check();
        const auto bytes = readFrame(camera, recording.info, number);
        review.headers.emplace(number, decodeFrameHeader(bytes));
        if (sheet != nullptr) {
            GrayImage picture({recording.info.width, recording.info.height, bytes});
            hideHeader(picture);
            sheet->add(picture.view());
        }
    }
    return review;
}

std::vector<SequenceReview> lookAtAll(const CameraSession& camera, const RecordingInfo& info,
                                      const ReviewOptions& options, ContactSheet& sheet)
{
    selectSequence(camera, info, options.sequence); // or none of them is looked at
    std::vector<SequenceReview> reviews;
    for (std::uint32_t sequence = 0; sequence < info.sequences; ++sequence) {
        const bool isShown = sequence == options.sequence && !options.contactSheet.empty();
        reviews.push_back(look(camera, selectSequence(camera, info, sequence),
                               isShown ? options.frames : kEnds, isShown ? &sheet : nullptr));
    }
    return reviews;
}

void printText(const std::vector<SequenceReview>& reviews, const ReviewOptions& options)
{
    std::vector<std::vector<std::string>> rows{reviewTitles()};
    for (const SequenceReview& review : reviews) {
        rows.push_back(rowOf(review));
    }
    std::cout << formatTable(rows);
    if (!options.contactSheet.empty()) {
        std::cout << "contact sheet: " << options.contactSheet.string() << '\n';
    }
}

void printAsJson(const std::vector<SequenceReview>& reviews, const RecordingInfo& info,
                 const ReviewOptions& options)
{
    Json json{{"width", info.width},
              {"height", info.height},
              {"mode", info.isRing ? "ring" : "single"},
              {"sequences", Json::array()},
              {"contact-sheet",
               options.contactSheet.empty() ? Json() : Json(options.contactSheet.string())}};
    for (const SequenceReview& review : reviews) {
        json["sequences"].push_back(jsonOf(review));
    }
    printJson(json);
}

void runReview(const ReviewOptions& options)
{
    if (!options.contactSheet.empty()) {
        requireFree(options.contactSheet, options.force);
        requireWritable(options.contactSheet, ifThere(options.force));
    }
    const CameraSession camera(chooseCamera(options.camera));
    camera.requireNoRecording();
    const RecordingInfo info = readRecordingInfo(camera);
    const RecordedSize size(camera, info);
    ContactSheet sheet(options.frames);
    const std::vector<SequenceReview> reviews = lookAtAll(camera, info, options, sheet);
    if (!options.contactSheet.empty()) {
        if (sheet.isEmpty()) {
            throw Failure("sequence " + std::to_string(options.sequence) +
                          " has no frames to show; 'telvo review' lists the sequences");
        }
        writePngFile(options.contactSheet, sheet.render().view(), ifThere(options.force));
    }
    if (options.json) {
        printAsJson(reviews, info, options);
    } else {
        printText(reviews, options);
    }
}

} // namespace

void addReviewCommand(const Command& app)
{
    const Command command = app.add("review", "Look at a recording before it is downloaded");
    const auto options = std::make_shared<ReviewOptions>();
    addCameraOptions(command, options->camera);
    const Option sheet =
        command
            .option("--contact-sheet", options->contactSheet,
                    "Write one PNG with small pictures of frames spread over the sequence")
            .type("FILE");
    command.option("--sequence", options->sequence, "Sequence on the sheet, from 0")
        .type("N")
        .showDefault();
    command
        .option("--frames", options->frames,
                "Frames on the sheet, 1 to 60; only with --contact-sheet")
        .type("N")
        .within(1U, std::uint32_t{ContactSheet::kMaxCells})
        .needs(sheet)
        .showDefault();
    command.flag("--force", options->force, "Replace a file that is there already");
    addJsonOption(command, options->json);
    command.footer("It prints each sequence's frames, size and time span. Only its first and last "
                   "frame are\nread for that, and those on the sheet.");
    command.onRun([options] { runReview(*options); });
}

} // namespace telvo
