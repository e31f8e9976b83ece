#ifndef TELVO_GIGE_GENAPI_REGISTERPORT_H
#define TELVO_GIGE_GENAPI_REGISTERPORT_H

#include "GenApiStatus.h"

#include <cstdint>
#include <span>

namespace gige::genapi
{

/// The device's registers, as the control channel reaches them. A node map makes one call at a
/// time, on the thread that asked for the feature. Failures are the Port… statuses.
class RegisterPort
{
  public:
    RegisterPort() = default;
    virtual ~RegisterPort() = default;
    RegisterPort(const RegisterPort&) = delete;
    RegisterPort& operator=(const RegisterPort&) = delete;

    /// READMEM. Address and size are multiples of 4; the size is at most kRegisterSizeLimit + 6,
    /// so the port splits what is too long for one request.
    virtual Status readMemory(std::uint64_t address, std::span<std::uint8_t> bytes) = 0;
    /// WRITEMEM, same rules.
    virtual Status writeMemory(std::uint64_t address, std::span<const std::uint8_t> bytes) = 0;
    /// READREG at a multiple of 4.
    virtual Status readRegister(std::uint64_t address, std::uint32_t& value) = 0;
    /// WRITEREG at a multiple of 4.
    virtual Status writeRegister(std::uint64_t address, std::uint32_t value) = 0;
};

} // namespace gige::genapi

#endif
