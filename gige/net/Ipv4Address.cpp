#include "Ipv4Address.h"

#include <charconv>

namespace gige::net
{

std::optional<Ipv4Address> parseIpv4(std::string_view text)
{
    std::uint32_t value = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (int i = 0; i < 4; ++i) {
        if (i > 0 && (at == end || *at++ != '.')) {
            return std::nullopt;
        }
        std::uint8_t byte = 0;
        const auto [next, error] = std::from_chars(at, end, byte);
        if (error != std::errc{} || next - at > 3) {
            return std::nullopt;
        }
        value = (value << 8) | byte;
        at = next;
    }
    return at == end ? std::optional(Ipv4Address{value}) : std::nullopt;
}

std::string toText(Ipv4Address address)
{
    const std::uint32_t v = address.value;
    return std::to_string(v >> 24) + '.' + std::to_string((v >> 16) & 0xFF) + '.' +
           std::to_string((v >> 8) & 0xFF) + '.' + std::to_string(v & 0xFF);
}

std::string toText(const Endpoint& endpoint)
{
    return toText(endpoint.address) + ':' + std::to_string(endpoint.port);
}

} // namespace gige::net
