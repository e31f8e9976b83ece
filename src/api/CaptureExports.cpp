#include "ExportFrame.h"

std::int32_t expEnableDecimationMode(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::enableDecimationMode, enable != 0);
}

std::int32_t expIsDecimationModeEnabled(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isDecimationModeEnabled, enabled);
}

std::int32_t expEnableRecordStandby(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::enableRecordStandby, enable != 0);
}

std::int32_t expIsRecordStandbyEnabled(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::isRecordStandbyEnabled, enabled);
}

std::int32_t expSetMultipleSlopeMode(std::uint32_t mode, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setMultipleSlopeMode, asSigned(mode));
}

std::int32_t expGetMultipleSlopeMode(std::uint32_t* mode, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getMultipleSlopeMode, asSigned(mode));
}

std::int32_t expSetMultipleSlopeDual(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setMultipleSlopeDual, asSigned(value));
}

std::int32_t expGetMultipleSlopeDual(std::uint32_t* minimum, std::uint32_t* maximum,
                                     std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getMultipleSlopeDual, asSigned(minimum),
                     asSigned(maximum), asSigned(value));
}

std::int32_t expSetMultipleSlopeTriple(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setMultipleSlopeTriple, asSigned(value));
}

std::int32_t expGetMultipleSlopeTriple(std::uint32_t* minimum, std::uint32_t* maximum,
                                       std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getMultipleSlopeTriple, asSigned(minimum),
                     asSigned(maximum), asSigned(value));
}

std::int32_t expSetSingleSettingRecordBurstCnt(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setRecordBurstCnt, asSigned(value));
}

std::int32_t expGetSingleSettingRecordBurstCnt(std::uint32_t* minimum, std::uint32_t* maximum,
                                               std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getRecordBurstCnt, asSigned(minimum),
                     asSigned(maximum), asSigned(value));
}

std::int32_t expSetSingleSettingRecordWhileTrigger(std::uint8_t enable,
                                                   std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setRecordWhileTrigger, enable != 0);
}

std::int32_t expGetSingleSettingRecordWhileTrigger(std::uint8_t* enabled,
                                                   std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getRecordWhileTrigger, enabled);
}
