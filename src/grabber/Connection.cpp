// From a MAC and an IP address to a connected camera with an open stream.

#include "CQuorGrabber.h"
#include "LinkLossSink.h"
#include "LogText.h"
#include "PvWnd.h"
#include "StreamParameters.h"
#include "Timing.h"

#include <chrono>
#include <string_view>

namespace
{

constexpr std::int32_t kConnectTries = 6;
constexpr std::chrono::milliseconds kConnectPause{200};
constexpr std::chrono::milliseconds kNegotiationPause{100};

constexpr std::int32_t kDefaultPacketSize = 1440; // bytes, "GevSCPSPacketSize"

constexpr const char* kSubnetMask = "[255.255.255.0]"; // cameras have always been sent it so
constexpr const char* kGateway = "0.0.0.0";
constexpr std::uint32_t kStreamChannel = 0;
constexpr std::uint16_t kAnyPort = 0;
constexpr const char* kAnyLocalAddress = "";

bool isEmpty(const PvString& text)
{
    return std::string_view(text.GetAscii()).empty();
}

bool connectByAddress(CameraLink& link, const PvString& macAddress, const PvString& ipAddress,
                      bool ipConfigurationValid)
{
    for (std::int32_t attempt = 0; attempt < kConnectTries; ++attempt) {
        if (ipConfigurationValid) {
            logLine("Camera contains a valid IP configuration!");
        } else {
            logLine("Set IP configuration to device!");
            const PvResult result =
                PvDevice::SetIPConfiguration(macAddress, ipAddress, kSubnetMask, kGateway);
            if (!result.IsOK()) {
                logLine("* !! Error can't set the IP configuration %s",
                        result.GetCodeString().GetAscii());
            }
        }
        if (link.device.Connect(macAddress, PvAccessType::Exclusive).IsOK()) {
            return true;
        }
        sleepFor(kConnectPause);
    }
    return false;
}

/// The texts become those of the camera that the user chose.
bool connectBySelection(CameraLink& link, PvString& macAddress, PvString& ipAddress)
{
    logLine("Manual device connection!");
    PvDeviceFinderWnd finder;
    if (!finder.ShowModal().IsOK()) {
        return false;
    }
    const PvDeviceInfo* const selected = finder.GetSelected();
    if (selected == nullptr || !link.device.Connect(selected, PvAccessType::Exclusive).IsOK()) {
        return false;
    }
    macAddress = selected->GetMACAddress();
    ipAddress = selected->GetIPAddress();
    return true;
}

bool connectDevice(CameraLink& link, PvString& macAddress, PvString& ipAddress,
                   bool ipConfigurationValid)
{
    return isEmpty(macAddress) || isEmpty(ipAddress)
               ? connectBySelection(link, macAddress, ipAddress)
               : connectByAddress(link, macAddress, ipAddress, ipConfigurationValid);
}

/// As the host would set it, with the line that it logs.
void setPacketSize(CameraSettings& camera, std::int32_t bytes)
{
    (void)setStreamParameter(camera, "GevSCPSPacketSize", bytes);
}

void applyPacketSize(CameraSettings& camera, const TelvoConnectionSettings& settings)
{
    if (settings.useSettings == 0) {
        setPacketSize(camera, kDefaultPacketSize);
    } else if (settings.packetSize != 0) {
        setPacketSize(camera, static_cast<std::int32_t>(settings.packetSize));
    } else {
        logLine("- Auto Packet Size Detection");
        (void)camera.link.device.NegotiatePacketSize(kStreamChannel, kDefaultPacketSize);
        sleepFor(kNegotiationPause);
    }
}

bool openStream(CameraLink& link, const PvString& ipAddress)
{
    if (!link.stream.Open(ipAddress, kAnyPort, kStreamChannel, kAnyLocalAddress).IsOK()) {
        logLine("Can't open stream!");
        (void)link.device.Disconnect();
        return false;
    }
    (void)link.device.SetStreamDestination(link.stream.GetLocalIPAddress(),
                                           link.stream.GetLocalPort(), kStreamChannel);
    return true;
}

void executeAckEnable(CameraLink& link)
{
    if (auto* const command = link.features.find<PvGenCommand>("AckEnable")) {
        (void)command->Execute();
    }
}

} // namespace

ConnectResult CQuorGrabber::connect(const char* macAddress, const char* ipAddress,
                                    bool ipConfigurationValid,
                                    const TelvoConnectionSettings& settings)
{
    logLine("* Connect grabber");
    PvString mac(macAddress);
    PvString ip(ipAddress);
    logLine("* MAC %s IP %s", mac.GetAscii(), ip.GetAscii());

    if (!connectDevice(mLink, mac, ip, ipConfigurationValid)) {
        return ConnectResult::Failed;
    }
    applyPacketSize(mSettings, settings);
    if (!openStream(mLink, ip)) {
        return ConnectResult::Failed;
    }
    mLink.isLost = false;
    (void)mLink.device.RegisterEventSink(mLinkLossSink);
    mLink.serialLine.open(mLink.device);
    executeAckEnable(mLink);
    mIdentity.ipAddress = ip.GetAscii();
    mIdentity.macAddress = mac.GetAscii();
    return readCameraState(mLink.features) == CameraState::FlashWrite ? ConnectResult::InFlashWrite
                                                                      : ConnectResult::Connected;
}
