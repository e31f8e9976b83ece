#include "FeatureText.h"

#include "DisplayText.h"
#include "Ipv4Address.h"
#include "MacAddress.h"
#include "TextNumbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace gige::ui
{

namespace
{

using genapi::AccessMode;
using genapi::Representation;
using Parsed = std::variant<FeatureValue, std::string>;

constexpr const char* kTrue = "true";
constexpr const char* kFalse = "false";

std::string number(double value)
{
    std::array<char, 40> digits{}; // the shortest exact form needs at most 24
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

std::string hexadecimal(std::int64_t value)
{
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                   static_cast<std::uint64_t>(value), 16)
                         .ptr;
    std::string text(digits.data(), end);
    std::ranges::transform(text, text.begin(), [](char digit) {
        return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit;
    });
    return "0x" + text;
}

std::string macText(std::int64_t value)
{
    wire::MacAddress mac;
    auto rest = static_cast<std::uint64_t>(value);
    for (auto byte = mac.bytes.rbegin(); byte != mac.bytes.rend(); ++byte, rest >>= 8U) {
        *byte = static_cast<std::uint8_t>(rest & 0xFFU);
    }
    return wire::toText(mac);
}

std::string integerText(const FeatureInfo& info, std::int64_t value)
{
    switch (info.representation) {
    case Representation::HexNumber:
        return hexadecimal(value);
    case Representation::Ipv4Address:
        return net::toText(net::Ipv4Address{static_cast<std::uint32_t>(value)});
    case Representation::MacAddress:
        return macText(value);
    default:
        return std::to_string(value);
    }
}

struct ValueText {
    const FeatureInfo& info;

    std::string operator()(const ExecuteCommand& /*command*/) const { return {}; }
    std::string operator()(std::int64_t value) const { return integerText(info, value); }
    std::string operator()(double value) const { return number(value); }
    std::string operator()(bool value) const { return value ? kTrue : kFalse; }
    std::string operator()(const std::string& value) const { return displayText(value); }
};

std::optional<std::int64_t> parseAs(Representation representation, std::string_view text)
{
    if (representation == Representation::Ipv4Address) {
        if (const auto address = net::parseIpv4(text)) {
            return address->value;
        }
    }
    if (representation == Representation::MacAddress) {
        if (const auto mac = wire::parseMac(text)) {
            std::int64_t value = 0;
            for (const std::uint8_t byte : mac->bytes) {
                value = value * 256 + byte;
            }
            return value;
        }
    }
    return genapi::parseInteger(text);
}

/// Whether a value lies a whole number of increments above the minimum. Unsigned differences: those
/// of two 64-bit integers need not fit into one.
bool isOnStep(std::int64_t value, const IntegerLimits& limits)
{
    const auto distance =
        static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(limits.minimum);
    return limits.increment <= 1 || distance % static_cast<std::uint64_t>(limits.increment) == 0;
}

template <typename Number, typename Limits, typename Text>
std::optional<std::string> outOfLimits(Number value, const Limits& limits, Text text)
{
    if (value < limits.minimum) {
        return text(value) + " is below the minimum of " + text(limits.minimum) + ".";
    }
    if (value > limits.maximum) {
        return text(value) + " is above the maximum of " + text(limits.maximum) + ".";
    }
    return std::nullopt;
}

template <typename Limits>
Limits limitsOr(const FeatureLimits& limits)
{
    const Limits* const given = std::get_if<Limits>(&limits);
    return given == nullptr ? Limits() : *given;
}

Parsed parseInteger(const FeatureInfo& info, const FeatureState& state, std::string_view text)
{
    const auto value = parseAs(info.representation, text);
    if (!value) {
        return "\"" + std::string(text) + "\" is not an integer.";
    }
    const auto shown = [&](std::int64_t one) { return integerText(info, one); };
    const auto limits = limitsOr<IntegerLimits>(state.limits);
    if (auto error = outOfLimits(*value, limits, shown)) {
        return *std::move(error);
    }
    if (!isOnStep(*value, limits)) {
        return shown(*value) + " is not " + shown(limits.minimum) + " plus a multiple of " +
               std::to_string(limits.increment) + ".";
    }
    return FeatureValue(*value);
}

Parsed parseFloat(const FeatureState& state, std::string_view text)
{
    const auto value = genapi::parseReal(text);
    if (!value || !std::isfinite(*value)) {
        return "\"" + std::string(text) + "\" is not a number.";
    }
    if (auto error = outOfLimits(*value, limitsOr<FloatLimits>(state.limits), number)) {
        return *std::move(error);
    }
    return FeatureValue(*value);
}

Parsed parseEntry(const FeatureState& state, std::string_view text)
{
    if (std::ranges::find(state.choices, text) != state.choices.end()) {
        return FeatureValue(std::string(text));
    }
    return "\"" + std::string(text) + "\" is not one of the choices.";
}

Parsed parseBoolean(std::string_view text)
{
    if (text == kTrue || text == "1") {
        return FeatureValue(true);
    }
    if (text == kFalse || text == "0") {
        return FeatureValue(false);
    }
    return "\"" + std::string(text) + "\" is neither true nor false.";
}

Parsed parseText(const FeatureState& state, std::string_view text)
{
    const std::size_t longest = limitsOr<TextLimits>(state.limits).maximumLength;
    if (text.size() > longest) {
        return "The text has " + std::to_string(text.size()) + " bytes; there is room for " +
               std::to_string(longest) + ".";
    }
    return FeatureValue(std::string(text));
}

std::string kindText(FeatureKind kind)
{
    switch (kind) {
    case FeatureKind::Integer:
        return "integer";
    case FeatureKind::Float:
        return "number";
    case FeatureKind::Enumeration:
        return "choice";
    case FeatureKind::Boolean:
        return "boolean";
    case FeatureKind::String:
        return "text";
    case FeatureKind::Command:
        return "command";
    case FeatureKind::Other:
        break;
    }
    return "other";
}

} // namespace

std::string valueText(const FeatureInfo& info, const FeatureState& state)
{
    return state.value ? std::visit(ValueText{info}, *state.value) : std::string();
}

std::string shownValue(const FeatureInfo& info, const FeatureState& state)
{
    if (!state.error.empty()) {
        return state.error;
    }
    if (!state.isAvailable()) {
        return "not available";
    }
    if (info.kind == FeatureKind::Command) {
        return "(command)";
    }
    const std::string value = valueText(info, state);
    const bool hasUnit = !info.unit.empty() && !value.empty();
    return hasUnit ? value + " " + displayText(info.unit) : value;
}

std::string limitsText(const FeatureInfo& info, const FeatureState& state)
{
    const std::string unit = info.unit.empty() ? "" : " " + displayText(info.unit);
    if (const auto* const limits = std::get_if<IntegerLimits>(&state.limits)) {
        const IntegerLimits none;
        if (limits->minimum == none.minimum && limits->maximum == none.maximum) {
            return {};
        }
        const std::string steps =
            limits->increment > 1 ? ", in steps of " + std::to_string(limits->increment) : "";
        return integerText(info, limits->minimum) + " to " + integerText(info, limits->maximum) +
               unit + steps;
    }
    if (const auto* const limits = std::get_if<FloatLimits>(&state.limits)) {
        const FloatLimits none;
        if (limits->minimum == none.minimum && limits->maximum == none.maximum) {
            return {};
        }
        return number(limits->minimum) + " to " + number(limits->maximum) + unit;
    }
    if (const auto* const limits = std::get_if<TextLimits>(&state.limits)) {
        return "at most " + std::to_string(limits->maximumLength) + " bytes";
    }
    return {};
}

std::string accessText(const FeatureInfo& info, const FeatureState& state)
{
    switch (state.access) {
    case AccessMode::NotImplemented:
    case AccessMode::NotAvailable:
        return kindText(info.kind) + ", not available";
    case AccessMode::ReadOnly:
        return kindText(info.kind) + ", read only";
    case AccessMode::WriteOnly:
        return kindText(info.kind) + (info.kind == FeatureKind::Command ? "" : ", write only");
    case AccessMode::ReadWrite:
        break;
    }
    return kindText(info.kind);
}

std::vector<std::string> choicesOf(const FeatureInfo& info, const FeatureState& state)
{
    return info.kind == FeatureKind::Boolean ? std::vector<std::string>{kTrue, kFalse}
                                             : state.choices;
}

std::variant<FeatureValue, std::string> parseValue(const FeatureInfo& info,
                                                   const FeatureState& state, std::string_view text)
{
    if (!state.isWritable() || info.kind == FeatureKind::Other) {
        return (state.isAvailable() ? "This cannot be changed now: "
                                    : "This cannot be used now: ") +
               accessText(info, state) + ".";
    }
    switch (info.kind) {
    case FeatureKind::Integer:
        return parseInteger(info, state, genapi::trimmed(text));
    case FeatureKind::Float:
        return parseFloat(state, genapi::trimmed(text));
    case FeatureKind::Enumeration:
        return parseEntry(state, text);
    case FeatureKind::Boolean:
        return parseBoolean(genapi::trimmed(text));
    case FeatureKind::String:
        return parseText(state, text);
    default:
        return FeatureValue(ExecuteCommand());
    }
}

} // namespace gige::ui
