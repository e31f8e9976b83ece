#include "TextNumbers.h"

#include <charconv>
#include <system_error>

namespace gige::genapi
{

namespace
{

constexpr std::string_view kBlanks = " \t\r\n\f\v";
constexpr int kDecimal = 10;
constexpr int kHexadecimal = 16;

// std::from_chars, since strtod and streams follow the host's locale: "1.5" may be 1 there.
// The whole text as a number, or nothing.
template <typename T, typename... Format>
std::optional<T> parseWhole(std::string_view text, Format... format)
{
    T value{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, format...);
    return error == std::errc{} && stop == end ? std::optional(value) : std::nullopt;
}

bool isHexadecimal(std::string_view text)
{
    return text.starts_with("0x") || text.starts_with("0X");
}

// std::from_chars takes no plus.
std::string_view withoutPlus(std::string_view text)
{
    const bool hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return hasPlus ? text.substr(1) : text;
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<std::uint64_t> parseHexadecimal(std::string_view text)
{
    text = trimmed(text);
    return parseWhole<std::uint64_t>(isHexadecimal(text) ? text.substr(2) : text, kHexadecimal);
}

std::optional<std::int64_t> parseInteger(std::string_view text)
{
    text = trimmed(text);
    if (isHexadecimal(text)) {
        // Hexadecimal texts are bit patterns: "0xFFFFFFFFFFFFFFFF" is -1.
        const std::optional<std::uint64_t> pattern = parseHexadecimal(text);
        return pattern ? std::optional(static_cast<std::int64_t>(*pattern)) : std::nullopt;
    }
    return parseWhole<std::int64_t>(withoutPlus(text), kDecimal);
}

std::optional<double> parseReal(std::string_view text)
{
    text = trimmed(text);
    if (isHexadecimal(text)) {
        const std::optional<std::int64_t> integer = parseInteger(text);
        return integer ? std::optional(static_cast<double>(*integer)) : std::nullopt;
    }
    return parseWhole<double>(withoutPlus(text));
}

} // namespace gige::genapi
