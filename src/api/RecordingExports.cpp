#include "ExportFrame.h"

std::int32_t expSetRecordMode(std::uint32_t mode, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setRecordMode, asSigned(mode));
}

std::int32_t expGetRecordMode(std::uint32_t* mode, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getRecordMode, asSigned(mode));
}

std::int32_t expSetNumberOfRecordSequences(std::uint32_t count, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setNumberOfRecordSequences, asSigned(count));
}

std::int32_t expGetNumberOfRecordSequences(std::uint32_t* count, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getNumberOfRecordSequences, asSigned(count));
}

std::int32_t expGetCurrentNumberOfFramesInSequence(std::uint32_t* count,
                                                   std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getNumberOfRecordedFramesPerSequence,
                     asSigned(count));
}

std::int32_t expGetLastRecordDimensions(std::uint32_t* width, std::uint32_t* height,
                                        std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getLastRecordDimensions, asSigned(width),
                     asSigned(height));
}

std::int32_t expGetNumberOfAllRecordedFrames(std::uint32_t* count, std::int32_t cameraId) noexcept
{
    return onKnownGrabber(cameraId, &CQuorGrabber::getNumberOfAllRecordedFrames, asSigned(count));
}

std::int32_t expGetRecordInfo(std::uint32_t* offsetX, std::uint32_t* offsetY, std::uint32_t* width,
                              std::uint32_t* height, std::int64_t* frameCount,
                              std::int64_t* reserved, void* /*unused*/,
                              std::int32_t cameraId) noexcept
{
    return onKnownGrabber(cameraId, &CQuorGrabber::getRecordInfo, asSigned(offsetX),
                          asSigned(offsetY), asSigned(width), asSigned(height), frameCount,
                          reserved);
}

std::int32_t expIsFlashCardAvailable(std::uint8_t* available, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isFlashCardAvailable, available);
}

std::int32_t expStartWriteToFlash(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::startWriteToFlash);
}

std::int32_t expStopWriteToFlash(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::stopWriteToFlash);
}

std::int32_t expEnableFlashWriteAfterRecordStop(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::enableFlashWriteAfterRecordStop, enable != 0);
}

std::int32_t expIsFlashWriteAfterRecordStopEnabled(std::uint8_t* enabled,
                                                   std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isFlashWriteAfterRecordStopEnabled, enabled);
}

std::int32_t expSetRecordAtPowerState(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setRecordAtPowerOnState, enable != 0);
}

std::int32_t expGetRecordAtPowerState(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getRecordAtPowerOnState, enabled);
}

std::int32_t expIsRecordAtPowerOnAvailable(std::uint8_t* available, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isRecordAtPowerOnAvailable, available);
}

std::int32_t expSetIRIGBState(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setIRIGBState, enable != 0);
}

std::int32_t expGetIRIGBState(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getIRIGBState, enabled);
}

std::int32_t expIsIRIGBAvailable(std::uint8_t* available, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isIRIGBAvailable, available);
}
