#include "UserSets.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>

namespace camera
{
namespace
{

constexpr std::string_view kSetPrefix = "UserSet1.";
constexpr std::string_view kNameKey = "DeviceUserID";

std::optional<std::int64_t> number(std::string_view text)
{
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [at, error] = std::from_chars(text.data(), end, value);
    return error == std::errc{} && at == end ? std::optional{value} : std::nullopt;
}

void take(StoredState& state, std::string_view key, std::string_view value)
{
    if (key == kNameKey) {
        state.userName = value;
        return;
    }
    const bool inSet = key.starts_with(kSetPrefix);
    const auto feature = findFeature(inSet ? key.substr(kSetPrefix.size()) : key);
    const auto parsed = number(value);
    if (!feature || !parsed) {
        return;
    }
    if (inSet && featureOf(*feature).saved) {
        state.userSet1[*feature] = *parsed;
    } else if (!inSet && isKeptAlone(*feature)) {
        state.settings[*feature] = *parsed;
    }
}

} // namespace

std::map<FeatureId, std::int64_t> userSetOf(const FeatureValues& values)
{
    std::map<FeatureId, std::int64_t> set;
    for (const Feature& feature : featureTable()) {
        if (feature.saved) {
            set[feature.id] = values[static_cast<std::size_t>(feature.id)];
        }
    }
    return set;
}

bool isKeptAlone(FeatureId feature)
{
    switch (feature) {
    case FeatureId::Data00:
    case FeatureId::Data01:
    case FeatureId::Data02:
    case FeatureId::Data03:
    case FeatureId::UserSetDefaultSelector:
    case FeatureId::RecordStartAtPowerOn:
        return true;
    default:
        return false;
    }
}

StoredState loadState(const std::string& path)
{
    StoredState state;
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line)) {
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos) {
            const std::string_view text(line);
            take(state, text.substr(0, equals), text.substr(equals + 1));
        }
    }
    return state;
}

bool saveState(const std::string& path, const StoredState& state)
{
    // Written beside and renamed, so that a camera killed in between keeps its old state.
    const std::string beside = path + ".new";
    {
        std::ofstream file(beside, std::ios::trunc);
        file << kNameKey << '=' << state.userName << '\n';
        for (const auto& [feature, value] : state.settings) {
            file << featureOf(feature).name << '=' << value << '\n';
        }
        for (const auto& [feature, value] : state.userSet1) {
            file << kSetPrefix << featureOf(feature).name << '=' << value << '\n';
        }
        if (!file.flush()) {
            return false;
        }
    }
    std::error_code error;
    std::filesystem::rename(beside, path, error);
    return !error;
}

} // namespace camera
