#include "ExportFrame.h"
#include "FlashCard.h"
#include "RecordedSequences.h"
#include "RecordingFeatures.h"

std::int32_t expSetRecordMode(std::uint32_t mode, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kRecordMode, asSigned(mode));
}

std::int32_t expGetRecordMode(std::uint32_t* mode, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kRecordMode, mode);
}

std::int32_t expSetNumberOfRecordSequences(std::uint32_t count, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, setNumberOfRecordSequences, asSigned(count));
}

std::int32_t expGetNumberOfRecordSequences(std::uint32_t* count, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, getNumberOfRecordSequences, count);
}

std::int32_t expGetCurrentNumberOfFramesInSequence(std::uint32_t* count,
                                                   std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kGetNumberOfRecordedFramesPerSequence, count);
}

std::int32_t expGetLastRecordDimensions(std::uint32_t* width, std::uint32_t* height,
                                        std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [](CameraSettings& camera, std::uint32_t* widthOut, std::uint32_t* heightOut) {
            const ImageSize size = getLastRecordDimensions(camera);
            *widthOut = static_cast<std::uint32_t>(size.width);
            *heightOut = static_cast<std::uint32_t>(size.height);
        },
        width, height);
}

std::int32_t expGetNumberOfAllRecordedFrames(std::uint32_t* count, std::int32_t cameraId) noexcept
{
    return isKnown(cameraId) ? readSetting(cameraId, getNumberOfAllRecordedFrames, count) : 0;
}

std::int32_t expGetRecordInfo(std::uint32_t* offsetX, std::uint32_t* offsetY, std::uint32_t* width,
                              std::uint32_t* height, std::int64_t* frameCount,
                              std::int64_t* reserved, void* /*unused*/,
                              std::int32_t cameraId) noexcept
{
    const auto tell = [](CameraSettings& camera, std::uint32_t* x, std::uint32_t* y,
                         std::uint32_t* w, std::uint32_t* h, std::int64_t* frames,
                         std::int64_t* none) {
        const RecordInfo info = getRecordInfo(camera);
        *x = static_cast<std::uint32_t>(info.offsetX);
        *y = static_cast<std::uint32_t>(info.offsetY);
        *w = static_cast<std::uint32_t>(info.width);
        *h = static_cast<std::uint32_t>(info.height);
        *frames = info.frameCount;
        *none = 0;
    };
    return isKnown(cameraId)
               ? onSettings(cameraId, tell, offsetX, offsetY, width, height, frameCount, reserved)
               : 0;
}

std::int32_t expIsFlashCardAvailable(std::uint8_t* available, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kIsFlashCardAvailable, available);
}

std::int32_t expStartWriteToFlash(std::int32_t cameraId) noexcept
{
    return onSettings(cameraId, startWriteToFlash);
}

std::int32_t expStopWriteToFlash(std::int32_t cameraId) noexcept
{
    return onSettings(cameraId, stopWriteToFlash);
}

std::int32_t expEnableFlashWriteAfterRecordStop(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, enableFlashWriteAfterRecordStop, enable != 0);
}

std::int32_t expIsFlashWriteAfterRecordStopEnabled(std::uint8_t* enabled,
                                                   std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, isFlashWriteAfterRecordStopEnabled, enabled);
}

std::int32_t expSetRecordAtPowerState(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, setRecordAtPowerOnState, enable != 0);
}

std::int32_t expGetRecordAtPowerState(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, getRecordAtPowerOnState, enabled);
}

std::int32_t expIsRecordAtPowerOnAvailable(std::uint8_t* available, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, isRecordAtPowerOnAvailable, available);
}

std::int32_t expSetIRIGBState(std::uint8_t enable, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kIRIGBState, enable != 0);
}

std::int32_t expGetIRIGBState(std::uint8_t* enabled, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kIRIGBState, enabled);
}

std::int32_t expIsIRIGBAvailable(std::uint8_t* available, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, isIRIGBAvailable, available);
}
