/// Numbers as descriptions write them: blanks around them are ignored.
#ifndef TELVO_GIGE_GENAPI_TEXTNUMBERS_H
#define TELVO_GIGE_GENAPI_TEXTNUMBERS_H

#include <cstdint>
#include <optional>
#include <string_view>

namespace gige::genapi
{

/// Blanks at both ends removed.
std::string_view trimmed(std::string_view text);

/// Decimal with sign (leading zeros are decimal, too), or `0x…` as 64-bit pattern.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// Hexadecimal digits, with or without `0x`.
std::optional<std::uint64_t> parseHexadecimal(std::string_view text);

/// Decimal with fraction and exponent, or an integer.
std::optional<double> parseReal(std::string_view text);

} // namespace gige::genapi

#endif
