#ifndef TELVO_CAMERA_BOOTSTRAP_H
#define TELVO_CAMERA_BOOTSTRAP_H

#include "ControlPrivilege.h"
#include "Device.h"
#include "DiscoveryAck.h"
#include "MacAddress.h"

#include <optional>
#include <string>

namespace camera
{

/// Who the camera is in its network.
struct NetworkIdentity {
    gige::wire::MacAddress mac{};
    gige::net::Ipv4Address address{};
    gige::net::Ipv4Address netmask{0xFF000000};
};

/// The registers that every GigE Vision device has: identity, capabilities, privilege and stream
/// channel 0. Works on single 32-bit words; for the control thread alone, apart from identity().
class Bootstrap
{
  public:
    using Status = gige::wire::GvcpStatus;
    using Endpoint = gige::net::Endpoint;

    /// @param url  of the description file, at most 511 characters
    Bootstrap(const CameraOptions& options, const NetworkIdentity& network, std::string url,
              Device& device, Faults& faults);

    /// What DISCOVERY is answered with. Thread-safe.
    [[nodiscard]] gige::wire::DiscoveryAck identity() const;

    /// @param address  multiple of 4; nothing where there is no register
    [[nodiscard]] std::optional<std::uint32_t> read(std::uint32_t address) const;
    Status write(std::uint32_t address, std::uint32_t value, const Endpoint& from);

    [[nodiscard]] ControlPrivilege& privilege() { return mPrivilege; }
    [[nodiscard]] CameraTime heartbeatTimeout() const;
    [[nodiscard]] bool heartbeatEnabled() const;
    [[nodiscard]] bool pendingAckEnabled() const;
    /// The host has let go or fallen silent: open, channels closed.
    void dropHost();
    /// True once after a write that asked for a test packet.
    [[nodiscard]] bool takeTestRequest();
    /// Port that images are sent from.
    void setSourcePort(std::uint16_t port) { mSourcePort = port; }

  private:
    [[nodiscard]] std::optional<std::uint32_t> readText(std::uint32_t address) const;
    [[nodiscard]] std::optional<std::uint32_t> readStream(std::uint32_t address) const;
    Status writeStream(std::uint32_t address, std::uint32_t value);
    Status writePacketSize(std::uint32_t value);
    Status writePrivilege(std::uint32_t value, const Endpoint& from);
    void writeUserName(std::uint32_t address, std::uint32_t value);

    const CameraOptions& mOptions;
    const NetworkIdentity mNetwork;
    const std::string mUrl;
    Device& mDevice;
    Faults& mFaults;
    ControlPrivilege mPrivilege;
    std::uint32_t mHeartbeat = 3000; // ms
    std::uint32_t mGvcpConfiguration = 0;
    std::uint64_t mLatchedTime = 0;
    std::uint16_t mSourcePort = 0;
    bool mTestRequested = false;
};

} // namespace camera

#endif
