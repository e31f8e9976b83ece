#ifndef TELVO_CAMERA_USERSETS_H
#define TELVO_CAMERA_USERSETS_H

#include "Settings.h"

#include <string>

namespace camera
{

/// What a camera keeps when it is switched off.
struct StoredState {
    FeatureValues userSet1{}; ///< empty: never saved
    FeatureValues settings{}; ///< data words, default set, power-on recording
    std::string userName{};
    bool operator==(const StoredState&) const = default;
};

/// Reads what saveState() wrote. A missing file gives an empty state; unknown names are skipped.
/// @param path  empty: no file
[[nodiscard]] StoredState loadState(const std::string& path);

/// Writes one "name=value" a line. False when the file cannot be written.
[[nodiscard]] bool saveState(const std::string& path, const StoredState& state);

/// The camera's two user sets, and what it keeps besides them: its name, and the features that the
/// table calls remembered. "Default" is as the factory set it. Not thread-safe.
class UserSets
{
  public:
    /// Begins with what the state file has, else with what the options say.
    UserSets(const CameraOptions& options, const Settings& factory);

    /// Power-on: takes what was kept, and the set that is selected for it.
    void restore(Settings& settings) const;
    /// The values of a set, by its entry of "UserSetSelector"; null: it was never saved.
    [[nodiscard]] const FeatureValues* find(std::int64_t set) const;
    /// Saves "UserSet1". False when the file cannot be written.
    [[nodiscard]] bool save(const Settings& settings);
    /// Keeps what is remembered. False when the file cannot be written.
    [[nodiscard]] bool keep(const Settings& settings);

    [[nodiscard]] const std::string& userName() const { return mState.userName; }
    void setUserName(const std::string& name, const Settings& settings);

  private:
    const std::string mPath;
    const FeatureValues mDefault;
    StoredState mState;
};

} // namespace camera

#endif
