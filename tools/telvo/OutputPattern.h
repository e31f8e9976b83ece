#ifndef TELVO_TOOLS_TELVO_OUTPUTPATTERN_H
#define TELVO_TOOLS_TELVO_OUTPUTPATTERN_H

#include "CameraAddress.h"

#include <filesystem>

namespace telvo
{

/// Whether the path has a place for what tells one camera from another: {ip}, {serial} or {name}.
bool isPattern(const std::filesystem::path& path);

/// Throws UsageError for anything else in braces, such as {nme}.
void requireKnownPlaces(const std::filesystem::path& path);

/// The path with the camera's own in these places. What a file name cannot hold becomes '_'.
std::filesystem::path pathFor(const std::filesystem::path& pattern, const CameraAddress& camera);

} // namespace telvo

#endif
