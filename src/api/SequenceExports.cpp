#include "ExportFrame.h"
#include "RecordedSequences.h"

std::int32_t expGetCurrentRecordingSequence(std::uint32_t* sequence, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kGetCurrentRecordingSequence, sequence);
}

std::int32_t expGetMaxFramesPerSequence(std::uint32_t* count, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kGetMaxFramesPerSequence, count);
}

std::int32_t expSetCurrentStreamSequence(std::uint32_t* sequence, std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [](CameraSettings& camera, std::uint32_t* inOut) {
            return store(setCurrentStreamSequence(camera, asSigned(*inOut)), inOut);
        },
        sequence);
}

const std::uint8_t* expGetRecordInfoFramePointer(std::uint32_t* width, std::uint32_t* height,
                                                 std::uint32_t* recordMode,
                                                 std::uint32_t* sequences,
                                                 std::int32_t cameraId) noexcept
{
    const auto read = [](CQuorGrabber& grabber, std::uint32_t* widthOut, std::uint32_t* heightOut,
                         std::uint32_t* modeOut,
                         std::uint32_t* sequencesOut) -> const std::uint8_t* {
        const auto frame = grabber.recordedFrames().getRecordInfoFramePointer();
        if (!frame) {
            return nullptr;
        }
        *widthOut = frame->info.width;
        *heightOut = frame->info.height;
        *modeOut = frame->info.recordMode;
        *sequencesOut = plausibleSequences(frame->info);
        return frame->data;
    };
    return imageOnGrabber(cameraId, read, width, height, recordMode, sequences);
}

const std::uint8_t* expGetFramePointer(std::int64_t frame, std::uint64_t* header,
                                       std::uint8_t* flags, std::uint8_t* extra,
                                       std::int32_t cameraId) noexcept
{
    const auto read = [frame](CQuorGrabber& grabber) {
        return grabber.recordedFrames().getFramePointer(frame);
    };
    return frameOnGrabber(cameraId, read, header, flags, extra);
}
