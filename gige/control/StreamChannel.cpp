#include "StreamChannel.h"

namespace gige::control
{

ControlResult StreamChannel::setDestination(net::Ipv4Address address, std::uint16_t port)
{
    const ControlResult result =
        mDevice.writeRegister(mRegisters.destinationAddress(), address.value);
    return result.ok() ? mDevice.writeRegister(mRegisters.port(), port) : result;
}

ControlResult StreamChannel::resetDestination()
{
    return mDevice.writeRegister(mRegisters.port(), 0);
}

ControlValue<std::uint16_t> StreamChannel::sourcePort()
{
    const auto value = mDevice.readRegister(mRegisters.sourcePort());
    if (!value.ok()) {
        return value.result();
    }
    return static_cast<std::uint16_t>(*value & wire::kPortMask);
}

ControlValue<std::uint32_t> StreamChannel::packetSize()
{
    const auto value = packetSizeRegister();
    if (!value.ok()) {
        return value;
    }
    return *value & wire::kPacketSizeMask;
}

ControlResult StreamChannel::setPacketSize(std::uint32_t size)
{
    return writePacketSize(size, 0);
}

ControlResult StreamChannel::fireTestPacket(std::uint32_t size)
{
    return writePacketSize(size, wire::kFireTestPacket | wire::kDoNotFragment);
}

ControlValue<std::uint32_t> StreamChannel::packetSizeRegister()
{
    return mDevice.readRegister(mRegisters.packetSize());
}

ControlResult StreamChannel::setPacketSizeRegister(std::uint32_t value)
{
    return mDevice.writeRegister(mRegisters.packetSize(), value);
}

ControlResult StreamChannel::writePacketSize(std::uint32_t size, std::uint32_t newFlags)
{
    if (size == 0 || size > wire::kPacketSizeMask) {
        return {ControlStatus::InvalidParameter};
    }
    const auto before = packetSizeRegister();
    if (!before.ok()) {
        return before.result();
    }
    // Some devices read the fire bit back; written again it would send another packet.
    const std::uint32_t flags = *before & (wire::kDoNotFragment | wire::kPixelsBigEndian);
    return setPacketSizeRegister(size | flags | newFlags);
}

ControlValue<std::uint32_t> StreamChannel::packetDelay()
{
    return mDevice.readRegister(mRegisters.packetDelay());
}

ControlResult StreamChannel::setPacketDelay(std::uint32_t ticks)
{
    return mDevice.writeRegister(mRegisters.packetDelay(), ticks);
}

} // namespace gige::control
