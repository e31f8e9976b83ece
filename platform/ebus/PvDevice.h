#ifndef TELVO_PLATFORM_EBUS_PVDEVICE_H
#define TELVO_PLATFORM_EBUS_PVDEVICE_H

#include "PvDeviceEventSink.h"
#include "PvDeviceInfo.h"
#include "PvGenParameterArray.h"
#include "PvResult.h"

#include <cstdint>
#include <memory>

/// Values of the control-channel privilege register (CCP, 0x0A00).
enum class PvAccessType : std::uint32_t { Open = 0, Exclusive = 1, Control = 2 };

/// Control link to one camera. All operations may be called from any thread; they are serialised
/// inside. Destroying a connected device disconnects it.
class PvDevice
{
  public:
    PvDevice();
    ~PvDevice();
    PvDevice(const PvDevice&) = delete;
    PvDevice& operator=(const PvDevice&) = delete;

    /// Gives a camera an IP address until its power-off (FORCEIP).
    /// @param macAddress  "02:54:45:00:00:21"; "-" separators and any case accepted
    /// @param ipAddress, subnetMask, gateway  dotted; an address in brackets is accepted
    /// @return OK once the camera answers under the address; INVALID_PARAMETER for a malformed
    /// text; TIMEOUT when it does not
    static PvResult SetIPConfiguration(const PvString& macAddress, const PvString& ipAddress,
                                       const PvString& subnetMask, const PvString& gateway);

    /// @param address  MAC text, found by discovery, or IP text
    /// @return NOT_FOUND, ACCESS_DENIED (another host holds it), TIMEOUT, GENERIC_ERROR (no usable
    /// device description), STATE_ERROR (already connected)
    PvResult Connect(const PvString& address, PvAccessType accessType);
    PvResult Connect(const PvDeviceInfo* info, PvAccessType accessType);
    PvResult Disconnect();
    /// False before a connect, after a disconnect and after the link was lost.
    bool IsConnected() const;

    /// Finds the largest packet that reaches the host and sets it.
    /// @param defaultSize  bytes; set when the device answers no test packet and has no size of its
    /// own
    PvResult NegotiatePacketSize(std::uint32_t channel, std::uint32_t defaultSize);
    PvResult SetStreamDestination(const PvString& ipAddress, std::uint16_t port,
                                  std::uint32_t channel);
    /// Closes the channel, as a host does that leaves: for some seconds the camera then gets little
    /// time for its answers.
    PvResult ResetStreamDestination(std::uint32_t channel);

    /// The device shares the sink until it is unregistered, and a running notification does: nobody
    /// waits for a notification, which may last as long as the host's own code wants. So it may
    /// still run when the sink is unregistered and when the device is destroyed.
    PvResult RegisterEventSink(std::shared_ptr<PvDeviceEventSink> sink);
    PvResult UnregisterEventSink(const PvDeviceEventSink* sink);

    /// The camera's features. The array lives until the device is destroyed or connected again;
    /// without a connection it is empty, and after a disconnect its objects answer NOT_CONNECTED.
    PvGenParameterArray* GetGenParameters();
    /// Parameters of the link: "AnswerTimeout", "CommandRetryCount", "DefaultHeartbeatTimeout",
    /// "HeartbeatInterval" (milliseconds), "DisconnectOnAnswerTimeout". There without a connection.
    PvGenParameterArray* GetGenLink();

    class Impl;
    /// For the stack's other classes.
    Impl& impl() const { return *mImpl; }

  private:
    std::unique_ptr<Impl> mImpl;
};

#endif
