/// A camera's settings as a page shows them.
#ifndef TELVO_TOOLS_TELVO_PANEL_SETTINGROWS_H
#define TELVO_TOOLS_TELVO_PANEL_SETTINGROWS_H

#include "CameraSession.h"
#include "Json.h"
#include "Setting.h"
#include "SettingWriter.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace telvo
{

/// A sensor's size, pixels; 0: not known.
struct SensorArea {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// One setting: what it is, its value, and between which values it can be changed.
Json rowOf(const Setting& setting, const SettingText& text, SensorArea sensor);

/// What became of settings that were written.
Json outcomesJson(const std::vector<SettingOutcome>& outcomes);

/// Reads the rows of all settings that a camera has. Those of the link change only when they are
/// set here, and the library pauses whenever it is asked for one, so that they are kept: at first
/// what the camera was connected with. Of the camera's thread.
class SettingRows
{
  public:
    Json read(const CameraSession& camera);
    /// It was set.
    void forget(const Setting& setting) { mKept.erase(&setting); }
    /// The camera was connected anew.
    void forgetAll();

  private:
    std::optional<SettingText> textOf(const Setting& setting, const CameraSession& camera);

    std::map<const Setting*, SettingText> mKept;
};

} // namespace telvo

#endif
