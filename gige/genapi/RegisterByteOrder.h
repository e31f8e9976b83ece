#ifndef TELVO_GIGE_GENAPI_REGISTERBYTEORDER_H
#define TELVO_GIGE_GENAPI_REGISTERBYTEORDER_H

#include <cstdint>
#include <span>

namespace gige::genapi
{

enum class ByteOrder : std::uint8_t { LittleEndian, BigEndian };

/// @param bytes at most 8
std::uint64_t assemble(std::span<const std::uint8_t> bytes, ByteOrder order);

/// Spreads the low bits of `value` over `bytes` (at most 8).
void spread(std::uint64_t value, std::span<std::uint8_t> bytes, ByteOrder order);

} // namespace gige::genapi

#endif
