/// Big-endian fields of packets and registers: the only code that knows their byte order.
#ifndef TELVO_GIGE_WIRE_BYTEORDER_H
#define TELVO_GIGE_WIRE_BYTEORDER_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace gige::wire
{

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;
using ByteSpan = std::span<std::uint8_t>;

inline std::uint16_t getU16(const std::uint8_t* at)
{
    return static_cast<std::uint16_t>((at[0] << 8) | at[1]);
}

inline std::uint32_t getU24(const std::uint8_t* at)
{
    return (std::uint32_t{at[0]} << 16) | (std::uint32_t{at[1]} << 8) | at[2];
}

inline std::uint32_t getU32(const std::uint8_t* at)
{
    return (std::uint32_t{getU16(at)} << 16) | getU16(at + 2);
}

inline std::uint64_t getU64(const std::uint8_t* at)
{
    return (std::uint64_t{getU32(at)} << 32) | getU32(at + 4);
}

inline void putU16(std::uint8_t* at, std::uint16_t value)
{
    at[0] = static_cast<std::uint8_t>(value >> 8);
    at[1] = static_cast<std::uint8_t>(value);
}

/// Writes the low 24 bits.
inline void putU24(std::uint8_t* at, std::uint32_t value)
{
    at[0] = static_cast<std::uint8_t>(value >> 16);
    putU16(at + 1, static_cast<std::uint16_t>(value));
}

inline void putU32(std::uint8_t* at, std::uint32_t value)
{
    putU16(at, static_cast<std::uint16_t>(value >> 16));
    putU16(at + 2, static_cast<std::uint16_t>(value));
}

inline void putU64(std::uint8_t* at, std::uint64_t value)
{
    putU32(at, static_cast<std::uint32_t>(value >> 32));
    putU32(at + 4, static_cast<std::uint32_t>(value));
}

/// Text of a fixed field: up to the first NUL, or the whole field when it has none.
inline std::string getText(ByteView field)
{
    return {field.begin(), std::find(field.begin(), field.end(), std::uint8_t{0})};
}

/// Writes a fixed field: text cut at the field's length, the rest NUL.
inline void putText(ByteSpan field, std::string_view text)
{
    const std::size_t length = std::min(field.size(), text.size());
    const auto end = std::copy_n(text.begin(), length, field.begin());
    std::fill(end, field.end(), std::uint8_t{0});
}

} // namespace gige::wire

#endif
