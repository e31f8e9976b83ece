#include "DataWords.h"
#include "ExportFrame.h"
#include "UserSets.h"

std::int32_t expSaveUserSet(std::int32_t cameraId) noexcept
{
    return onSettings(cameraId, saveUserSet);
}

std::int32_t expSetUserDefinedName(const char* name, std::int32_t cameraId) noexcept
{
    return onGrabber(
        cameraId,
        [](CQuorGrabber& grabber, const char* text) {
            setUserDefinedName(grabber.identity(), text);
        },
        name);
}

std::int32_t expSetCustomInformation(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return onSettings(cameraId, &setCustomData, kCustomInformation, asSigned(value));
}

std::int32_t expGetCustomInformation(std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return readSetting(
        cameraId, [](CameraSettings& camera) { return getCustomData(camera, kCustomInformation); },
        value);
}

std::int32_t expSetColorInformation(double first, double second, double third,
                                    std::int32_t cameraId) noexcept
{
    return onSettings(cameraId, &setColorInformation, ColorFactors{first, second, third});
}

std::int32_t expGetColorInformation(std::uint8_t* isColorCamera, double* first, double* second,
                                    double* third, std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [](CameraSettings& camera, std::uint8_t* isColor, auto*... factor) {
            *isColor = camera.color.isColorCamera ? 1 : 0;
            std::size_t index = 0;
            ((*factor = camera.color.factors[index++]), ...);
        },
        isColorCamera, first, second, third);
}
