#ifndef TELVO_TOOLS_TELVO_WRITERS_SIDECAR_H
#define TELVO_TOOLS_TELVO_WRITERS_SIDECAR_H

#include "FrameCounter.h"
#include "FrameList.h"
#include "OutputTarget.h"

#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>

namespace telvo
{

/**
 * What is known of the frames in a file or folder, in a JSON file beside them: an object with the
 * members of "about" first, then the check of the frame counters ("counter-check"), then a line for
 * each frame ("frames").
 */
struct Sidecar {
    nlohmann::ordered_json about;
    FrameList frames;
};

/// "recording.tif.json" for a file, "folder/recording.json" for a folder.
std::filesystem::path sidecarPath(const std::filesystem::path& output, bool isFolder);

/// @param expected  frames that the series should have
/// Throws Failure.
void writeSidecar(const std::filesystem::path& path, const Sidecar& sidecar,
                  const FrameCounter& counter, std::uint64_t expected, IfThere ifThere);

/// Reads about and frames back. Throws Failure where there is no such file, or another one.
Sidecar readSidecar(const std::filesystem::path& path);

/// The verdict alone: whether the series is continuous and whole, what is missing and where.
nlohmann::ordered_json verdictOf(const FrameCounter& counter, std::uint64_t expected);

} // namespace telvo

#endif
