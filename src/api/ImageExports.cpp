#include "ExportFrame.h"
#include "ImageGeometry.h"
#include "ImageTiming.h"

namespace
{

constexpr std::int32_t kMissing = -1; // what hosts see in place of a missing feature's value

/// In/out: the value as it was sent.
std::int32_t writeGeometry(std::int32_t cameraId, const GeometryWrite& row,
                           std::uint32_t* value) noexcept
{
    return onSettings(
        cameraId,
        [&row](CameraSettings& camera, std::uint32_t* inOut) {
            return store(write(camera, row, asSigned(*inOut)), inOut);
        },
        value);
}

} // namespace

std::int32_t expSetExposureTime(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kSetExposureTime, asSigned(value));
}

std::int32_t expGetExposureTime(std::uint32_t* minimum, std::uint32_t* maximum,
                                std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kGetExposureTime, minimum, maximum, value);
}

std::int32_t expSetFrameRate(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, setFramerate, asSigned(value));
}

std::int32_t expGetFrameRate(std::uint32_t* minimum, std::uint32_t* maximum, std::uint32_t* value,
                             std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kGetFramerate, minimum, maximum, value);
}

std::int32_t expSetBlacklevel(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kSetBlacklevel, asSigned(value));
}

std::int32_t expGetBlacklevel(std::uint32_t* minimum, std::uint32_t* maximum, std::uint32_t* value,
                              std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, kGetBlacklevel, minimum, maximum, value);
}

std::int32_t expSetGainRaw(double value, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, setDigitalGain, value);
}

std::int32_t expGetGainRaw(double* minimum, double* maximum, double* value,
                           std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, getDigitalGain, minimum, maximum, value);
}

std::int32_t expSetWidth(std::uint32_t* width, std::int32_t cameraId) noexcept
{
    return writeGeometry(cameraId, kSetWidth, width);
}

std::int32_t expSetHeight(std::uint32_t* height, std::int32_t cameraId) noexcept
{
    return writeGeometry(cameraId, kSetHeight, height);
}

std::int32_t expSetOffsetX(std::uint32_t* offsetX, std::int32_t cameraId) noexcept
{
    return writeGeometry(cameraId, kSetOffsetX, offsetX);
}

std::int32_t expSetOffsetY(std::uint32_t* offsetY, std::int32_t cameraId) noexcept
{
    return writeGeometry(cameraId, kSetOffsetY, offsetY);
}

// A missing feature reaches the host as a width of -1 with a result of 0.
std::int32_t expGetWidth(std::uint32_t* width, std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [](CameraSettings& camera, std::uint32_t* out) {
            *out = static_cast<std::uint32_t>(readOrRecall(camera, kGetWidth).value_or(kMissing));
        },
        width);
}

std::int32_t expGetHeight(std::uint32_t* height, std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [](CameraSettings& camera, std::uint32_t* out) {
            *out = static_cast<std::uint32_t>(readOrRecall(camera, kGetHeight).value_or(kMissing));
        },
        height);
}

std::int32_t expGetOffset(std::uint32_t* offsetX, std::uint32_t* offsetY,
                          std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [](CameraSettings& camera, std::uint32_t* x, std::uint32_t* y) {
            const Outcome outcome = store(read(camera, kGetOffsetX), x);
            return outcome == Outcome::Done ? store(read(camera, kGetOffsetY), y) : outcome;
        },
        offsetX, offsetY);
}

std::int32_t expGetTemperature(std::uint32_t* temperature, std::int32_t cameraId) noexcept
{
    return onSettings(
        cameraId,
        [](CameraSettings& camera, std::uint32_t* out) {
            (void)store(read(camera, kGetTemperature), out); // a failed read reaches the host as 0
        },
        temperature);
}

std::int32_t expSetTrailerCounter(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return writeSetting(cameraId, kSetTrailerCounter, asSigned(value));
}

std::int32_t expGetTrailerCounter(std::uint32_t* minimum, std::uint32_t* maximum,
                                  std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return readSetting(cameraId, getTrailerCounter, minimum, maximum, value);
}
