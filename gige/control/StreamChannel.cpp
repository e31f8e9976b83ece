#include "StreamChannel.h"

namespace gige::control
{

Status StreamChannel::setDestination(net::Ipv4Address address, std::uint16_t port)
{
    const Status result = mDevice.writeRegister(mRegisters.destinationAddress(), address.value);
    return result == Status::Ok ? mDevice.writeRegister(mRegisters.port(), port) : result;
}

Status StreamChannel::resetDestination()
{
    return mDevice.writeRegister(mRegisters.port(), 0);
}

Result<std::uint16_t> StreamChannel::sourcePort()
{
    const auto value = mDevice.readRegister(mRegisters.sourcePort());
    if (!value) {
        return value.status();
    }
    return static_cast<std::uint16_t>(*value & wire::kPortMask);
}

Result<std::uint32_t> StreamChannel::packetSize()
{
    const auto value = packetSizeRegister();
    if (!value) {
        return value;
    }
    return *value & wire::kPacketSizeMask;
}

Status StreamChannel::setPacketSize(std::uint32_t size)
{
    return writePacketSize(size, 0);
}

Status StreamChannel::fireTestPacket(std::uint32_t size)
{
    return writePacketSize(size, wire::kFireTestPacket | wire::kDoNotFragment);
}

Result<std::uint32_t> StreamChannel::packetSizeRegister()
{
    return mDevice.readRegister(mRegisters.packetSize());
}

Status StreamChannel::setPacketSizeRegister(std::uint32_t value)
{
    return mDevice.writeRegister(mRegisters.packetSize(), value);
}

Status StreamChannel::writePacketSize(std::uint32_t size, std::uint32_t newFlags)
{
    if (size == 0 || size > wire::kPacketSizeMask) {
        return Status::InvalidParameter;
    }
    const auto before = packetSizeRegister();
    if (!before) {
        return before.status();
    }
    // Some devices read the fire bit back; written again it would send another packet.
    const std::uint32_t flags = *before & (wire::kDoNotFragment | wire::kPixelsBigEndian);
    return setPacketSizeRegister(size | flags | newFlags);
}

} // namespace gige::control
