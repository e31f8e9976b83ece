#include "SettingReader.h"

#include "CameraLook.h"
#include "CameraSession.h"
#include "SettingLook.h"

#include <memory>

namespace telvo
{

ReadSetting settingReader(const CameraAddress& camera)
{
    if (const std::shared_ptr<CameraSession> kept = CameraSession::kept(camera)) {
        return [kept](const Setting& setting) { return kept->read(setting); };
    }
    return [look = std::make_shared<CameraLook>(camera)](const Setting& setting) {
        return lookAtSetting(*look, setting);
    };
}

std::vector<const Setting*> everySetting()
{
    std::vector<const Setting*> settings;
    for (const Setting& setting : allSettings()) {
        settings.push_back(&setting);
    }
    return settings;
}

Json settingsJson(const std::vector<const Setting*>& settings, const ReadSetting& read)
{
    Json json = Json::object();
    for (const Setting* const setting : settings) {
        if (const auto text = read(*setting)) {
            json[std::string(setting->name)] = jsonOf(*text);
        }
    }
    return json;
}

std::vector<std::vector<std::string>> settingRows(const ReadSetting& read)
{
    std::vector<std::vector<std::string>> rows;
    for (const Setting& setting : allSettings()) {
        if (const auto text = read(setting)) {
            rows.push_back({std::string(setting.name), text->withUnit(), text->limits});
        }
    }
    return rows;
}

} // namespace telvo
