#ifndef TELVO_GIGE_PV_DEVICEPORT_H
#define TELVO_GIGE_PV_DEVICEPORT_H

#include "DeviceRegisters.h"
#include "RegisterPort.h"

/// The registers of a connected device, as its feature tree reads and writes them.
class DevicePort final : public gige::genapi::RegisterPort
{
  public:
    /// @param registers  must outlive this object
    explicit DevicePort(gige::control::DeviceRegisters& registers) : mRegisters(registers) {}

    gige::genapi::Status readMemory(std::uint64_t address, std::span<std::uint8_t> bytes) override;
    gige::genapi::Status writeMemory(std::uint64_t address,
                                     std::span<const std::uint8_t> bytes) override;
    gige::genapi::Status readRegister(std::uint64_t address, std::uint32_t& value) override;
    gige::genapi::Status writeRegister(std::uint64_t address, std::uint32_t value) override;

  private:
    gige::control::DeviceRegisters& mRegisters;
};

#endif
