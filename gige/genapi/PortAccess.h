#ifndef TELVO_GIGE_GENAPI_PORTACCESS_H
#define TELVO_GIGE_GENAPI_PORTACCESS_H

#include "RegisterByteOrder.h"
#include "RegisterPort.h"

#include <cstddef>

namespace gige::genapi
{

/// Which commands a device wants its registers to be accessed with.
struct PortPolicy {
    /// Aligned registers of 4 bytes go by READREG and WRITEREG, and their number is what those
    /// commands carry. For descriptions of schema 1.0, and for devices that only claim a later one.
    bool fourBytesAsRegister = false;
    /// GVCP capability bit 0x2 (register 0x0934). Without it every write goes by WRITEREG.
    bool hasWriteMemory = true;
    /// Device mode bit 0x80000000 (register 0x0004): READREG gives the bytes as big-endian number.
    bool isBigEndian = true;
};

/// Accesses of any address and size on a port that wants multiples of 4: reads the covering range,
/// and for odd writes reads it, patches it and writes it back.
class PortAccess
{
  public:
    /// @param port must outlive this object
    PortAccess(RegisterPort& port, PortPolicy policy) : mPort(port), mPolicy(policy) {}

    Status read(std::uint64_t address, std::span<std::uint8_t> bytes);
    Status write(std::uint64_t address, std::span<const std::uint8_t> bytes);

    /// The order in which the bytes of a register make its number.
    /// @param declared  the register's own Endianess
    ByteOrder byteOrder(std::uint64_t address, std::size_t size, ByteOrder declared) const;

  private:
    bool isRegister(std::uint64_t address, std::size_t size) const;
    Status writeAligned(std::uint64_t address, std::span<const std::uint8_t> bytes);
    Status writeCovering(std::uint64_t address, std::span<const std::uint8_t> bytes);

    RegisterPort& mPort;
    PortPolicy mPolicy;
};

} // namespace gige::genapi

#endif
