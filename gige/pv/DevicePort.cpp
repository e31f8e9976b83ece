#include "DevicePort.h"

#include "StatusTranslations.h"

namespace
{

using gige::genapi::Status;

/// GVCP addresses have 32 bits, those of a description 64.
bool isReachable(std::uint64_t address, std::size_t size)
{
    constexpr std::uint64_t kEnd = std::uint64_t{1} << 32;
    return address < kEnd && size <= kEnd - address;
}

} // namespace

Status DevicePort::readMemory(std::uint64_t address, std::span<std::uint8_t> bytes)
{
    if (!isReachable(address, bytes.size())) {
        return Status::PortBadAddress;
    }
    return toPortStatus(mRegisters.readMemory(static_cast<std::uint32_t>(address), bytes));
}

Status DevicePort::writeMemory(std::uint64_t address, std::span<const std::uint8_t> bytes)
{
    if (!isReachable(address, bytes.size())) {
        return Status::PortBadAddress;
    }
    return toPortStatus(mRegisters.writeMemory(static_cast<std::uint32_t>(address), bytes));
}

Status DevicePort::readRegister(std::uint64_t address, std::uint32_t& value)
{
    if (!isReachable(address, sizeof value)) {
        return Status::PortBadAddress;
    }
    const auto read = mRegisters.readRegister(static_cast<std::uint32_t>(address));
    value = read.valueOr(0);
    return toPortStatus(read.status());
}

Status DevicePort::writeRegister(std::uint64_t address, std::uint32_t value)
{
    if (!isReachable(address, sizeof value)) {
        return Status::PortBadAddress;
    }
    return toPortStatus(mRegisters.writeRegister(static_cast<std::uint32_t>(address), value));
}
