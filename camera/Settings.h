#ifndef TELVO_CAMERA_SETTINGS_H
#define TELVO_CAMERA_SETTINGS_H

#include "CameraOptions.h"
#include "Recorder.h"

#include <array>
#include <map>

namespace camera
{

using FeatureValues = std::map<FeatureId, std::int64_t>;

/// The value that each feature was set to, and what follows from these alone: the picture that they
/// describe, how the memory is divided, how the values limit each other. Not thread-safe.
class Settings
{
  public:
    /// As the factory set them. options must outlive the settings.
    explicit Settings(const CameraOptions& options);

    [[nodiscard]] std::int64_t get(FeatureId id) const
    {
        return mValues[static_cast<std::size_t>(id)];
    }
    [[nodiscard]] std::uint32_t get32(FeatureId id) const
    {
        return static_cast<std::uint32_t>(get(id));
    }
    [[nodiscard]] bool isOn(FeatureId id) const { return get(id) != 0; }
    void set(FeatureId id, std::int64_t value) { mValues[static_cast<std::size_t>(id)] = value; }
    /// Sets several, of which only the outcome must be valid, and settles the others.
    void take(const FeatureValues& values);
    /// Brings what depends on other features back within its limits.
    void settle();

    // Greatest values.
    [[nodiscard]] std::int64_t largestWidth() const { return largestImage().width; }
    [[nodiscard]] std::int64_t largestHeight() const { return largestImage().height; }
    [[nodiscard]] std::int64_t widestImage() const { return largestWidth() - get(Id::OffsetX); }
    [[nodiscard]] std::int64_t highestImage() const { return largestHeight() - get(Id::OffsetY); }
    [[nodiscard]] std::int64_t greatestOffsetX() const { return largestWidth() - get(Id::Width); }
    [[nodiscard]] std::int64_t greatestOffsetY() const { return largestHeight() - get(Id::Height); }
    [[nodiscard]] std::int64_t widestWindow() const { return get(Id::Width) - get(Id::IBOffsetX); }
    [[nodiscard]] std::int64_t highestWindow() const
    {
        return get(Id::Height) - get(Id::IBOffsetY);
    }
    [[nodiscard]] std::int64_t greatestWindowX() const { return get(Id::Width) - get(Id::IBWidth); }
    [[nodiscard]] std::int64_t greatestWindowY() const
    {
        return get(Id::Height) - get(Id::IBHeight);
    }
    [[nodiscard]] std::int64_t fastestFrameRate() const;
    [[nodiscard]] std::int64_t longestExposure() const; ///< us
    [[nodiscard]] std::int64_t longestTrailer() const { return framesPerSequence() - 1; }
    [[nodiscard]] std::int64_t lastSequence() const;

    [[nodiscard]] SceneView view() const;
    /// view() with the trigger window, if it is to be seen.
    [[nodiscard]] SceneView shownView() const;
    /// Header flags of the frames that are exposed with these settings.
    [[nodiscard]] std::uint8_t frameFlags() const;

    [[nodiscard]] std::int64_t payloadSize() const { return get(Id::Width) * get(Id::Height); }
    [[nodiscard]] std::uint32_t framesPerSequence() const;
    /// How a recording that begins now is taken.
    [[nodiscard]] RecordSettings recording() const;

  private:
    using Id = FeatureId;

    [[nodiscard]] SensorSize largestImage() const;
    [[nodiscard]] bool recordsContinuously() const;
    [[nodiscard]] std::uint32_t sequences() const;
    void fit(FeatureId id, std::int64_t maximum);

    const CameraOptions& mOptions;
    const CameraModel mModel;
    const SensorSize mSensor;
    std::array<std::int64_t, kFeatureCount> mValues{};
};

} // namespace camera

#endif
