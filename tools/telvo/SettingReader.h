#ifndef TELVO_TOOLS_TELVO_SETTINGREADER_H
#define TELVO_TOOLS_TELVO_SETTINGREADER_H

#include "CameraAddress.h"
#include "Json.h"
#include "Setting.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace telvo
{

/// None if the camera lacks the setting, or does not answer.
using ReadSetting = std::function<std::optional<SettingText>(const Setting&)>;

/// Reads settings of a camera without a change to it: by a look, or over the connection that a
/// shell keeps, which lets nobody look. Throws Failure.
ReadSetting settingReader(const CameraAddress& camera);

std::vector<const Setting*> everySetting();

/// An object with one member for each of the settings that the camera has.
Json settingsJson(const std::vector<const Setting*>& settings, const ReadSetting& read);

/// Name, value with unit, and limits of every setting that the camera has, as rows of a table.
std::vector<std::vector<std::string>> settingRows(const ReadSetting& read);

} // namespace telvo

#endif
