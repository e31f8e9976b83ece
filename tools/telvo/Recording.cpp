#include "Recording.h"

#include "CountText.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <string>

namespace telvo
{

RecordingInfo readRecordingInfo(const CameraSession& camera)
{
    RecordingInfo info{};
    std::uint32_t mode = 0;
    if (expGetRecordInfoFramePointer(&info.width, &info.height, &mode, &info.sequences,
                                     camera.id()) == nullptr) {
        camera.fail("the camera does not describe its recording ('telvo log' shows why)");
    }
    info.isRing = mode != 0;
    return info;
}

Recording selectSequence(const CameraSession& camera, const RecordingInfo& info,
                         std::uint32_t sequence)
{
    if (sequence >= info.sequences) {
        throw Failure("the recording has " + countText(info.sequences, "sequence") +
                      ", numbered from 0; 'telvo review' lists them");
    }
    std::uint32_t selected = sequence;
    expSetCurrentStreamSequence(&selected, camera.id());
    Recording recording{info, sequence, 0};
    const auto getCount = info.sequences > 1 ? expGetCurrentNumberOfFramesInSequence
                                             : expGetNumberOfAllRecordedFrames;
    if (getCount(&recording.frames, camera.id()) != 0) {
        camera.fail("the camera does not tell how much it recorded");
    }
    return recording;
}

} // namespace telvo
