#ifndef TELVO_GIGE_WIRE_MACADDRESS_H
#define TELVO_GIGE_WIRE_MACADDRESS_H

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace gige::wire
{

/// Hardware address of a network interface, first byte first.
struct MacAddress {
    std::array<std::uint8_t, 6> bytes{};
    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy 14 sees a null pointer in what is generated
    auto operator<=>(const MacAddress&) const = default;
};

/// Six pairs of hexadecimal digits, upper or lower case, with ':' or '-' between all pairs.
std::optional<MacAddress> parseMac(std::string_view text);

/// "02:54:45:00:00:21", lower case.
std::string toText(const MacAddress& mac);

} // namespace gige::wire

#endif
