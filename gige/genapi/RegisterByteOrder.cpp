#include "RegisterByteOrder.h"

#include <cstddef>

namespace gige::genapi
{

namespace
{

constexpr unsigned kByteWidth = 8; // bits

unsigned shiftOf(std::size_t index, std::size_t size, ByteOrder order)
{
    const std::size_t significance = order == ByteOrder::BigEndian ? size - 1 - index : index;
    return static_cast<unsigned>(significance) * kByteWidth;
}

} // namespace

std::uint64_t assemble(std::span<const std::uint8_t> bytes, ByteOrder order)
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        value |= std::uint64_t{bytes[i]} << shiftOf(i, bytes.size(), order);
    }
    return value;
}

void spread(std::uint64_t value, std::span<std::uint8_t> bytes, ByteOrder order)
{
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(value >> shiftOf(i, bytes.size(), order));
    }
}

} // namespace gige::genapi
