#include "DevicePort.h"

#include "ControlResult.h"

namespace
{

using gige::control::ControlResult;
using gige::control::ControlStatus;
using gige::genapi::Status;
using gige::wire::GvcpStatus;

Status deviceStatus(GvcpStatus status)
{
    switch (status) {
    case GvcpStatus::AccessDenied:
    case GvcpStatus::WriteProtect:
        return Status::PortAccessDenied;
    case GvcpStatus::InvalidAddress:
    case GvcpStatus::BadAlignment:
        return Status::PortBadAddress;
    case GvcpStatus::Busy:
        return Status::PortBusy;
    default:
        return Status::PortError;
    }
}

Status portStatus(const ControlResult& result)
{
    switch (result.status) {
    case ControlStatus::Ok:
        return Status::Ok;
    case ControlStatus::DeviceError:
        return deviceStatus(result.deviceStatus);
    case ControlStatus::Timeout:
        return Status::PortTimeout;
    case ControlStatus::NotConnected:
        return Status::PortNotConnected;
    case ControlStatus::InvalidParameter:
        return Status::PortBadAddress;
    case ControlStatus::NetworkError:
    case ControlStatus::NotFound:
        return Status::PortError;
    }
    return Status::PortError;
}

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
    return portStatus(mRegisters.readMemory(static_cast<std::uint32_t>(address), bytes));
}

Status DevicePort::writeMemory(std::uint64_t address, std::span<const std::uint8_t> bytes)
{
    if (!isReachable(address, bytes.size())) {
        return Status::PortBadAddress;
    }
    return portStatus(mRegisters.writeMemory(static_cast<std::uint32_t>(address), bytes));
}

Status DevicePort::readRegister(std::uint64_t address, std::uint32_t& value)
{
    if (!isReachable(address, sizeof value)) {
        return Status::PortBadAddress;
    }
    const auto read = mRegisters.readRegister(static_cast<std::uint32_t>(address));
    value = read.valueOr(0);
    return portStatus(read.result());
}

Status DevicePort::writeRegister(std::uint64_t address, std::uint32_t value)
{
    if (!isReachable(address, sizeof value)) {
        return Status::PortBadAddress;
    }
    return portStatus(mRegisters.writeRegister(static_cast<std::uint32_t>(address), value));
}
