#include "SettingRows.h"

#include "ConnectionSettings.h"

#include "TelvoDll.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace telvo
{

namespace
{

/// Settings by the beginnings of their names; the first that fits counts.
struct Group {
    std::string_view beginning;
    const char* name;
};

constexpr std::array kGroups{
    Group{"width", "Picture"},         Group{"height", "Picture"},
    Group{"offset-", "Picture"},       Group{"decimation", "Picture"},
    Group{"frame-rate", "Timing"},     Group{"exposure", "Timing"},
    Group{"slope", "Timing"},          Group{"gain", "Sensor"},
    Group{"black-level", "Sensor"},    Group{"record-", "Record"},
    Group{"trailer", "Record"},        Group{"flash-", "Record"},
    Group{"external-", "Trigger"},     Group{"window-", "Trigger"},
    Group{"sync-", "Synchronisation"}, Group{"irig-b", "Synchronisation"},
};

const char* groupOf(const Setting& setting)
{
    if (setting.ofConnection != nullptr) {
        return "Link";
    }
    const auto* const group = std::ranges::find_if(
        kGroups, [&](const Group& each) { return setting.name.starts_with(each.beginning); });
    return group == kGroups.end() ? "Other" : group->name;
}

const char* lastingOf(const Setting& setting)
{
    constexpr std::array kNames{"always", "connection", "next connection"};
    return kNames[static_cast<std::size_t>(setting.lasting)];
}

/// The number at which a text begins, cut off it.
std::optional<double> takeNumber(std::string_view& text)
{
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{}) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

/// "1 to 19999 us, in steps of 4", as far as it is there, in numbers.
void addLimits(std::string_view text, Json& row)
{
    constexpr std::string_view kTo = " to ";
    constexpr std::string_view kSteps = "in steps of ";
    const auto minimum = takeNumber(text);
    if (minimum && text.starts_with(kTo)) {
        text.remove_prefix(kTo.size());
        if (const auto maximum = takeNumber(text)) {
            row["minimum"] = *minimum;
            row["maximum"] = *maximum;
        }
    }
    const std::size_t steps = text.find(kSteps);
    if (steps != std::string_view::npos) {
        text.remove_prefix(steps + kSteps.size());
        if (const auto step = takeNumber(text)) {
            row["step"] = *step;
        }
    }
}

/// The library tells no limits of the picture's place: they are the sensor's.
void addSensorLimits(const Setting& setting, SensorArea sensor, Json& row)
{
    const bool isAcross = setting.name == "width" || setting.name == "offset-x";
    const bool isDown = setting.name == "height" || setting.name == "offset-y";
    const std::uint32_t size = isAcross ? sensor.width : sensor.height;
    if ((!isAcross && !isDown) || size == 0) {
        return;
    }
    const double least = row.value("step", 1.0);
    const bool isOffset = setting.name.starts_with("offset");
    row["minimum"] = isOffset ? 0.0 : least;
    const auto most = static_cast<double>(size);
    row["maximum"] = isOffset ? std::max(0.0, most - least) : most;
}

struct RowKind {
    const char* name;
    std::vector<std::string> choices{};
    bool isWritable = true;
};

template <typename Access>
RowKind rowKindOf(const Access& access)
{
    return {.name = "number", .isWritable = access.set != nullptr};
}

RowKind rowKindOf(const SwitchAccess& access)
{
    return {.name = "switch", .isWritable = access.set != nullptr};
}

RowKind rowKindOf(const ParameterAccess& access)
{
    return {.name = "number", .isWritable = access.setName != nullptr};
}

RowKind rowKindOf(const ChoiceAccess& access)
{
    RowKind kind{.name = "choice", .isWritable = access.set != nullptr};
    for (const std::string_view word : access.words) {
        if (!word.empty()) {
            kind.choices.emplace_back(word);
        }
    }
    return kind;
}

RowKind rowKindOf(const Setting& setting)
{
    if (setting.name == "record-sequences") { // a number, but only these
        return {.name = "choice", .choices = {"1", "2", "4", "8", "16"}};
    }
    return std::visit([](const auto& access) { return rowKindOf(access); }, setting.access);
}

SensorArea sensorOf(const CameraSession& camera)
{
    constexpr std::uint32_t kUnknown = std::numeric_limits<std::uint32_t>::max();
    SensorArea sensor;
    std::uint8_t mark = 0;
    expGetUsedCameraType(&mark, camera.id(), &sensor.width, &sensor.height);
    return sensor.width == kUnknown ? SensorArea{} : sensor;
}

} // namespace

Json rowOf(const Setting& setting, const SettingText& text, SensorArea sensor)
{
    const RowKind kind = rowKindOf(setting);
    const bool isWord = std::string_view(kind.name) == "choice"; // as it stands among the choices
    Json row{{"name", setting.name},
             {"text", setting.help},
             {"value", isWord ? Json(text.value) : jsonValue(text.value)},
             {"unit", text.unit},
             {"kind", kind.name},
             {"group", groupOf(setting)},
             {"readOnly", !kind.isWritable},
             {"lasts", lastingOf(setting)}};
    if (!kind.choices.empty()) {
        row["choices"] = kind.choices;
    }
    if (!text.limits.empty()) {
        row["limits"] = text.limits;
    }
    addLimits(text.limits, row);
    addSensorLimits(setting, sensor, row);
    return row;
}

Json outcomesJson(const std::vector<SettingOutcome>& outcomes)
{
    Json json = Json::array();
    for (const SettingOutcome& outcome : outcomes) {
        json.push_back({{"name", outcome.asked.setting->name},
                        {"asked", outcome.asked.text},
                        {"taken", outcome.taken ? Json(outcome.taken->withUnit()) : Json()},
                        {"asAsked", outcome.isAsAsked()},
                        {"refused", outcome.refused},
                        {"note", outcome.isAsAsked() ? "" : outcome.text()}});
    }
    return json;
}

void SettingRows::forgetAll()
{
    mKept.clear();
    for (const Setting& setting : allSettings()) {
        if (setting.feature.empty()) { // the camera has no say in it
            mKept[&setting] = {.value = std::to_string(kUsualConnection.*setting.ofConnection),
                               .unit = std::string(setting.unit)};
        }
    }
}

Json SettingRows::read(const CameraSession& camera)
{
    const SensorArea sensor = sensorOf(camera);
    Json rows = Json::array();
    for (const Setting& setting : allSettings()) {
        if (const auto text = textOf(setting, camera)) {
            rows.push_back(rowOf(setting, *text, sensor));
        }
    }
    return rows;
}

std::optional<SettingText> SettingRows::textOf(const Setting& setting, const CameraSession& camera)
{
    const auto kept = mKept.find(&setting);
    if (kept != mKept.end()) {
        return kept->second;
    }
    auto text = camera.read(setting);
    if (text && setting.ofConnection != nullptr) {
        mKept.emplace(&setting, *text);
    }
    return text;
}

} // namespace telvo
