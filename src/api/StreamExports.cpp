#include "ExportFrame.h"

std::int32_t expSetOutputDatarate(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::SetOutputDatarate, asSigned(value));
}

std::int32_t expGetOutputDatarate(std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::GetOutputDatarate, asSigned(value));
}

std::int32_t expSetStreamParam(const char* name, std::uint32_t value,
                               std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setStreamParameter, name, asSigned(value));
}

std::int32_t expGetStreamParam(const char* name, std::uint32_t* value,
                               std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getStreamParameter, name, asSigned(value));
}

std::int32_t expSetPackageSize(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setPackageSize, asSigned(value));
}

std::int32_t expGetPackageSize(std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getPackageSize, asSigned(value));
}

std::int32_t expShowStreamParams(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::showStreamParams);
}

std::int32_t expShowGEVParams(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::showGEVParams);
}
