#include "Setting.h"

#include "TextTable.h"
#include "ToolError.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>

namespace telvo
{

namespace
{

constexpr std::uint32_t kNoSuchFeature = 0xFFFFFFFF; // -1: what the geometry getters then report

template <typename... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <typename... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

std::string realText(double value)
{
    std::string text = std::to_string(value);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) {
        text.pop_back();
    }
    return text;
}

/// The whole text as a number; none if anything else is in it.
template <typename Number>
std::optional<Number> parseNumber(std::string_view text)
{
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

// Reading: each overload gives the value's text, or none when the export fails.

std::optional<SettingText> read(const RangeAccess& access, std::int32_t cameraId)
{
    std::uint32_t minimum = 0;
    std::uint32_t maximum = 0;
    std::uint32_t value = 0;
    if (access.get(&minimum, &maximum, &value, cameraId) != 0) {
        return std::nullopt;
    }
    return SettingText{std::to_string(value),
                       std::to_string(minimum) + " to " + std::to_string(maximum)};
}

std::optional<SettingText> read(const RealRangeAccess& access, std::int32_t cameraId)
{
    double minimum = 0;
    double maximum = 0;
    double value = 0;
    if (access.get(&minimum, &maximum, &value, cameraId) != 0) {
        return std::nullopt;
    }
    return SettingText{realText(value), realText(minimum) + " to " + realText(maximum)};
}

std::optional<SettingText> numberText(std::int32_t result, std::uint32_t value)
{
    if (result != 0) {
        return std::nullopt;
    }
    return SettingText{std::to_string(value), ""};
}

std::optional<SettingText> read(const ClampedAccess& access, std::int32_t cameraId)
{
    std::uint32_t value = kNoSuchFeature;
    const std::int32_t result = access.get(&value, cameraId);
    return value == kNoSuchFeature ? std::nullopt : numberText(result, value);
}

std::optional<SettingText> read(const NumberAccess& access, std::int32_t cameraId)
{
    std::uint32_t value = 0;
    const std::int32_t result = access.get(&value, cameraId);
    return numberText(result, value);
}

std::optional<SettingText> read(const ChoiceAccess& access, std::int32_t cameraId)
{
    std::uint32_t value = kNoSuchFeature;
    if (access.get(&value, cameraId) != 0 || value >= access.words.size()) {
        return std::nullopt;
    }
    return SettingText{std::string(access.words[value]), ""};
}

std::optional<SettingText> read(const SwitchAccess& access, std::int32_t cameraId)
{
    std::uint8_t enabled = 0;
    if (access.get(&enabled, cameraId) != 0) {
        return std::nullopt;
    }
    return SettingText{enabled != 0 ? "on" : "off", ""};
}

std::optional<SettingText> read(const ParameterAccess& access, std::int32_t cameraId)
{
    std::uint32_t value = 0;
    const std::int32_t result = expGetStreamParam(access.getName, &value, cameraId);
    return numberText(result, value);
}

/// A value's text as the number that is exchanged; none if it is no value of this kind.
std::optional<double> parseValue(const SettingAccess& access, std::string_view text)
{
    const auto parseWhole = [text](const auto&) -> std::optional<double> {
        return parseNumber<std::uint32_t>(text);
    };
    return std::visit(Overloaded{[text](const RealRangeAccess&) {
                                     const auto value = parseNumber<double>(text);
                                     return value && std::isfinite(*value) ? value : std::nullopt;
                                 },
                                 [text](const SwitchAccess&) -> std::optional<double> {
                                     return text == "on"    ? std::optional(1.0)
                                            : text == "off" ? std::optional(0.0)
                                                            : std::nullopt;
                                 },
                                 [text](const ChoiceAccess& choice) -> std::optional<double> {
                                     const auto word = std::ranges::find(choice.words, text);
                                     return text.empty() || word == choice.words.end()
                                                ? std::nullopt
                                                : std::optional<double>(word -
                                                                        choice.words.begin());
                                 },
                                 parseWhole},
                      access);
}

/// False: it is known that the camera would refuse. It is not asked to then, since the library
/// would ask it again and again.
bool isWithin(const SettingAccess& access, double value, std::int32_t cameraId)
{
    const auto* const range = std::get_if<RangeAccess>(&access);
    std::uint32_t minimum = 0;
    std::uint32_t maximum = 0;
    std::uint32_t present = 0;
    return range == nullptr || range->get(&minimum, &maximum, &present, cameraId) != 0 ||
           (value >= minimum && value <= maximum);
}

std::int32_t write(const SettingAccess& access, double value, std::int32_t cameraId)
{
    // Every kind but the real one was parsed as a whole number of 32 bits.
    const auto whole = [value] { return static_cast<std::uint32_t>(value); };
    return std::visit(
        Overloaded{[&](const RealRangeAccess& real) { return real.set(value, cameraId); },
                   [&](const ClampedAccess& clamped) {
                       std::uint32_t clampedValue = whole();
                       return clamped.set(&clampedValue, cameraId);
                   },
                   [&](const SwitchAccess& onOff) {
                       return onOff.set(static_cast<std::uint8_t>(value), cameraId);
                   },
                   [&](const ParameterAccess& parameter) {
                       return expSetStreamParam(parameter.setName, whole(), cameraId);
                   },
                   [&](const auto& number) { return number.set(whole(), cameraId); }},
        access);
}

} // namespace

std::optional<SettingText> tryReadSetting(const Setting& setting, std::int32_t cameraId)
{
    return std::visit([cameraId](const auto& access) { return read(access, cameraId); },
                      setting.access);
}

SettingText readSetting(const Setting& setting, std::int32_t cameraId)
{
    if (std::optional<SettingText> text = tryReadSetting(setting, cameraId)) {
        return *text;
    }
    throw Failure("the camera does not tell its " + std::string(setting.name) +
                  "; 'telvo log' shows why");
}

Assignment makeAssignment(const Setting& setting, std::string_view text)
{
    if (const std::optional<double> value = parseValue(setting.access, text)) {
        return {&setting, std::string(text), *value};
    }
    throw UsageError("'" + std::string(text) + "' is no value of " + std::string(setting.name) +
                     " (" + std::string(setting.help) + ")");
}

Assignment parseAssignment(std::string_view text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        throw UsageError("'" + std::string(text) + "' is not NAME=VALUE, such as exposure=500");
    }
    return makeAssignment(findSetting(text.substr(0, equals)), text.substr(equals + 1));
}

bool writeSetting(const Assignment& assignment, std::int32_t cameraId)
{
    const Setting& setting = *assignment.setting;
    if (const auto* parameter = std::get_if<ParameterAccess>(&setting.access);
        parameter != nullptr && parameter->setName == nullptr) {
        throw UsageError(std::string(setting.name) + " is given when connecting; use --set");
    }
    return isWithin(setting.access, assignment.value, cameraId) &&
           write(setting.access, assignment.value, cameraId) == 0;
}

bool isValueOf(const Assignment& assignment, const SettingText& text)
{
    return parseValue(assignment.setting->access, text.value) == assignment.value;
}

std::string describeSettings()
{
    std::vector<std::vector<std::string>> rows;
    for (const Setting& setting : allSettings()) {
        rows.push_back({"  " + std::string(setting.name), std::string(setting.help)});
    }
    return formatTable(rows);
}

} // namespace telvo
