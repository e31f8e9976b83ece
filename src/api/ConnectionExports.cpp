#include "ExportFrame.h"

#include <memory>

std::int32_t expConnectGrabber(const char* macAddress, const char* ipAddress,
                               std::uint8_t ipConfigurationValid,
                               const TelvoConnectionSettings* settings,
                               std::int32_t cameraId) noexcept
{
    if (isAnyNull(macAddress, ipAddress, settings)) {
        return kFailure;
    }
    CameraRegistry& registry = cameraRegistry();
    auto grabber = std::make_unique<CQuorGrabber>();
    registry.setCurrent(grabber.get());
    const TelvoConnectionSettings copy = *settings;
    const std::int32_t result =
        grabber->connect(macAddress, ipAddress, ipConfigurationValid != 0, copy);
    if (result < 0) {
        grabber.reset();
        registry.setCurrent(nullptr);
        return result;
    }
    // An id in use keeps its camera, and this one stays connected without an id: hosts rely on a
    // second connect not ending the first, and must disconnect an id before they use it again.
    registry.insert(cameraId, grabber.release());
    return result;
}

std::int32_t expInitializeGrabber(const TelvoConnectionSettings* settings,
                                  std::int32_t cameraId) noexcept
{
    const auto initializeConnected = [](CQuorGrabber& grabber,
                                        const TelvoConnectionSettings* hostSettings) {
        const TelvoConnectionSettings copy = *hostSettings;
        return grabber.isConnected() ? grabber.initialize(copy) : kFailure;
    };
    return onGrabber(cameraId, initializeConnected, settings);
}

std::int32_t expDisconnectGrabber(std::int32_t cameraId) noexcept
{
    CameraRegistry& registry = cameraRegistry();
    CQuorGrabber* const grabber = registry.find(cameraId);
    if (grabber == nullptr) {
        return kFailure;
    }
    registry.setCurrent(grabber);
    delete grabber;
    registry.setCurrent(nullptr);
    registry.erase(cameraId);
    return kSuccess;
}

std::int32_t expSetChangedCallback(TelvoChangedCallback callback, std::int32_t cameraId) noexcept
{
    // The callback may be null, so it is no argument of the frame.
    return onGrabber(cameraId, [callback](CQuorGrabber& grabber) {
        grabber.setChangedCallback(callback);
        return kSuccess;
    });
}

std::int32_t expSetDataAvailableCallback(TelvoDataAvailableCallback callback,
                                         std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, [callback](CQuorGrabber& grabber) {
        grabber.setDataAvailableCallback(callback);
        return kSuccess;
    });
}
