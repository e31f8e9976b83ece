#include "ExportFrame.h"
#include "LinkPacing.h"
#include "StreamParameters.h"

std::int32_t expSetOutputDatarate(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return onSettings(cameraId, [value](CameraSettings& camera) {
        return setOutputDatarate(camera.link, asSigned(value));
    });
}

std::int32_t expGetOutputDatarate(std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return readSetting(
        cameraId, [](CameraSettings& camera) { return getOutputDatarate(camera.link); }, value);
}

std::int32_t expSetStreamParam(const char* name, std::uint32_t value,
                               std::int32_t cameraId) noexcept
{
    return onSettings(cameraId, &setStreamParameter, name, asSigned(value));
}

std::int32_t expGetStreamParam(const char* name, std::uint32_t* value,
                               std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [](CameraSettings& camera, const char* parameter, std::uint32_t* inOut) {
            return store(getStreamParameter(camera, parameter, asSigned(*inOut)), inOut);
        },
        name, value);
}

std::int32_t expSetPackageSize(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kSetPackageSize, asSigned(value));
}

std::int32_t expGetPackageSize(std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [](CameraSettings& camera, std::uint32_t* inOut) {
            return store(read(camera, kGetPackageSize, asSigned(*inOut)), inOut);
        },
        value);
}

std::int32_t expShowStreamParams(std::int32_t cameraId) noexcept
{
    return onSettings(cameraId, &showStreamParams);
}

std::int32_t expShowGEVParams(std::int32_t cameraId) noexcept
{
    return onSettings(cameraId, &showGEVParams);
}
