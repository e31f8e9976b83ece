#include "ExportFrame.h"

std::int32_t expGetParam(const char* key, char* result, const std::uint32_t* resultSize,
                         std::int32_t cameraId) noexcept
{
    if (isAnyNull(resultSize)) {
        return kFailure;
    }
    return onGrabber(cameraId, &CQuorGrabber::getParam, key, result, *resultSize);
}

std::int32_t expIsMultiSequenceModeAvailable(std::uint8_t* available,
                                             std::int32_t cameraId) noexcept
{
    const auto readFlag = [](const CQuorGrabber& grabber, std::uint8_t* out) {
        *out = grabber.isMultiSequenceModeAvailable() ? 1 : 0;
        return kSuccess;
    };
    return onGrabber(cameraId, readFlag, available);
}

// The camera id is second here: hosts have always passed it so.
std::int32_t expGetUsedCameraType(std::uint8_t* cameraCase, std::int32_t cameraId,
                                  std::uint32_t* maxWidth, std::uint32_t* maxHeight) noexcept
{
    return onKnownGrabber(cameraId, &CQuorGrabber::getUsedCameraType, cameraCase,
                          asSigned(maxWidth), asSigned(maxHeight));
}
