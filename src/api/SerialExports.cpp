#include "ExportFrame.h"

std::int32_t expReadData(std::uint8_t* buffer, std::uint32_t* count, std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [](CameraSettings& camera, std::uint8_t* target, std::uint32_t* size) {
            *size = static_cast<std::uint32_t>(camera.link.serialLine.read({target, *size}));
        },
        buffer, count);
}

std::int32_t expWriteData(const std::uint8_t* data, std::uint32_t count,
                          std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [count](CameraSettings& camera, const std::uint8_t* source) {
            return camera.link.serialLine.write({source, count});
        },
        data);
}
