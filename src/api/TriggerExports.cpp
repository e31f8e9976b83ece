#include "ExportFrame.h"
#include "TriggerFeatures.h"
#include "TriggerWindow.h"

std::int32_t expEnableExternalTrigger(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kEnableExternalTrigger, enable != 0);
}

std::int32_t expIsExternalTriggerEnabled(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kIsExternalTriggerEnabled, enabled);
}

std::int32_t expSetExternalTriggerPolarity(std::uint32_t polarity, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kExternalTriggerPolarity, asSigned(polarity));
}

std::int32_t expGetExternalTriggerPolarity(std::uint32_t* polarity, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kExternalTriggerPolarity, polarity);
}

std::int32_t expEnableSyncIn(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, enableSyncIn, enable != 0);
}

std::int32_t expIsSyncInEnabled(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kIsSyncInEnabled, enabled);
}

std::int32_t expSetSyncInPolarity(std::uint32_t polarity, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kSyncInPolarity, asSigned(polarity));
}

std::int32_t expGetSyncInPolarity(std::uint32_t* polarity, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kSyncInPolarity, polarity);
}

std::int32_t expSetSyncOut(std::uint32_t output, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kSyncOut, asSigned(output));
}

std::int32_t expGetSyncOut(std::uint32_t* output, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kSyncOut, output);
}

std::int32_t expSetSyncARMPolarity(std::uint32_t polarity, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kSyncARMPolarity, asSigned(polarity));
}

std::int32_t expGetSyncARMPolarity(std::uint32_t* polarity, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kSyncARMPolarity, polarity);
}

std::int32_t expUpdateTriggerValues(std::uint32_t releaseCondition, std::uint32_t threshold,
                                    std::int32_t cameraId) noexcept
{
    return onSettings(cameraId, &updateTriggerValues, asSigned(releaseCondition),
                      asSigned(threshold));
}

std::int32_t expEnableFrameTrigger(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kEnableFrameTrigger, enable != 0);
}

std::int32_t expIsFrameTriggerEnabled(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kIsFrameTriggerEnabled, enabled);
}

std::int32_t expEnableTriggerWindow(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kEnableTriggerWindow, enable != 0);
}

std::int32_t expSetFrameTrigger(std::uint32_t top, std::uint32_t left, std::uint32_t width,
                                std::uint32_t height, std::uint32_t releaseCondition,
                                std::uint32_t threshold, std::int32_t cameraId) noexcept
{
    return onSettings(cameraId, &setFrameTrigger,
                      TriggerWindow{.top = asSigned(top),
                                    .left = asSigned(left),
                                    .width = asSigned(width),
                                    .height = asSigned(height),
                                    .releaseCondition = asSigned(releaseCondition),
                                    .threshold = asSigned(threshold)});
}

std::int32_t expGetFrameTrigger(std::uint32_t* top, std::uint32_t* left, std::uint32_t* width,
                                std::uint32_t* height, std::uint32_t* releaseCondition,
                                std::uint32_t* threshold, std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [](CameraSettings& camera, auto*... out) {
            const TriggerWindowParts parts = getFrameTrigger(camera);
            storeParts({parts.top, parts.left, parts.width, parts.height, parts.releaseCondition,
                        parts.threshold},
                       {out...});
            return doneIf(parts.releaseCondition.has_value()); // the last one read
        },
        top, left, width, height, releaseCondition, threshold);
}

std::int32_t expIsImageVantoAvailable(std::uint8_t* available, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kIsImageVantoAvailable, available);
}
