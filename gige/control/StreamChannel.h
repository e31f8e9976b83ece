#ifndef TELVO_GIGE_CONTROL_STREAMCHANNEL_H
#define TELVO_GIGE_CONTROL_STREAMCHANNEL_H

#include "BootstrapRegisters.h"
#include "ControlStatus.h"
#include "DeviceRegisters.h"
#include "Ipv4Address.h"

#include <cstdint>

namespace gige::control
{

/// The registers of one stream channel of a device (0x0D00 + 0x40 per channel). Borrows the
/// device's registers. Threads: any.
class StreamChannel
{
  public:
    /// @param channel  0..511
    StreamChannel(DeviceRegisters& device, std::uint32_t channel)
        : mDevice(device), mRegisters(channel)
    {
    }

    /// Opens the channel: images go to this address and UDP port (SCDA, then SCP).
    Status setDestination(net::Ipv4Address address, std::uint16_t port);
    /// Closes the channel: SCP = 0.
    Status resetDestination();

    /// @return the port that the device sends from (SCSP); 0 or an error: the device does not tell
    Result<std::uint16_t> sourcePort();

    /// Bytes of one IP datagram (SCPS, low 16 bits); 0: none set yet.
    Result<std::uint32_t> packetSize();
    /// Sets the size and leaves the flags as they are. The device may round or clamp: read back.
    /// @param size  1..65535; else INVALID_PARAMETER
    Status setPacketSize(std::uint32_t size);
    /// Sets the size and makes the device send one test packet of it, not to be fragmented.
    Status fireTestPacket(std::uint32_t size);
    /// SCPS with its flags (kDoNotFragment, kPixelsBigEndian).
    Result<std::uint32_t> packetSizeRegister();
    Status setPacketSizeRegister(std::uint32_t value);

  private:
    Status writePacketSize(std::uint32_t size, std::uint32_t newFlags);

    DeviceRegisters& mDevice;
    wire::StreamChannelRegisters mRegisters;
};

} // namespace gige::control

#endif
