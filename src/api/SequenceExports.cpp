#include "ExportFrame.h"

std::int32_t expGetCurrentRecordingSequence(std::uint32_t* sequence, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getCurrentRecordingSequence, asSigned(sequence));
}

std::int32_t expGetMaxFramesPerSequence(std::uint32_t* count, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getMaxFramesPerSequence, asSigned(count));
}

std::int32_t expSetCurrentStreamSequence(std::uint32_t* sequence, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setCurrentStreamSequence, asSigned(sequence));
}

const std::uint8_t* expGetRecordInfoFramePointer(std::uint32_t* width, std::uint32_t* height,
                                                 std::uint32_t* recordMode,
                                                 std::uint32_t* sequences,
                                                 std::int32_t cameraId) noexcept
{
    return imageOnGrabber(cameraId, &CQuorGrabber::getRecordInfoFramePointer, width, height,
                          recordMode, sequences);
}

const std::uint8_t* expGetFramePointer(std::int64_t frame, std::uint64_t* header,
                                       std::uint8_t* flags, std::uint8_t* extra,
                                       std::int32_t cameraId) noexcept
{
    return imageOnGrabber(cameraId, &CQuorGrabber::getFramePointer, frame, header, flags, extra);
}
