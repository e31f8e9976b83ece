#include "ExportFrame.h"

std::int32_t expSaveUserSet(std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::saveUserSet);
}

std::int32_t expSetUserDefinedName(const char* name, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setUserDefinedName, name);
}

std::int32_t expSetCustomInformation(std::uint32_t value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setCustomInformation, asSigned(value));
}

std::int32_t expGetCustomInformation(std::uint32_t* value, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getCustomInformation, asSigned(value));
}

std::int32_t expSetColorInformation(double first, double second, double third,
                                    std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::setColorInformation, first, second, third);
}

std::int32_t expGetColorInformation(std::uint8_t* isColorCamera, double* first, double* second,
                                    double* third, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::getColorInformation, isColorCamera, first, second,
                     third);
}
