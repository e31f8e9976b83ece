/// Settings as a look at the camera tells them.
#ifndef TELVO_TOOLS_TELVO_SETTINGLOOK_H
#define TELVO_TOOLS_TELVO_SETTINGLOOK_H

#include "CameraLook.h"
#include "Setting.h"

#include <map>
#include <optional>
#include <string>

namespace telvo
{

/// None if the camera lacks the setting, or it cannot be read. A setting of the host's own is what
/// this tool connects with.
std::optional<SettingText> lookAtSetting(const CameraLook& camera, const Setting& setting);

/// What the camera's description says of a setting beside its limits, which change with others.
struct SettingFacts {
    std::string unit; // "us"; may be empty
    std::string step; // "in steps of 16"; may be empty
};

/// Of those settings that the camera has.
using AllFacts = std::map<const Setting*, SettingFacts>;
AllFacts lookAtFacts(const CameraLook& camera);

} // namespace telvo

#endif
