#ifndef TELVO_GIGE_CONTROL_DEVICECONNECTION_H
#define TELVO_GIGE_CONTROL_DEVICECONNECTION_H

#include "ControlChannel.h"
#include "ControlStatus.h"
#include "DeviceAddress.h"
#include "DeviceRegisters.h"
#include "Heartbeat.h"
#include "LinkSettings.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace gige::control
{

/// Values of the control channel privilege register (CCP, 0x0A00).
enum class AccessType : std::uint8_t {
    Open = 0,      // reads only
    Exclusive = 1, // nobody else may even read
    Control = 2,   // others may read
};

/// Control of one device, from a successful open() to disconnect() or the loss of the link. A
/// heartbeat keeps it alive meanwhile. Once it has ended, all operations answer NotConnected.
/// Threads: any; disconnect() may also be called, and the object be destroyed, by `linkLost`.
class DeviceConnection
{
  public:
    /// Reads what the device is, takes control of it, sets the heartbeat timeout and switches on
    /// PENDING_ACK and extended status codes where the device offers them.
    /// @param settings  borrowed for the connection's life
    /// @param linkLost  called once when the device stays silent for the heartbeat timeout or gives
    ///                  control to another host; on a thread of this connection, never by
    ///                  disconnect(); it may outlive the connection, throws nothing
    /// A device that falls silent meanwhile makes this fail within ControlLimits::opening.
    /// @return the device's error AccessDenied: another host holds the device; Timeout;
    /// NetworkError
    static Result<std::unique_ptr<DeviceConnection>>
    open(const DeviceAddress& address, AccessType access, const LinkSettings& settings,
         std::function<void()> linkLost, const ControlLimits& limits = {});
    /// The same over a channel to that address.
    static Result<std::unique_ptr<DeviceConnection>>
    open(std::unique_ptr<ControlChannel> channel, const DeviceAddress& address, AccessType access,
         const LinkSettings& settings, std::function<void()> linkLost, const ControlLimits& limits);
    /// Disconnects.
    ~DeviceConnection();
    DeviceConnection(const DeviceConnection&) = delete;
    DeviceConnection& operator=(const DeviceConnection&) = delete;

    /// Ends waiting commands at once, gives the control privilege back (CCP = 0) and ends the
    /// heartbeat. Waits half a second at most for a running `linkLost`, and not at all when called
    /// by it. Takes a second at most when the device has gone silent.
    void disconnect();
    /// The host goes on making its connection while the object lives: see ControlChannel::Opening.
    [[nodiscard]] ControlChannel::Opening opening() { return ControlChannel::Opening(*mChannel); }
    /// The host is about to disconnect: see ControlChannel::hurry().
    void hurry() { mChannel->hurry(); }
    [[nodiscard]] bool isConnected() const { return !mChannel->isClosed(); }

    /// Registers and memory of the device. Lives as long as the connection object.
    [[nodiscard]] DeviceRegisters& registers() { return mRegisters; }
    [[nodiscard]] const DeviceAddress& address() const { return mAddress; }
    [[nodiscard]] AccessType access() const { return mAccess; }

  private:
    DeviceConnection(DeviceAddress address, AccessType access,
                     std::unique_ptr<ControlChannel> channel);

    /// Takes the privilege, if the access type asks for it.
    Status takeControl();
    HeartbeatDuty agreeOnHeartbeat(std::uint32_t timeout, const HeartbeatBounds& bounds);
    /// Gives the privilege back over the closed channel.
    void release() noexcept;
    void enableOptions();
    [[nodiscard]] std::optional<PrimaryApplication> readOwner();

    DeviceAddress mAddress;
    AccessType mAccess;
    std::unique_ptr<ControlChannel> mChannel;
    DeviceRegisters mRegisters;
    bool mMayHaveControl = false;
    std::atomic<bool> mDisconnected{false};
    std::unique_ptr<Heartbeat> mHeartbeat; // last: it uses all others
};

} // namespace gige::control

#endif
