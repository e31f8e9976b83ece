#ifndef TELVO_PLATFORM_EBUS_PVDEVICEEVENTSINK_H
#define TELVO_PLATFORM_EBUS_PVDEVICEEVENTSINK_H

#include <cstdint>

class PvDevice;

/// Receiver of a device's notifications. The order of the operations is the interface between
/// device and receiver. Called on the stack's own threads.
class PvDeviceEventSink
{
  public:
    PvDeviceEventSink() = default;
    virtual ~PvDeviceEventSink() = default;
    PvDeviceEventSink(const PvDeviceEventSink&) = delete;
    PvDeviceEventSink& operator=(const PvDeviceEventSink&) = delete;

    virtual void OnNotification1(PvDevice* /*device*/) {}
    virtual void OnNotification2(PvDevice* /*device*/) {}
    virtual void OnNotification3(PvDevice* /*device*/) {}
    /// The device no longer answers. Called once per connection.
    virtual void OnLinkDisconnected(PvDevice* /*device*/) {}
    virtual void OnNotification5(PvDevice* /*device*/) {}
    virtual void OnEvent(PvDevice* /*device*/, std::uint16_t /*eventId*/, std::uint16_t /*channel*/,
                         std::uint64_t /*blockId*/, std::uint64_t /*timestamp*/,
                         const void* /*data*/, std::uint32_t /*dataLength*/)
    {
    }
    virtual void OnCmdLinkRead(const void* /*data*/, std::int32_t /*length*/) {}
    virtual void OnCmdLinkWrite(const void* /*data*/, std::int32_t /*length*/) {}
};

#endif
