#include "MacAddress.h"

#include <charconv>
#include <cstddef>
#include <cstdio>

namespace gige::wire
{

std::optional<MacAddress> parseMac(std::string_view text)
{
    constexpr std::size_t kTextLength = 17;
    if (text.size() != kTextLength || (text[2] != ':' && text[2] != '-')) {
        return std::nullopt;
    }
    MacAddress mac;
    for (std::size_t i = 0; i < mac.bytes.size(); ++i) {
        const char* const pair = text.data() + 3 * i;
        const auto [end, error] = std::from_chars(pair, pair + 2, mac.bytes[i], 16);
        const bool separated = i == 0 || pair[-1] == text[2];
        if (error != std::errc{} || end != pair + 2 || !separated) {
            return std::nullopt;
        }
    }
    return mac;
}

std::string toText(const MacAddress& mac)
{
    std::array<char, 18> text{};
    const auto& b = mac.bytes;
    std::snprintf(text.data(), text.size(), "%02x:%02x:%02x:%02x:%02x:%02x", b[0], b[1], b[2], b[3],
                  b[4], b[5]);
    return text.data();
}

} // namespace gige::wire
