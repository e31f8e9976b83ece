#include "AddressText.h"

#include <string_view>

std::optional<gige::net::Ipv4Address> parseAddressText(const PvString& text)
{
    std::string_view digits = text.GetAscii();
    if (digits.starts_with('[') && digits.ends_with(']')) {
        digits = digits.substr(1, digits.size() - 2);
    }
    return gige::net::parseIpv4(digits);
}
