#include "ExportFrame.h"

#include <memory>

namespace
{

std::int32_t connectUnder(std::int32_t cameraId, const char* macAddress, const char* ipAddress,
                          bool ipConfigurationValid, const TelvoConnectionSettings& settings)
{
    ReservedId id(cameraId);
    auto grabber = std::make_unique<CQuorGrabber>();
    const ConnectResult result =
        grabber->connect(macAddress, ipAddress, ipConfigurationValid, settings);
    if (result == ConnectResult::Failed) {
        return kFailure;
    }
    // An id in use keeps its camera, and this one stays connected without an id: hosts rely on a
    // second connect not ending the first, and must disconnect an id before they use it again.
    if (id.tryAgain()) {
        id.giveTo(grabber.get());
    }
    (void)grabber.release();
    return static_cast<std::int32_t>(result);
}

} // namespace

std::int32_t expConnectGrabber(const char* macAddress, const char* ipAddress,
                               std::uint8_t ipConfigurationValid,
                               const TelvoConnectionSettings* settings,
                               std::int32_t cameraId) noexcept
{
    if (isAnyNull(macAddress, ipAddress, settings)) {
        return kFailure;
    }
    return orFailure(kFailure, [=, copy = *settings] {
        return connectUnder(cameraId, macAddress, ipAddress, ipConfigurationValid != 0, copy);
    });
}

std::int32_t expInitializeGrabber(const TelvoConnectionSettings* settings,
                                  std::int32_t cameraId) noexcept
{
    const auto initializeConnected = [](CQuorGrabber& grabber,
                                        const TelvoConnectionSettings* hostSettings) {
        const TelvoConnectionSettings copy = *hostSettings;
        return grabber.settings().link.device.IsConnected() ? grabber.initialize(copy)
                                                            : InitializeResult::Failed;
    };
    return onGrabber(cameraId, initializeConnected, settings);
}

std::int32_t expDisconnectGrabber(std::int32_t cameraId) noexcept
{
    CameraRegistry& registry = cameraRegistry();
    CQuorGrabber* const grabber = registry.take(cameraId);
    if (grabber == nullptr) {
        return kFailure;
    }
    delete grabber;
    registry.release(cameraId);
    return kSuccess;
}

std::int32_t expSetChangedCallback(TelvoChangedCallback callback, std::int32_t cameraId) noexcept
{
    // The callback may be null, so it is no argument of the frame.
    return onGrabber(cameraId,
                     [callback](CQuorGrabber& grabber) { grabber.setChangedCallback(callback); });
}

std::int32_t expSetDataAvailableCallback(TelvoDataAvailableCallback callback,
                                         std::int32_t cameraId) noexcept
{
    return onGrabber(cameraId, [callback](CQuorGrabber& grabber) {
        grabber.setDataAvailableCallback(callback);
    });
}
