#include "CameraSession.h"

#include "Setting.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <array>
#include <atomic>
#include <iostream>

namespace telvo
{

namespace
{

constexpr std::int32_t kCameraId = 1; // the tool has one camera at a time

constexpr std::int32_t kConnectedWhileFlashWrite = 1;
constexpr std::int32_t kAttachedToRecording = 1;
constexpr std::int32_t kUserSetsPrepared = -2;

/// The library's own defaults, but for the packet size, which is negotiated, and for the serial
/// line, which carries block requests faster than features do.
constexpr TelvoConnectionSettings kConnectionSettings{
    .useSettings = 1,
    .reserved1 = {},
    .packetSize = 0,
    .defaultInterPacketDelay = 2000,
    .outputInterPacketDelay = 0,
    .firstPacketTimeout = 0,
    .packetTimeout = 1000,
    .requestTimeout = 1100,
    .defaultImageTimeout = 1100,
    .answerTimeout = 1000,
    .heartbeatTimeout = 3000,
    .heartbeatInterval = 1000,
    .maximumPendingResends = 0,
    .fastReadoutActive = 1,
    .reserved2 = {},
    .requestMode = 1,
    .outputDataRate = 3,
    .reserved3 = {},
};

std::atomic<bool> linkLost; // the library's callback knows no object

void onChanged(std::int32_t reason)
{
    if (reason == 0) {
        linkLost = true;
    }
}

TelvoConnectionSettings connectionSettings(const std::vector<Assignment>& settings)
{
    TelvoConnectionSettings result = kConnectionSettings;
    for (const Assignment& assignment : settings) {
        if (const auto field = assignment.setting->ofConnection) {
            result.*field = static_cast<std::uint32_t>(assignment.value);
        }
    }
    return result;
}

void connect(const CameraAddress& address, const TelvoConnectionSettings& settings)
{
    const std::string& device = address.onLoopback ? address.ip : address.mac;
    const std::int32_t result =
        expConnectGrabber(device.c_str(), address.ip.c_str(), 1, &settings, kCameraId);
    if (result < 0) {
        throw Failure("cannot connect to the camera at " + address.ip +
                      "; is another program using it? ('telvo log' shows why)");
    }
    linkLost = false;
    expSetChangedCallback(onChanged, kCameraId);
    if (result == kConnectedWhileFlashWrite) {
        expDisconnectGrabber(kCameraId);
        throw Failure("the camera is writing to its flash card; try again when it is done");
    }
}

/// The result of the library's initialisation, of a second connection if the first prepared the
/// camera's user sets.
std::int32_t connectAndInitialize(const CameraAddress& address,
                                  const TelvoConnectionSettings& settings)
{
    connect(address, settings);
    const std::int32_t result = expInitializeGrabber(&settings, kCameraId);
    if (result != kUserSetsPrepared) {
        return result;
    }
    std::cerr << "telvo: the camera's user sets were prepared; connecting again\n";
    expDisconnectGrabber(kCameraId);
    connect(address, settings);
    return expInitializeGrabber(&settings, kCameraId);
}

} // namespace

CameraSession::CameraSession(const CameraAddress& address, const std::vector<Assignment>& settings)
{
    const std::int32_t result = connectAndInitialize(address, connectionSettings(settings));
    if (result < 0) {
        expDisconnectGrabber(kCameraId);
        throw Failure("cannot initialise the camera at " + address.ip + " ('telvo log' shows why)");
    }
    mRecording = result == kAttachedToRecording;
}

CameraSession::~CameraSession()
{
    expDisconnectGrabber(kCameraId);
}

std::int32_t CameraSession::id() const
{
    return kCameraId;
}

void CameraSession::requireNoRecording() const
{
    if (mRecording) {
        throw Failure("the camera is recording; stop that first");
    }
}

void CameraSession::apply(const std::vector<Assignment>& settings) const
{
    for (const Assignment& assignment : settings) {
        if (assignment.setting->ofConnection == nullptr) {
            writeSetting(assignment, kCameraId);
        }
    }
}

std::string CameraSession::identity(const char* key) const
{
    std::array<char, 64> text{}; // the library's texts have at most 50 characters
    const auto size = static_cast<std::uint32_t>(text.size());
    return expGetParam(key, text.data(), &size, kCameraId) == 0 ? text.data() : "";
}

void CameraSession::requireLink() const
{
    if (linkLost) {
        throw Failure("the connection to the camera was lost");
    }
}

} // namespace telvo
