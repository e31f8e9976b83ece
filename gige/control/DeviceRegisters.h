#ifndef TELVO_GIGE_CONTROL_DEVICEREGISTERS_H
#define TELVO_GIGE_CONTROL_DEVICEREGISTERS_H

#include "ControlChannel.h"
#include "ControlStatus.h"

#include <atomic>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace gige::control
{

/// What a device says about itself in its first registers.
struct DeviceTraits {
    std::uint32_t version = 0x00010000; // Version, 0x0000: major << 16 | minor
    bool bigEndianRegisters = true;     // Device mode, 0x0004, bit 0x80000000
    std::uint32_t capability = 0;       // GVCP capability, 0x0934

    /// @param bit  kCapability…
    [[nodiscard]] bool has(std::uint32_t bit) const { return (capability & bit) != 0; }
};

/// Registers and memory of one device. All operations block until the device has answered, or not,
/// and split what does not fit into one command; other threads' commands may run in between.
/// Addresses must be multiples of 4, as must lengths of memory; else INVALID_PARAMETER, and nothing
/// is sent. Threads: any.
class DeviceRegisters
{
  public:
    using TimePoint = ControlChannel::TimePoint;

    explicit DeviceRegisters(ControlChannel& channel) : mChannel(channel) {}

    /// Reads version, device mode and capability. A device of an old standard may lack some.
    /// Once, before other threads use the object.
    /// @return an error only when the device does not answer, or refuses access
    Status readTraits();
    [[nodiscard]] const DeviceTraits& traits() const { return mTraits; }

    Result<std::uint32_t> readRegister(std::uint32_t address);
    /// In as few commands as the device allows. Either all values or an error.
    /// @param deadline  gives up with a timeout then, however many tries are left
    Result<std::vector<std::uint32_t>> readRegisters(std::span<const std::uint32_t> addresses,
                                                     TimePoint deadline = TimePoint::max());
    Status writeRegister(std::uint32_t address, std::uint32_t value);

    /// Bytes in address order. On an error the contents of `into` are undefined.
    /// @param deadline  gives up with a timeout then, however much has been read
    Status readMemory(std::uint32_t address, std::span<std::uint8_t> into,
                      TimePoint deadline = TimePoint::max());
    /// A device without WRITEMEM gets the bytes register by register.
    /// On an error in a later piece the earlier ones are written.
    Status writeMemory(std::uint32_t address, std::span<const std::uint8_t> bytes);
    /// A text up to its NUL, or of the full length where the device sends none.
    Result<std::string> readString(std::uint32_t address, std::size_t length);

  private:
    /// The fallback if the device has no such register.
    Result<std::uint32_t> readOptional(std::uint32_t address, std::uint32_t fallback);
    Result<std::vector<std::uint32_t>> readRegisterGroup(std::span<const std::uint32_t> addresses,
                                                         TimePoint deadline);
    Status writeMemoryAsRegisters(std::uint32_t address, std::span<const std::uint8_t> bytes);

    ControlChannel& mChannel;
    DeviceTraits mTraits;
    std::atomic<bool> mWriteMemoryMissing{false};
};

} // namespace gige::control

#endif
