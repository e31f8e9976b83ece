#ifndef TELVO_CAMERA_USERSETS_H
#define TELVO_CAMERA_USERSETS_H

#include "FeatureTable.h"

#include <array>
#include <map>
#include <string>

namespace camera
{

using FeatureValues = std::array<std::int64_t, kFeatureCount>;

/** What a camera keeps when it is switched off. Not thread-safe. */
struct StoredState {
    std::map<FeatureId, std::int64_t> userSet1{}; ///< empty: never saved
    std::map<FeatureId, std::int64_t> settings{}; ///< data words, default set, power-on recording
    std::string userName{};
    bool operator==(const StoredState&) const = default;
};

/** Copies the features that belong to a user set. */
[[nodiscard]] std::map<FeatureId, std::int64_t> userSetOf(const FeatureValues& values);

/** Features that the camera keeps besides its user set. */
[[nodiscard]] bool isKeptAlone(FeatureId feature);

/**
 * Reads what save() wrote. A missing file gives an empty state; unknown names are skipped.
 * @param path  empty: no file
 */
[[nodiscard]] StoredState loadState(const std::string& path);

/** Writes one "name=value" a line. False when the file cannot be written. */
[[nodiscard]] bool saveState(const std::string& path, const StoredState& state);

} // namespace camera

#endif
