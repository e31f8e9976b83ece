#include "CameraDownload.h"

#include "Json.h"
#include "RecordedSize.h"
#include "RecordingDescription.h"
#include "ToolError.h"
#include "TriggerSearch.h"

#include "TelvoDll.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace telvo
{

namespace
{

/// Of the first two colours of the first row.
BayerPattern patternOf(const std::string& colours)
{
    static const std::map<std::string, BayerPattern> patterns{{"RG", BayerPattern::RG},
                                                              {"GR", BayerPattern::GR},
                                                              {"GB", BayerPattern::GB},
                                                              {"BG", BayerPattern::BG}};
    return patterns.at(colours);
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
        throw Failure("sequence " + std::to_string(recording.sequence) +
                      " has no frames; 'telvo review' lists the sequences");
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

} // namespace

bool hasColours(const CameraSession& camera)
{
    std::uint8_t isColour = 0;
    std::array<double, 3> factors{};
    expGetColorInformation(&isColour, &factors[0], &factors[1], &factors[2], camera.id());
    return isColour != 0;
}

Outcome downloadFrom(const CameraSession& camera, const DownloadOptions& options,
                     DownloadTarget& target, const FollowTransfer& follow,
                     const std::stop_token& cancel)
{
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
    return writeSeries(options, target, camera, recording, style, std::move(series), follow,
                       cancel);
}

} // namespace telvo
