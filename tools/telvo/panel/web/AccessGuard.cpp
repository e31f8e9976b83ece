#include "AccessGuard.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <random>
#include <utility>

namespace telvo
{

namespace
{

constexpr std::string_view kCookieName = "telvo-panel-token=";
constexpr std::size_t kTokenWords = 4; // of 32 bits

char lower(char character)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

bool isSame(std::string_view one, std::string_view other)
{
    return std::ranges::equal(one, other, {}, lower, lower);
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// Up to three digits off the front. False: there are none.
bool takeNumber(std::string_view& text)
{
    const auto digits =
        static_cast<std::size_t>(std::ranges::find_if_not(text, isDigit) - text.begin());
    text.remove_prefix(digits);
    return digits >= 1 && digits <= 3;
}

/// Four numbers: a browser takes that for an address, never for a name to look up.
bool isIpv4(std::string_view text)
{
    for (int part = 0; part < 4; ++part) {
        const bool hasPoint = part == 0 || (text.starts_with('.') && (text.remove_prefix(1), true));
        if (!hasPoint || !takeNumber(text)) {
            return false;
        }
    }
    return text.empty();
}

bool isIpv6(std::string_view text)
{
    return text.size() > 3 && text.starts_with('[') && text.ends_with(']') &&
           std::ranges::all_of(text.substr(1, text.size() - 2), [](char character) {
               return std::isxdigit(static_cast<unsigned char>(character)) != 0 ||
                      character == ':' || character == '.';
           });
}

bool isThisMachine(std::string_view name)
{
    constexpr std::array<std::string_view, 3> kNames{"127.0.0.1", "localhost", "[::1]"};
    return std::ranges::any_of(kNames, [name](std::string_view own) { return isSame(name, own); });
}

} // namespace

std::string makeToken()
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::random_device random;
    std::string token;
    for (std::size_t word = 0; word < kTokenWords; ++word) {
        std::uint32_t bits = random();
        for (int digit = 0; digit < 8; ++digit, bits >>= 4U) {
            token += kDigits[bits & 0xFU];
        }
    }
    return token;
}

AccessGuard::AccessGuard(std::uint16_t port, std::string token)
    : mPort(':' + std::to_string(port)), mToken(std::move(token))
{
}

bool AccessGuard::isOwnHost(std::string_view host) const
{
    constexpr std::string_view kUsualPort = ":80"; // a browser leaves it out
    std::string_view name = host;
    if (name.ends_with(mPort)) {
        name.remove_suffix(mPort.size());
    } else if (mPort != kUsualPort) {
        return false;
    }
    return isThisMachine(name) || (needsToken() && (isIpv4(name) || isIpv6(name)));
}

bool AccessGuard::isOwnOrigin(std::string_view origin, std::string_view host) const
{
    constexpr std::string_view kScheme = "http://";
    return origin.starts_with(kScheme) && isSame(origin.substr(kScheme.size()), host);
}

bool AccessGuard::isToken(std::string_view text) const
{
    if (!needsToken() || text.size() != mToken.size()) {
        return false;
    }
    unsigned difference = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        difference |= static_cast<std::uint8_t>(text[i] ^ mToken[i]);
    }
    return difference == 0;
}

bool AccessGuard::hasToken(std::string_view cookies) const
{
    while (!cookies.empty()) {
        const std::size_t end = std::min(cookies.find(';'), cookies.size());
        std::string_view cookie = cookies.substr(0, end);
        cookie.remove_prefix(std::min(cookie.find_first_not_of(' '), cookie.size()));
        if (cookie.starts_with(kCookieName) && isToken(cookie.substr(kCookieName.size()))) {
            return true;
        }
        cookies.remove_prefix(std::min(end + 1, cookies.size()));
    }
    return false;
}

std::string AccessGuard::cookie() const
{
    return std::string(kCookieName) + mToken + "; Path=/; SameSite=Strict; HttpOnly";
}

} // namespace telvo
