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

/// On Windows a path that is made of a plain text takes it for another code.
std::filesystem::path utf8Path(const std::string& text)
{
    return {std::u8string(text.begin(), text.end())};
}

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
    } else if (!inSet && featureOf(*feature).remembered) {
        state.settings[*feature] = *parsed;
    }
}

FeatureValues userSetOf(const Settings& settings)
{
    FeatureValues set;
    for (const Feature& feature : featureTable()) {
        if (feature.saved) {
            set[feature.id] = settings.get(feature.id);
        }
    }
    return set;
}

} // namespace

UserSets::UserSets(const CameraOptions& options, const Settings& factory)
    : mPath(options.stateFile), mDefault(userSetOf(factory))
{
    mState.userName = options.userName;
    if (options.userSetsPrepared) {
        mState.userSet1 = mDefault;
        mState.settings[FeatureId::UserSetDefaultSelector] = kUserSet1;
    }
    if (const StoredState kept = loadState(mPath); kept != StoredState{}) {
        mState = kept;
    }
}

void UserSets::restore(Settings& settings) const
{
    settings.take(mState.settings);
    const std::int64_t atPowerOn = settings.get(FeatureId::UserSetDefaultSelector);
    settings.set(FeatureId::UserSetSelector, atPowerOn);
    if (atPowerOn == kUserSet1) {
        settings.take(mState.userSet1);
    }
}

const FeatureValues* UserSets::find(std::int64_t set) const
{
    if (set == kUserSetDefault) {
        return &mDefault;
    }
    return mState.userSet1.empty() ? nullptr : &mState.userSet1;
}

bool UserSets::save(const Settings& settings)
{
    mState.userSet1 = userSetOf(settings);
    return keep(settings);
}

bool UserSets::keep(const Settings& settings)
{
    for (const Feature& feature : featureTable()) {
        if (feature.remembered) {
            mState.settings[feature.id] = settings.get(feature.id);
        }
    }
    return mPath.empty() || saveState(mPath, mState);
}

void UserSets::setUserName(const std::string& name, const Settings& settings)
{
    mState.userName = name;
    (void)keep(settings); // the name register has no way to report a full disk
}

StoredState loadState(const std::string& path)
{
    StoredState state;
    std::ifstream file(utf8Path(path));
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
    const std::filesystem::path beside = utf8Path(path + ".new");
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
    std::filesystem::rename(beside, utf8Path(path), error);
    return !error;
}

} // namespace camera
