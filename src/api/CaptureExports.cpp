#include "CaptureFeatures.h"
#include "ExportFrame.h"

std::int32_t expEnableDecimationMode(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kEnableDecimationMode, enable != 0);
}

std::int32_t expIsDecimationModeEnabled(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kIsDecimationModeEnabled, enabled);
}

std::int32_t expEnableRecordStandby(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kEnableRecordStandby, enable != 0);
}

std::int32_t expIsRecordStandbyEnabled(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kIsRecordStandbyEnabled, enabled);
}

std::int32_t expSetMultipleSlopeMode(std::uint32_t mode, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kMultipleSlopeMode, asSigned(mode));
}

std::int32_t expGetMultipleSlopeMode(std::uint32_t* mode, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kMultipleSlopeMode, mode);
}

std::int32_t expSetMultipleSlopeDual(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kSetMultipleSlopeDual, asSigned(value));
}

std::int32_t expGetMultipleSlopeDual(std::uint32_t* minimum, std::uint32_t* maximum,
                                     std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kGetMultipleSlopeDual, minimum, maximum, value);
}

std::int32_t expSetMultipleSlopeTriple(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kSetMultipleSlopeTriple, asSigned(value));
}

std::int32_t expGetMultipleSlopeTriple(std::uint32_t* minimum, std::uint32_t* maximum,
                                       std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kGetMultipleSlopeTriple, minimum, maximum, value);
}

std::int32_t expSetSingleSettingRecordBurstCnt(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kSetRecordBurstCnt, asSigned(value));
}

std::int32_t expGetSingleSettingRecordBurstCnt(std::uint32_t* minimum, std::uint32_t* maximum,
                                               std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [](CameraSettings& camera, auto*... out) {
            const RangeParts parts = getRecordBurstCnt(camera);
            storeParts({parts.minimum, parts.maximum, parts.value}, {out...});
            return doneIf(parts.value.has_value());
        },
        minimum, maximum, value);
}

std::int32_t expSetSingleSettingRecordWhileTrigger(std::uint8_t enable,
                                                   std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kRecordWhileTrigger, enable != 0);
}

std::int32_t expGetSingleSettingRecordWhileTrigger(std::uint8_t* enabled,
                                                   std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kRecordWhileTrigger, enabled);
}
