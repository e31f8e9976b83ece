#ifndef TELVO_TOOLS_TELVO_SETTING_H
#define TELVO_TOOLS_TELVO_SETTING_H

#include "TelvoDll.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace telvo
{

// The exports by which a setting is read and written, one row type per kind of value. A null set
// function: the setting can only be read.

/// A whole number with limits that the camera names and refuses to leave.
struct RangeAccess {
    std::int32_t (*get)(std::uint32_t* minimum, std::uint32_t* maximum, std::uint32_t* value,
                        std::int32_t cameraId);
    std::int32_t (*set)(std::uint32_t value, std::int32_t cameraId);
};

/// The same, exchanged as floating point.
struct RealRangeAccess {
    std::int32_t (*get)(double* minimum, double* maximum, double* value, std::int32_t cameraId);
    std::int32_t (*set)(double value, std::int32_t cameraId);
};

/// A whole number that the library brings into the camera's limits and hands back.
struct ClampedAccess {
    std::int32_t (*get)(std::uint32_t* value, std::int32_t cameraId);
    std::int32_t (*set)(std::uint32_t* value, std::int32_t cameraId);
};

/// A whole number without known limits.
struct NumberAccess {
    std::int32_t (*get)(std::uint32_t* value, std::int32_t cameraId);
    std::int32_t (*set)(std::uint32_t value, std::int32_t cameraId);
};

/// One of a few words; a word's value is its place in the list.
struct ChoiceAccess {
    std::int32_t (*get)(std::uint32_t* value, std::int32_t cameraId);
    std::int32_t (*set)(std::uint32_t value, std::int32_t cameraId);
    std::array<std::string_view, 3> words;   // the last may be empty
    std::array<std::string_view, 3> entries; // what the camera's enumeration calls them
};

/// on or off.
struct SwitchAccess {
    std::int32_t (*get)(std::uint8_t* enabled, std::int32_t cameraId);
    std::int32_t (*set)(std::uint8_t enable, std::int32_t cameraId);
};

/// A stream or link parameter, by the name that the library knows.
struct ParameterAccess {
    const char* getName;
    const char* setName; // null: given when connecting only
};

using SettingAccess = std::variant<RangeAccess, RealRangeAccess, ClampedAccess, NumberAccess,
                                   ChoiceAccess, SwitchAccess, ParameterAccess>;

/// How long the camera keeps a setting.
enum class Lasting : std::uint8_t {
    Always,
    Connection,    // as long as the connection
    NextConnection // until a host connects, which switches it off
};

struct Setting {
    std::string_view name; // as on the command line
    std::string_view help;
    SettingAccess access;
    std::string_view feature; // the camera's, which holds it; empty: it is the host's own
    /// Where a host gives it when it connects: the setting then lasts as long as the connection.
    /// Null: it is written to the camera.
    std::uint32_t TelvoConnectionSettings::*ofConnection = nullptr;
    Lasting lasting = ofConnection == nullptr ? Lasting::Always : Lasting::Connection;
    std::string_view unit{}; // of the host\'s own; those of the camera are in its description
};

/// A setting's value as text; limits and unit are empty where none are known.
struct SettingText {
    std::string value;
    std::string limits{}; // "1 to 2000"
    std::string unit{};   // "us"

    /// "250 us"
    std::string withUnit() const { return unit.empty() ? value : value + ' ' + unit; }
};

/// All settings, in the order in which they are shown.
std::span<const Setting> allSettings();

/// Throws UsageError for an unknown name.
const Setting& findSetting(std::string_view name);

/// "NAME  HELP" lines for the commands' help.
std::string describeSettings();

/// None if the camera lacks the setting or does not answer.
std::optional<SettingText> tryReadSetting(const Setting& setting, std::int32_t cameraId);

/// The same, throwing Failure instead of none.
SettingText readSetting(const Setting& setting, std::int32_t cameraId);

/// A setting and a value that its kind can have.
struct Assignment {
    const Setting* setting; // never null
    std::string text;       // as given
    double value;           // whole and of 32 bits for every kind but the real one
};

/// Checks without a camera. Throws UsageError for a text that is no value of this setting, and for
/// a setting that can only be read.
Assignment makeAssignment(const Setting& setting, std::string_view text);

/// "NAME=VALUE". Throws UsageError as makeAssignment and findSetting do.
Assignment parseAssignment(std::string_view text);

/// Throws UsageError for a setting that is given when connecting only.
/// @return false: the camera refuses the value
[[nodiscard]] bool writeSetting(const Assignment& assignment, std::int32_t cameraId);

/// Whether this text, as a setting was read, is the value that was assigned.
bool isValueOf(const Assignment& assignment, const SettingText& text);

} // namespace telvo

#endif
