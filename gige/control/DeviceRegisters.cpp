#include "DeviceRegisters.h"

#include "BootstrapRegisters.h"
#include "GvcpPayloads.h"

#include <algorithm>
#include <array>

namespace gige::control
{

namespace
{

constexpr std::uint32_t kAlignment = 4; // bytes

bool aligned(std::uint64_t value)
{
    return value % kAlignment == 0;
}

/// A block that starts at a register and does not run over the end of the address space.
bool validBlock(std::uint32_t address, std::size_t length)
{
    return aligned(address) && aligned(length) && length <= (std::uint64_t{1} << 32) - address;
}

/// The device is there, but does not know what it was asked for.
bool lacks(Status status)
{
    return isDeviceError(status) && status != deviceError(wire::GvcpStatus::AccessDenied) &&
           status != deviceError(wire::GvcpStatus::Busy);
}

/// The number that WRITEREG takes for four bytes of memory.
std::uint32_t registerValue(const std::uint8_t* bytes, bool bigEndian)
{
    std::array<std::uint8_t, kAlignment> ordered{bytes[0], bytes[1], bytes[2], bytes[3]};
    if (!bigEndian) {
        std::ranges::reverse(ordered);
    }
    return wire::getU32(ordered.data());
}

} // namespace

Status DeviceRegisters::readTraits()
{
    const auto version = readOptional(wire::kRegVersion, mTraits.version);
    const auto mode = version ? readOptional(wire::kRegDeviceMode, wire::kModeBigEndian) : version;
    const auto capability = mode ? readOptional(wire::kRegGvcpCapability, 0) : mode;
    if (!capability) {
        return capability.status();
    }
    mTraits = {.version = *version,
               .bigEndianRegisters = (*mode & wire::kModeBigEndian) != 0,
               .capability = *capability};
    mWriteMemoryMissing = !mTraits.has(wire::kCapabilityWriteMemory);
    return Status::Ok;
}

Result<std::uint32_t> DeviceRegisters::readOptional(std::uint32_t address, std::uint32_t fallback)
{
    const auto value = readRegister(address);
    return lacks(value.status()) ? fallback : value;
}

Result<std::uint32_t> DeviceRegisters::readRegister(std::uint32_t address)
{
    const auto values = readRegisters(std::array{address});
    if (!values) {
        return values.status();
    }
    return values->front();
}

Result<std::vector<std::uint32_t>>
DeviceRegisters::readRegisters(std::span<const std::uint32_t> addresses, TimePoint deadline)
{
    if (!std::ranges::all_of(addresses, aligned)) {
        return Status::InvalidParameter;
    }
    const std::size_t most =
        mTraits.has(wire::kCapabilityConcatenation) ? wire::kMaxReadRegisters : 1;
    std::vector<std::uint32_t> values;
    while (!addresses.empty()) {
        const std::size_t count = std::min(addresses.size(), most);
        auto group = readRegisterGroup(addresses.first(count), deadline);
        if (!group) {
            return group;
        }
        values.insert(values.end(), group->begin(), group->end());
        addresses = addresses.subspan(count);
    }
    return values;
}

Result<std::vector<std::uint32_t>>
DeviceRegisters::readRegisterGroup(std::span<const std::uint32_t> addresses, TimePoint deadline)
{
    const wire::ReadRegister command{{addresses.begin(), addresses.end()}};
    const std::size_t length = addresses.size() * sizeof(std::uint32_t);
    const auto payload = mChannel.execute(
        {.code = wire::GvcpCommand::ReadRegister,
         .payload = encode(command),
         .acceptable = [length](wire::ByteView ack) { return ack.size() >= length; }},
        deadline);
    if (!payload) {
        return payload.status();
    }
    std::vector<std::uint32_t> values;
    for (std::size_t at = 0; at < length; at += sizeof(std::uint32_t)) {
        values.push_back(wire::getU32(&(*payload)[at]));
    }
    return values;
}

Status DeviceRegisters::writeRegister(std::uint32_t address, std::uint32_t value)
{
    if (!aligned(address)) {
        return Status::InvalidParameter;
    }
    return mChannel
        .execute({.code = wire::GvcpCommand::WriteRegister,
                  .payload = encode(wire::WriteRegister{{{address, value}}})})
        .status();
}

Status DeviceRegisters::readMemory(std::uint32_t address, std::span<std::uint8_t> into,
                                   TimePoint deadline)
{
    if (!validBlock(address, into.size())) {
        return Status::InvalidParameter;
    }
    while (!into.empty()) {
        const std::size_t count = std::min(into.size(), wire::kMaxMemoryBytes);
        const wire::ReadMemory command{.address = address,
                                       .count = static_cast<std::uint16_t>(count)};
        const auto acceptable = [&](wire::ByteView ack) {
            const auto block = wire::decodeMemoryBlock(ack);
            return block && block->address == address && block->data.size() >= count;
        };
        const auto payload = mChannel.execute({.code = wire::GvcpCommand::ReadMemory,
                                               .payload = encode(command),
                                               .acceptable = acceptable},
                                              deadline);
        if (!payload) {
            return payload.status();
        }
        std::ranges::copy_n(payload->begin() + sizeof address, static_cast<std::ptrdiff_t>(count),
                            into.begin());
        address += static_cast<std::uint32_t>(count);
        into = into.subspan(count);
    }
    return Status::Ok;
}

Status DeviceRegisters::writeMemory(std::uint32_t address, std::span<const std::uint8_t> bytes)
{
    if (!validBlock(address, bytes.size())) {
        return Status::InvalidParameter;
    }
    while (!bytes.empty() && !mWriteMemoryMissing) {
        const auto piece = bytes.first(std::min(bytes.size(), wire::kMaxMemoryBytes));
        const Status written =
            mChannel
                .execute({.code = wire::GvcpCommand::WriteMemory,
                          .payload = encode(wire::MemoryBlock{.address = address, .data = piece})})
                .status();
        if (written == deviceError(wire::GvcpStatus::NotImplemented)) {
            mWriteMemoryMissing = true;
            break;
        }
        if (written != Status::Ok) {
            return written;
        }
        address += static_cast<std::uint32_t>(piece.size());
        bytes = bytes.subspan(piece.size());
    }
    return writeMemoryAsRegisters(address, bytes);
}

Status DeviceRegisters::writeMemoryAsRegisters(std::uint32_t address,
                                               std::span<const std::uint8_t> bytes)
{
    for (; !bytes.empty(); bytes = bytes.subspan(kAlignment), address += kAlignment) {
        const Status written =
            writeRegister(address, registerValue(bytes.data(), mTraits.bigEndianRegisters));
        if (written != Status::Ok) {
            return written;
        }
    }
    return Status::Ok;
}

Result<std::string> DeviceRegisters::readString(std::uint32_t address, std::size_t length)
{
    std::vector<std::uint8_t> field((length + kAlignment - 1) / kAlignment * kAlignment);
    if (const Status read = readMemory(address, field); read != Status::Ok) {
        return read;
    }
    return wire::getText(wire::ByteView(field).first(length));
}

} // namespace gige::control
