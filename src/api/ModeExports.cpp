#include "ExportFrame.h"

std::int32_t expStartLiveMode(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::startLiveMode);
}

std::int32_t expStopLiveMode(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::stopCurrentMode);
}

std::int32_t expPauseLiveMode(std::uint8_t pause, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::pauseLiveMode, pause != 0);
}

std::int32_t expStartRecordMode(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::startRecordMode, false);
}

std::int32_t expStopRecordMode(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::stopCurrentMode);
}

std::int32_t expAbortRecording(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::abortRecording);
}

std::int32_t expIsStateIdle(std::uint8_t* idle, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isStateIdle, idle);
}

std::int32_t expIsStateFlashWrite(std::uint8_t* flashWrite, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isStateFlashWrite, flashWrite);
}

std::int32_t expIsTrailerRecordingActive(std::uint8_t* active, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isTrailerRecordingActive, active);
}

std::int32_t expGetCurrentNumberOfImages(std::int32_t cameraId) noexcept
{
    return callGrabber(cameraId, std::int32_t{0}, &CQuorGrabber::getCurrentNumberOfImages);
}

const std::uint8_t* expGetPreviewImage(std::uint8_t* status, std::uint8_t* last,
                                       std::int32_t cameraId) noexcept
{
    return imageOnGrabber(cameraId, &CQuorGrabber::getPreviewImage, status, last);
}

const std::uint8_t* expGetSingleImage(std::uint32_t* result, std::uint32_t* flag,
                                      std::uint8_t* status, std::uint8_t* last,
                                      std::int32_t cameraId) noexcept
{
    return imageOnGrabber(cameraId, &CQuorGrabber::getSingleImage, result, flag, status, last);
}
