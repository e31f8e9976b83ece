#include "ExportFrame.h"

std::int32_t expEnableExternalTrigger(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::enableExternalTrigger, enable != 0);
}

std::int32_t expIsExternalTriggerEnabled(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isExternalTriggerEnabled, enabled);
}

std::int32_t expSetExternalTriggerPolarity(std::uint32_t polarity, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setExternalTriggerPolarity, asSigned(polarity));
}

std::int32_t expGetExternalTriggerPolarity(std::uint32_t* polarity, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getExternalTriggerPolarity, asSigned(polarity));
}

std::int32_t expEnableSyncIn(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::enableSyncIn, enable != 0);
}

std::int32_t expIsSyncInEnabled(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isSyncInEnabled, enabled);
}

std::int32_t expSetSyncInPolarity(std::uint32_t polarity, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setSyncInPolarity, asSigned(polarity));
}

std::int32_t expGetSyncInPolarity(std::uint32_t* polarity, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getSyncInPolarity, asSigned(polarity));
}

std::int32_t expSetSyncOut(std::uint32_t output, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setSyncOut, asSigned(output));
}

std::int32_t expGetSyncOut(std::uint32_t* output, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getSyncOut, asSigned(output));
}

std::int32_t expSetSyncARMPolarity(std::uint32_t polarity, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setSyncARMPolarity, asSigned(polarity));
}

std::int32_t expGetSyncARMPolarity(std::uint32_t* polarity, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getSyncARMPolarity, asSigned(polarity));
}

std::int32_t expUpdateTriggerValues(std::uint32_t releaseCondition, std::uint32_t threshold,
                                    std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::updateTriggerValues, asSigned(releaseCondition),
                     asSigned(threshold));
}

std::int32_t expEnableFrameTrigger(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::enableFrameTrigger, enable != 0);
}

std::int32_t expIsFrameTriggerEnabled(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isFrameTriggerEnabled, enabled);
}

std::int32_t expEnableTriggerWindow(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::enableTriggerWindow, enable != 0);
}

std::int32_t expSetFrameTrigger(std::uint32_t top, std::uint32_t left, std::uint32_t width,
                                std::uint32_t height, std::uint32_t releaseCondition,
                                std::uint32_t threshold, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setFrameTrigger, asSigned(top), asSigned(left),
                     asSigned(width), asSigned(height), asSigned(releaseCondition),
                     asSigned(threshold));
}

std::int32_t expGetFrameTrigger(std::uint32_t* top, std::uint32_t* left, std::uint32_t* width,
                                std::uint32_t* height, std::uint32_t* releaseCondition,
                                std::uint32_t* threshold, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getFrameTrigger, asSigned(top), asSigned(left),
                     asSigned(width), asSigned(height), asSigned(releaseCondition),
                     asSigned(threshold));
}

std::int32_t expIsImageVantoAvailable(std::uint8_t* available, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isImageVantoAvailable, available);
}
