#include "ExportFrame.h"

#include <cstring>

std::int32_t expGetParam(const char* key, char* result, const std::uint32_t* resultSize,
                         std::int32_t cameraId) noexcept
{
    if (isAnyNull(resultSize)) {
        return kFailure;
    }
    const auto answer = [](CQuorGrabber& grabber, const char* keyText, char* out,
                           std::uint32_t size) {
        const Param param = findParam(grabber.identity(), keyText);
        if (param.result != Param::Result::EmptyKey) {
            std::memset(out, 0, size);
        }
        if (param.result == Param::Result::Found) {
            // Not bounded by the size: hosts pass at least 50 bytes whatever they say.
            std::memcpy(out, param.text, std::strlen(param.text) + 1);
        }
        return param.result;
    };
    return onGrabber(cameraId, answer, key, result, *resultSize);
}

std::int32_t expIsMultiSequenceModeAvailable(std::uint8_t* available,
                                             std::int32_t cameraId) noexcept
{
    return readSetting(
        cameraId, [](CameraSettings& camera) { return done(camera.isMultiSequenceAvailable); },
        available);
}

// The camera id is second here: hosts have always passed it so.
std::int32_t expGetUsedCameraType(std::uint8_t* cameraCase, std::int32_t cameraId,
                                  std::uint32_t* maxWidth, std::uint32_t* maxHeight) noexcept
{
    const auto describe = [](CQuorGrabber& grabber, std::uint8_t* caseFlag, std::uint32_t* width,
                             std::uint32_t* height) {
        const CameraModel& model = grabber.model();
        const ImageSize sensor = readSensorSize(grabber.settings(), model);
        *width = static_cast<std::uint32_t>(sensor.width);
        *height = static_cast<std::uint32_t>(sensor.height);
        *caseFlag = model.caseFlag;
        return model.type;
    };
    return isKnown(cameraId) ? onGrabber(cameraId, describe, cameraCase, maxWidth, maxHeight) : 0;
}
