#ifndef TELVO_GIGE_NET_IPV4ADDRESS_H
#define TELVO_GIGE_NET_IPV4ADDRESS_H

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace gige::net
{

/// IPv4 address as a number: 127.0.0.1 is 0x7F000001, as registers and packets carry it.
struct Ipv4Address {
    std::uint32_t value = 0;
    auto operator<=>(const Ipv4Address&) const = default;
};

constexpr Ipv4Address kAnyAddress{0};
constexpr Ipv4Address kLimitedBroadcast{0xFFFFFFFF};

/// Four decimal numbers 0..255 with dots between and nothing else.
std::optional<Ipv4Address> parseIpv4(std::string_view text);

/// "127.0.0.1"
std::string toText(Ipv4Address address);

/// A UDP endpoint. Port 0 means any free one when binding.
struct Endpoint {
    Ipv4Address address{};
    std::uint16_t port = 0;
    auto operator<=>(const Endpoint&) const = default;
};

/// "127.0.0.1:3956"
std::string toText(const Endpoint& endpoint);

} // namespace gige::net

#endif
