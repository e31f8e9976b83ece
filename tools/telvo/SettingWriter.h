#ifndef TELVO_TOOLS_TELVO_SETTINGWRITER_H
#define TELVO_TOOLS_TELVO_SETTINGWRITER_H

#include "SettingLook.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace telvo
{

/// What became of an assignment.
struct SettingOutcome {
    Assignment asked;
    std::optional<SettingText> taken; // none: it cannot be read
    bool refused = false;             // else the camera took it, or something else in its place

    bool isAsAsked() const;
    /// "640 px instead of 50000 (0 to 640, in steps of 16)", or just the value where it is as
    /// asked.
    std::string text() const;
};

/**
 * Writes settings that were given together, in an order in which the camera takes them: those that
 * it takes only after others have changed (the picture's width before the offset that leaves room
 * for it) are written again after those. Of two values for one setting the last counts.
 * @param facts  borrowed for the call
 * @return one outcome for each setting, in the order given, as all are at the end
 */
std::vector<SettingOutcome> writeSettings(const std::vector<Assignment>& assignments,
                                          std::int32_t cameraId, const AllFacts& facts);

/// A setting as the library reads it, with its unit and step. None: the camera lacks it.
std::optional<SettingText> readWithFacts(const Setting& setting, std::int32_t cameraId,
                                         const AllFacts& facts);

/// Throws Failure for the first that was refused, naming what the camera would take.
void requireTaken(const std::vector<SettingOutcome>& outcomes);

/// Throws Failure for the first that the camera took differently.
void requireAsAsked(const std::vector<SettingOutcome>& outcomes);

} // namespace telvo

#endif
