/// Recordings at the desk.
#include "CameraDesk.h"

#include "FlashMode.h"
#include "IdleMode.h"
#include "PanelMessages.h"
#include "RecordMode.h"
#include "ToolError.h"

#include "TelvoDll.h"

namespace telvo
{

namespace
{

std::string windowText(const std::optional<Region>& window)
{
    return window ? std::to_string(window->x) + ',' + std::to_string(window->y) + ',' +
                        std::to_string(window->width) + ',' + std::to_string(window->height)
                  : "";
}

std::string textOf(const std::optional<std::uint32_t>& number)
{
    return number ? std::to_string(*number) : "";
}

RecordOptions optionsOf(const ArmRequest& request)
{
    RecordOptions options;
    options.frames = request.frames;
    options.seconds = request.seconds;
    options.mode = request.mode;
    options.sequences = request.sequences;
    options.pre = request.pre;
    options.post = request.post;
    options.trigger = request.trigger;
    options.window = windowText(request.window);
    options.threshold = textOf(request.threshold);
    options.condition = textOf(request.condition);
    return options;
}

void requireCard(const CameraSession& camera)
{
    if (!hasFlashCard(camera)) {
        throw Failure("the camera has no flash card");
    }
}

} // namespace

MessagePointer CameraDesk::handle(const DeskTask& task, const ArmRequest& request)
{
    const CameraSession& camera = requireSession();
    const RecordOptions options = optionsOf(request);
    options.check();
    camera.requireFeatures({"RecordStart", "RecordStop", "AcquisitionStart", "AcquisitionStop",
                            "RecordNumberOfFrames"},
                           "record");
    requireRest();
    rest("about to record"); // ends a look at what was recorded, too
    const RecordPlan plan = arm(camera, options);
    tellSettings(); // which the camera may have taken differently
    enter(std::make_unique<RecordMode>(camera, mPictures, plan));
    return answerMessage(task.id);
}

MessagePointer CameraDesk::handle(const DeskTask& task, const TriggerRequest& /*request*/)
{
    requireRecording().trigger();
    return answerMessage(task.id);
}

MessagePointer CameraDesk::handle(const DeskTask& task, const StopRequest& /*request*/)
{
    requireSession();
    if (mMode->isLive()) {
        requireRest();
    } else {
        enter(requireRecording().stop());
    }
    return answerMessage(task.id);
}

MessagePointer CameraDesk::handle(const DeskTask& task, const FlashRequest& request)
{
    const CameraSession& camera = requireSession();
    requireCard(camera);
    if (!request.on) {
        expStopWriteToFlash(camera.id());
        camera.requireLink();
        return answerMessage(task.id);
    }
    requireRest();
    rest("at rest");
    if (expStartWriteToFlash(camera.id()) != 0 || !isCopying(camera)) {
        camera.fail("the camera does not start the copy; has it recorded anything?");
    }
    enter(std::make_unique<FlashMode>(camera, FlashMode::After::Command));
    return answerMessage(task.id);
}

RecordingMode& CameraDesk::requireRecording()
{
    requireSession();
    if (auto* const recording = dynamic_cast<RecordingMode*>(mMode.get())) {
        return *recording;
    }
    throw Failure("no recording is running; arm one first");
}

} // namespace telvo
