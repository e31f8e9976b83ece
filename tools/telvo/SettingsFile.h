#ifndef TELVO_TOOLS_TELVO_SETTINGSFILE_H
#define TELVO_TOOLS_TELVO_SETTINGSFILE_H

#include "Json.h"
#include "Setting.h"
#include "SettingReader.h"

#include <filesystem>
#include <string>
#include <vector>

namespace telvo
{

/// All settings that the camera keeps, with their units, and whose they are.
Json settingsDocument(const CameraAddress& camera, const ReadSetting& read);

/// A setting as a file has it.
struct FiledSetting {
    Assignment assignment;
    std::string unit; // empty: the file names none
};

/// What is in such a document. Throws Failure for another one, UsageError for a setting that there
/// is not and for what is no value of its setting.
/// @param name  what the document is called in errors
std::vector<FiledSetting> filedSettings(const Json& document, const std::string& name);

/// Reads what settingsDocument() made. Throws Failure for a file that cannot be read or is no such
/// document, UsageError for a setting that there is not and for what is no value of its setting.
std::vector<FiledSetting> readSettingsFile(const std::filesystem::path& file);

/// The assignments, once each unit is the camera's. Throws Failure.
std::vector<Assignment> assignmentsFor(const std::vector<FiledSetting>& settings,
                                       const ReadSetting& read);

} // namespace telvo

#endif
