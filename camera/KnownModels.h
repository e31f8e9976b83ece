#ifndef TELVO_CAMERA_KNOWNMODELS_H
#define TELVO_CAMERA_KNOWNMODELS_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace camera
{

struct SensorSize {
    std::uint32_t width = 1280;
    std::uint32_t height = 1024;
    bool operator==(const SensorSize&) const = default;
};

/// What distinguishes one model of the family from another.
struct CameraModel {
    std::string_view name;
    SensorSize sensor{};
    std::uint32_t fastestRate = 200'000; ///< images a second, whatever the geometry
};

/// The models whose sensors are known.
[[nodiscard]] std::span<const CameraModel> knownModels();

/// Sensor and limits of a model; any other name has a sensor of 1280 x 1024. Case does not count.
[[nodiscard]] CameraModel modelFor(std::string_view name);

/// Highest image rate of a geometry: the sensor is read at 1.4 gigapixels a second.
[[nodiscard]] std::uint32_t fastestRate(const CameraModel& model, std::uint32_t width,
                                        std::uint32_t height);

} // namespace camera

#endif
