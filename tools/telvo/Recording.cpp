#include "Recording.h"

#include "Setting.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <string>

namespace telvo
{

namespace
{

void useSize(const CameraSession& camera, const Recording& recording)
{
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    expGetWidth(&width, camera.id());
    expGetHeight(&height, camera.id());
    if (width != recording.width || height != recording.height) {
        camera.apply({makeAssignment(findSetting("width"), std::to_string(recording.width)),
                      makeAssignment(findSetting("height"), std::to_string(recording.height))});
    }
}

} // namespace

Recording findRecording(const CameraSession& camera, std::uint32_t sequence)
{
    Recording recording{};
    std::uint32_t mode = 0;
    std::uint32_t sequences = 0;
    if (expGetRecordInfoFramePointer(&recording.width, &recording.height, &mode, &sequences,
                                     camera.id()) == nullptr) {
        camera.requireLink();
        throw Failure("the camera does not describe its recording ('telvo log' shows why)");
    }
    if (sequence >= sequences) {
        throw Failure("the recording has " + std::to_string(sequences) + " sequences");
    }
    std::uint32_t selected = sequence;
    expSetCurrentStreamSequence(&selected, camera.id());
    const auto getCount =
        sequences > 1 ? expGetCurrentNumberOfFramesInSequence : expGetNumberOfAllRecordedFrames;
    if (getCount(&recording.frames, camera.id()) != 0) {
        throw Failure("the camera does not tell how much it recorded");
    }
    useSize(camera, recording);
    return recording;
}

} // namespace telvo
