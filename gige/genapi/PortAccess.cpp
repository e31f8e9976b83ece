#include "PortAccess.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace gige::genapi
{

namespace
{

constexpr std::size_t kWord = 4; // bytes; what addresses and sizes on the wire are multiples of

struct Range {
    std::uint64_t address;
    std::size_t size;
};

Range covering(std::uint64_t address, std::size_t size)
{
    const std::size_t before = address % kWord;
    return {address - before, (before + size + kWord - 1) / kWord * kWord};
}

// With room for a word, since the covering range must not wrap around either.
bool isWithinAddressSpace(std::uint64_t address, std::size_t size)
{
    return address <= std::numeric_limits<std::uint64_t>::max() - size - kWord;
}

bool isAligned(std::uint64_t address, std::size_t size)
{
    return address % kWord == 0 && size % kWord == 0;
}

} // namespace

Status PortAccess::read(std::uint64_t address, std::span<std::uint8_t> bytes)
{
    if (!isWithinAddressSpace(address, bytes.size())) {
        return Status::PortBadAddress;
    }
    if (isRegister(address, bytes.size())) {
        std::uint32_t value = 0;
        const Status status = mPort.readRegister(address, value);
        spread(value, bytes, ByteOrder::BigEndian);
        return status;
    }
    if (isAligned(address, bytes.size())) {
        return mPort.readMemory(address, bytes);
    }
    const Range range = covering(address, bytes.size());
    std::vector<std::uint8_t> words(range.size);
    const Status status = mPort.readMemory(range.address, words);
    std::ranges::copy(std::span(words).subspan(address - range.address, bytes.size()),
                      bytes.begin());
    return status;
}

Status PortAccess::write(std::uint64_t address, std::span<const std::uint8_t> bytes)
{
    if (!isWithinAddressSpace(address, bytes.size())) {
        return Status::PortBadAddress;
    }
    if (isRegister(address, bytes.size())) {
        const auto value = static_cast<std::uint32_t>(assemble(bytes, ByteOrder::BigEndian));
        return mPort.writeRegister(address, value);
    }
    return isAligned(address, bytes.size()) ? writeAligned(address, bytes)
                                            : writeCovering(address, bytes);
}

Status PortAccess::writeAligned(std::uint64_t address, std::span<const std::uint8_t> bytes)
{
    if (mPolicy.hasWriteMemory) {
        return mPort.writeMemory(address, bytes);
    }
    // WRITEREG carries a number: the bytes must come to lie in the device as they do here.
    const ByteOrder order = mPolicy.isBigEndian ? ByteOrder::BigEndian : ByteOrder::LittleEndian;
    Status status = Status::Ok;
    for (std::size_t at = 0; at < bytes.size() && status == Status::Ok; at += kWord) {
        const auto value = static_cast<std::uint32_t>(assemble(bytes.subspan(at, kWord), order));
        status = mPort.writeRegister(address + at, value);
    }
    return status;
}

Status PortAccess::writeCovering(std::uint64_t address, std::span<const std::uint8_t> bytes)
{
    const Range range = covering(address, bytes.size());
    std::vector<std::uint8_t> words(range.size);
    const Status status = mPort.readMemory(range.address, words);
    // Without the neighbouring bytes the write would destroy them.
    if (status != Status::Ok) {
        return status;
    }
    std::ranges::copy(bytes, words.begin() + static_cast<std::ptrdiff_t>(address - range.address));
    return writeAligned(range.address, words);
}

ByteOrder PortAccess::byteOrder(std::uint64_t address, std::size_t size, ByteOrder declared) const
{
    return isRegister(address, size) ? ByteOrder::BigEndian : declared;
}

bool PortAccess::isRegister(std::uint64_t address, std::size_t size) const
{
    return mPolicy.fourBytesAsRegister && size == kWord && address % kWord == 0;
}

} // namespace gige::genapi
