// From a MAC and an IP address to a connected camera with an open stream.

#include "CQuorGrabber.h"
#include "LinkLossSink.h"
#include "LogText.h"
#include "PvWnd.h"
#include "Timing.h"

#include <chrono>
#include <string_view>

namespace
{

constexpr std::int32_t kConnectedInFlashWrite = 1;

constexpr std::int32_t kConnectTries = 6;
constexpr std::chrono::milliseconds kConnectPause{200};
constexpr std::chrono::milliseconds kNegotiationPause{100};

constexpr std::int32_t kDefaultPacketSize = 1440; // bytes, "GevSCPSPacketSize"
constexpr const char* kPacketSize = "GevSCPSPacketSize";

constexpr const char* kSubnetMask = "[255.255.255.0]"; // cameras have always been sent it so
constexpr const char* kGateway = "0.0.0.0";
constexpr std::uint16_t kAnyPort = 0;
constexpr const char* kAnyLocalAddress = "";

bool isEmpty(const PvString& text)
{
    return std::string_view(text.GetAscii()).empty();
}

} // namespace

std::int32_t CQuorGrabber::connect(const char* macAddress, const char* ipAddress,
                                   bool ipConfigurationValid,
                                   const TelvoConnectionSettings& settings)
{
    logLine("* Connect grabber");
    PvString mac(macAddress);
    PvString ip(ipAddress);
    logLine("* MAC %s IP %s", mac.GetAscii(), ip.GetAscii());

    if (!connectDevice(mac, ip, ipConfigurationValid)) {
        return kFailure;
    }
    applyPacketSize(settings);
    if (!openStream(ip)) {
        return kFailure;
    }
    mIsConnectionLost = false;
    (void)mDevice.RegisterEventSink(mLinkLossSink);
    (void)openSerialPort(); // a camera without one is asked for frames through its features
    executeAckEnable();
    mIdentity.ipAddress = ip.GetAscii();
    mIdentity.macAddress = mac.GetAscii();

    std::int32_t state = 0;
    const bool isWritingFlash = getCameraState(&state) == kSuccess &&
                                state == static_cast<std::int32_t>(CameraState::FlashWrite);
    return isWritingFlash ? kConnectedInFlashWrite : kSuccess;
}

bool CQuorGrabber::connectDevice(PvString& macAddress, PvString& ipAddress,
                                 bool ipConfigurationValid)
{
    return isEmpty(macAddress) || isEmpty(ipAddress)
               ? connectBySelection(macAddress, ipAddress)
               : connectByAddress(macAddress, ipAddress, ipConfigurationValid);
}

bool CQuorGrabber::connectByAddress(const PvString& macAddress, const PvString& ipAddress,
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
        if (mDevice.Connect(macAddress, PvAccessType::Exclusive).IsOK()) {
            return true;
        }
        sleepFor(kConnectPause);
    }
    return false;
}

bool CQuorGrabber::connectBySelection(PvString& macAddress, PvString& ipAddress)
{
    logLine("Manual device connection!");
    PvDeviceFinderWnd finder;
    if (!finder.ShowModal().IsOK()) {
        return false;
    }
    const PvDeviceInfo* const selected = finder.GetSelected();
    if (selected == nullptr || !mDevice.Connect(selected, PvAccessType::Exclusive).IsOK()) {
        return false;
    }
    macAddress = selected->GetMACAddress();
    ipAddress = selected->GetIPAddress();
    return true;
}

void CQuorGrabber::applyPacketSize(const TelvoConnectionSettings& settings)
{
    if (settings.useSettings == 0) {
        (void)setStreamParameter(kPacketSize, kDefaultPacketSize);
    } else if (settings.packetSize != 0) {
        (void)setStreamParameter(kPacketSize, static_cast<std::int32_t>(settings.packetSize));
    } else {
        logLine("- Auto Packet Size Detection");
        (void)mDevice.NegotiatePacketSize(kStreamChannel, kDefaultPacketSize);
        sleepFor(kNegotiationPause);
    }
}

bool CQuorGrabber::openStream(const PvString& ipAddress)
{
    if (!mStream.Open(ipAddress, kAnyPort, kStreamChannel, kAnyLocalAddress).IsOK()) {
        logLine("Can't open stream!");
        (void)mDevice.Disconnect();
        return false;
    }
    (void)mDevice.SetStreamDestination(mStream.GetLocalIPAddress(), mStream.GetLocalPort(),
                                       kStreamChannel);
    return true;
}

void CQuorGrabber::executeAckEnable()
{
    if (auto* const command = mFeatures.find<PvGenCommand>("AckEnable")) {
        (void)command->Execute();
    }
}
