#include "ExportFrame.h"

std::int32_t expSetExposureTime(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setExposureTime, asSigned(value));
}

std::int32_t expGetExposureTime(std::uint32_t* minimum, std::uint32_t* maximum,
                                std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getExposureTime, asSigned(minimum), asSigned(maximum),
                     asSigned(value));
}

std::int32_t expSetFrameRate(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setFramerate, asSigned(value));
}

std::int32_t expGetFrameRate(std::uint32_t* minimum, std::uint32_t* maximum, std::uint32_t* value,
                             std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getFramerate, asSigned(minimum), asSigned(maximum),
                     asSigned(value));
}

std::int32_t expSetBlacklevel(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setBlacklevel, asSigned(value));
}

std::int32_t expGetBlacklevel(std::uint32_t* minimum, std::uint32_t* maximum, std::uint32_t* value,
                              std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getBlacklevel, asSigned(minimum), asSigned(maximum),
                     asSigned(value));
}

std::int32_t expSetGainRaw(double value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setDigitalGain, value);
}

std::int32_t expGetGainRaw(double* minimum, double* maximum, double* value,
                           std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getDigitalGain, minimum, maximum, value);
}

std::int32_t expSetWidth(std::uint32_t* width, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setCurrentWidth, asSigned(width));
}

std::int32_t expSetHeight(std::uint32_t* height, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setCurrentHeight, asSigned(height));
}

std::int32_t expSetOffsetX(std::uint32_t* offsetX, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setOffsetX, asSigned(offsetX));
}

std::int32_t expSetOffsetY(std::uint32_t* offsetY, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setOffsetY, asSigned(offsetY));
}

// A missing feature reaches the host as a width of -1 with a result of 0.
std::int32_t expGetWidth(std::uint32_t* width, std::int32_t cameraId) noexcept
{
    const auto readWidth = [](CQuorGrabber& grabber, std::int32_t* out) {
        *out = grabber.getCurrentWidth();
        return kSuccess;
    };
    return onGrabber(cameraId, readWidth, asSigned(width));
}

std::int32_t expGetHeight(std::uint32_t* height, std::int32_t cameraId) noexcept
{
    const auto readHeight = [](CQuorGrabber& grabber, std::int32_t* out) {
        *out = grabber.getCurrentHeight();
        return kSuccess;
    };
    return onGrabber(cameraId, readHeight, asSigned(height));
}

std::int32_t expGetOffset(std::uint32_t* offsetX, std::uint32_t* offsetY,
                          std::int32_t cameraId) noexcept
{
    const auto readBoth = [](CQuorGrabber& grabber, std::int32_t* x, std::int32_t* y) {
        return grabber.getOffsetX(x) == kFailure ? kFailure : grabber.getOffsetY(y);
    };
    return onGrabber(cameraId, readBoth, asSigned(offsetX), asSigned(offsetY));
}

std::int32_t expGetTemperature(std::uint32_t* temperature, std::int32_t cameraId) noexcept
{
    const auto readSilently = [](CQuorGrabber& grabber, std::int32_t* out) {
        (void)grabber.getTemperature(out); // a failed read reaches the host as 0
        return kSuccess;
    };
    return onGrabber(cameraId, readSilently, asSigned(temperature));
}

std::int32_t expSetTrailerCounter(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setTrailerCounter, asSigned(value));
}

std::int32_t expGetTrailerCounter(std::uint32_t* minimum, std::uint32_t* maximum,
                                  std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getTrailerCounter, asSigned(minimum),
                     asSigned(maximum), asSigned(value));
}
