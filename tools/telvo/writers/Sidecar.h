#ifndef TELVO_TOOLS_TELVO_WRITERS_SIDECAR_H
#define TELVO_TOOLS_TELVO_WRITERS_SIDECAR_H

#include "FrameCounter.h"
#include "FrameList.h"
#include "OutputFile.h"

#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

namespace telvo
{

/**
 * What is known of the frames in a file or folder, in a JSON file beside them: an object with the
 * members of "about" first, then the check of the frame counters ("counter-check"), then a line for
 * each frame ("frames").
 */
// NOLINTNEXTLINE(bugprone-exception-escape): the JSON library's move asserts
struct Sidecar {
    nlohmann::ordered_json about;
    FrameList frames;
};

/// "recording.tif.json" for a file, "folder/recording.json" for a folder.
std::filesystem::path sidecarPath(const std::filesystem::path& output, bool isFolder);

/// A series as its process left it when it was killed.
struct UnfinishedSeries {
    Sidecar sidecar;
    std::filesystem::path output; // the file or the folder that it was written to
    IfThere ifThere = IfThere::Refuse;
    std::vector<std::filesystem::path> journals; // where this was kept; of no use once it is done
};

/**
 * The sidecar of a series that is being written. Until finish() a file with a name of its own lies
 * in its place: it keeps the frames that are written, for findUnfinished() should the process be
 * killed, and holds the space on the disk that the sidecar will take. Throws Failure.
 */
class SidecarFile
{
  public:
    /// @param output    the file or folder that the frames are being written to
    /// @param ifThere   of that file
    /// @param expected  frames that the series should have
    SidecarFile(const std::filesystem::path& path, IfThere sidecarIfThere,
                const nlohmann::ordered_json& about, const std::filesystem::path& output,
                IfThere ifThere, std::uint64_t expected);

    /// Keeps the first so many of the frames; those that it has already are not looked at again.
    void keep(const FrameList& frames, std::size_t count);
    void finish(const Sidecar& sidecar, const FrameCounter& counter);

  private:
    OutputFile mFile;
    std::uint64_t mExpected;
    std::size_t mKept = 0; // frames
};

/// What a killed process has left beside the sidecar's path; none: nothing. Throws Failure where
/// there is more than one such series.
std::optional<UnfinishedSeries> findUnfinished(const std::filesystem::path& path);

/// Whether the file begins as a sidecar does; the rest, which can be gigabytes, is not looked at.
bool isSidecar(const std::filesystem::path& path);

/// Reads about and frames back. Throws Failure where there is no such file, or another one.
Sidecar readSidecar(const std::filesystem::path& path);

/// The verdict alone: whether the series is continuous and whole, what is missing and where.
nlohmann::ordered_json verdictOf(const FrameCounter& counter, std::uint64_t expected);

} // namespace telvo

#endif
