/// Downloads at the desk.
#include "CameraDesk.h"

#include "DownloadFolder.h"
#include "DownloadMode.h"
#include "PanelMessages.h"
#include "ToolError.h"

#include <algorithm>

namespace telvo
{

namespace
{

DownloadOptions optionsOf(const DownloadRequest& request, const DownloadFolder& folder)
{
    const auto formats = DownloadFolder::formats();
    if (std::ranges::find(formats, request.format) == formats.end()) {
        throw Failure("telvo writes no " + request.format + " on this system; use tiff or png");
    }
    DownloadOptions options;
    options.format = request.format;
    options.sequence = request.sequence;
    options.range = {.first = request.first, .count = request.count, .every = request.every};
    options.out = folder.placeFor(request.name, request.format);
    options.fps = request.playbackFps;
    options.colour = request.colour;
    return options;
}

} // namespace

/// Answered as soon as it is clear that it can begin.
MessagePointer CameraDesk::handle(const DeskTask& task, const DownloadRequest& request)
{
    const CameraSession& camera = requireSession();
    requireRest();
    DownloadOptions options = optionsOf(request, mShared.folder);
    DownloadTarget target = prepareTarget(options);
    rest("about to download"); // ends a look at what was recorded, too
    auto mode = std::make_unique<DownloadMode>(camera, std::move(options), std::move(target),
                                               mShared.jobs, mStop);
    const std::uint32_t job = mode->job();
    enter(std::move(mode));
    setBusy(mMode->busy()); // until the next mode
    return answerMessage(task.id, {{"job", job}});
}

/// While a camera is busy for long, nothing that is asked of it waits for that: null, or the
/// answer.
MessagePointer CameraDesk::answerAtOnce(const DeskTask& task) const
{
    const std::lock_guard guard(mStateLock);
    if (mBusy == nullptr) {
        return nullptr;
    }
    if (std::holds_alternative<SettingsRequest>(task.command) && !mNewestSettings.empty()) {
        return answerMessage(task.id, {{"settings", mNewestSettings}});
    }
    if (std::holds_alternative<RecordingRequest>(task.command)) {
        return answerMessage(task.id, {{"sequences", mSequences}});
    }
    return errorMessage(task.id, mBusy);
}

void CameraDesk::setBusy(const char* reason)
{
    const std::lock_guard guard(mStateLock);
    mBusy = reason;
}

} // namespace telvo
