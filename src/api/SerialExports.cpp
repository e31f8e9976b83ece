#include "ExportFrame.h"

std::int32_t expReadData(std::uint8_t* buffer, std::uint32_t* count, std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::readData, buffer, count);
}

std::int32_t expWriteData(const std::uint8_t* data, std::uint32_t count,
                          std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, &CQuorGrabber::writeData, data, count);
}
