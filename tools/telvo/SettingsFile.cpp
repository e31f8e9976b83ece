#include "SettingsFile.h"

#include "ToolError.h"

#include <fstream>

namespace telvo
{

namespace
{

/// A JSON value as the command line would have it.
std::string valueText(const Json& value)
{
    if (value.is_boolean()) {
        return value.get<bool>() ? "on" : "off";
    }
    return value.is_string() ? value.get<std::string>() : value.dump();
}

FiledSetting filedSetting(const std::string& name, const Json& entry)
{
    const bool isWhole = entry.is_object() && entry.contains("value");
    const Setting& setting = findSetting(name);
    const std::string unit =
        isWhole && entry.contains("unit") ? valueText(entry.at("unit")) : std::string();
    return {makeAssignment(setting, valueText(isWhole ? entry.at("value") : entry)), unit};
}

} // namespace

Json settingsDocument(const CameraAddress& camera, const ReadSetting& read)
{
    std::vector<const Setting*> kept;
    for (const Setting& setting : allSettings()) {
        if (setting.lasting == Lasting::Always) {
            kept.push_back(&setting);
        }
    }
    const gige::wire::DiscoveryAck& info = camera.device.info;
    return {{"camera",
             {{"manufacturer", info.manufacturer},
              {"model", info.model},
              {"serialNumber", info.serialNumber},
              {"name", info.userDefinedName},
              {"mac", camera.mac}}},
            {"settings", settingsJson(kept, read)}};
}

std::vector<FiledSetting> filedSettings(const Json& document, const std::string& name)
{
    if (!document.is_object() || !document.contains("settings") ||
        !document.at("settings").is_object()) {
        throw Failure(name + " is no file of settings ('telvo settings save' makes one)");
    }
    std::vector<FiledSetting> settings;
    for (const auto& [setting, entry] : document.at("settings").items()) {
        settings.push_back(filedSetting(setting, entry));
    }
    return settings;
}

std::vector<FiledSetting> readSettingsFile(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    if (!stream) {
        throw Failure("cannot read " + file.string() + "; is it there, and may you read it?");
    }
    return filedSettings(Json::parse(stream, nullptr, false), file.string());
}

std::vector<Assignment> assignmentsFor(const std::vector<FiledSetting>& settings,
                                       const ReadSetting& read)
{
    std::vector<Assignment> assignments;
    for (const FiledSetting& filed : settings) {
        const auto present = read(*filed.assignment.setting);
        const std::string name(filed.assignment.setting->name);
        if (!present) {
            throw Failure("the camera has no " + name + "; take it out of the file");
        }
        if (!filed.unit.empty() && filed.unit != present->unit) {
            throw Failure(name + " is in " + filed.unit + " in the file, the camera takes " +
                          (present->unit.empty() ? "a number without unit" : present->unit) +
                          "; write it so into the file");
        }
        assignments.push_back(filed.assignment);
    }
    return assignments;
}

} // namespace telvo
