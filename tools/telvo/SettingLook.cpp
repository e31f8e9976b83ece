#include "SettingLook.h"

#include "ConnectionSettings.h"

#include "FeatureText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace telvo
{

namespace
{

namespace ui = gige::ui;

/// The camera counts its sequences in words.
constexpr std::array<std::pair<std::string_view, std::string_view>, 5> kCountUnits{
    {{"One", "1"}, {"Two", "2"}, {"Four", "4"}, {"Eight", "8"}, {"Sixteen", "16"}}};

std::string wordOf(const SettingAccess& access, const std::string& entry)
{
    if (const auto* const choice = std::get_if<ChoiceAccess>(&access)) {
        const auto found = std::ranges::find(choice->entries, entry);
        return found == choice->entries.end()
                   ? entry
                   : std::string(
                         choice->words[static_cast<std::size_t>(found - choice->entries.begin())]);
    }
    const auto* const count = std::ranges::find(
        kCountUnits, entry, &std::pair<std::string_view, std::string_view>::first);
    return count == kCountUnits.end() ? entry : std::string(count->second);
}

std::string textOf(const Setting& setting, const ui::FeatureInfo& info,
                   const ui::FeatureState& state)
{
    if (const bool* const flag = std::get_if<bool>(&*state.value)) {
        return *flag ? "on" : "off";
    }
    if (const auto* const number = std::get_if<std::int64_t>(&*state.value)) {
        return std::to_string(*number); // as it is set, whatever its usual look
    }
    return wordOf(setting.access, ui::valueText(info, state));
}

/// Whether a number out of 32 bits limits nothing.
bool isLimited(const ui::FeatureState& state)
{
    const auto* const limits = std::get_if<ui::IntegerLimits>(&state.limits);
    return limits != nullptr && limits->maximum < 0xFFFFFFFF;
}

std::string stepOf(const ui::FeatureState& state)
{
    const auto* const limits = std::get_if<ui::IntegerLimits>(&state.limits);
    return limits != nullptr && limits->increment > 1
               ? "in steps of " + std::to_string(limits->increment)
               : "";
}

} // namespace

std::optional<SettingText> lookAtSetting(const CameraLook& camera, const Setting& setting)
{
    if (setting.feature.empty()) {
        return SettingText{.value = std::to_string(kUsualConnection.*setting.ofConnection),
                           .unit = std::string(setting.unit)};
    }
    const auto feature = camera.find(setting.feature);
    const ui::FeatureState state = feature ? feature->read() : ui::FeatureState();
    if (!state.value) {
        return std::nullopt;
    }
    const ui::FeatureInfo& info = feature->info();
    return SettingText{.value = textOf(setting, info, state),
                       .limits = isLimited(state) ? ui::limitsText(info, state) : "",
                       .unit = info.unit};
}

AllFacts lookAtFacts(const CameraLook& camera)
{
    AllFacts facts;
    for (const Setting& setting : allSettings()) {
        if (const auto feature = camera.find(setting.feature)) {
            facts[&setting] = {.unit = feature->info().unit, .step = stepOf(feature->read())};
        }
    }
    return facts;
}

} // namespace telvo
