/// Width, height, offsets and sensor size. Every accessor keeps the geometry cache up to date.
#ifndef TELVO_SRC_FEATURES_IMAGEGEOMETRY_H
#define TELVO_SRC_FEATURES_IMAGEGEOMETRY_H

#include "CameraSettings.h"
#include "LogText.h"
#include "Outcome.h"

#include <atomic>
#include <cstdint>
#include <optional>

struct GeometryAccess {
    const char* feature;
    std::atomic<std::int32_t> GeometryCache::*cached;
    LogText<std::int32_t> done;
    LogText<> failed;
};
struct GeometryRead : GeometryAccess {
};
struct GeometryWrite : GeometryAccess {
    /// Minimum, maximum and value, before the write.
    LogText<std::int32_t, std::int32_t, std::int32_t> requested{};
};

inline constexpr GeometryWrite kSetWidth{
    {"Width", &GeometryCache::width, "-- GEN setCurrentWidth %d", "-- GEN setCurrentWidth Error"},
    "<--------------- GEN setCurrentWidth: min = %d, max = %d, value = %d"};
inline constexpr GeometryWrite kSetHeight{{"Height", &GeometryCache::height,
                                           "-- GEN setCurrentHeight %d",
                                           "-- GEN setCurrentHeight Error"}};
inline constexpr GeometryWrite kSetOffsetX{
    {"OffsetX", &GeometryCache::offsetX, "-- GEN setOffsetX %d", "-- GEN setOffsetX Error"}};
inline constexpr GeometryWrite kSetOffsetY{
    {"OffsetY", &GeometryCache::offsetY, "-- GEN setOffsetY %d", "-- GEN setOffsetY Error"}};
inline constexpr GeometryRead kGetOffsetX{
    {"OffsetX", &GeometryCache::offsetX, "-- GEN getOffsetX %d", "-- GEN getOffsetX Error"}};
inline constexpr GeometryRead kGetOffsetY{
    {"OffsetY", &GeometryCache::offsetY, "-- GEN getOffsetY %d", "-- GEN getOffsetY Error"}};
inline constexpr GeometryRead kGetWidth{
    {"Width", &GeometryCache::width, "-- GEN getCurrentWidth %d", "-- GEN getCurrentWidth Error"}};
inline constexpr GeometryRead kGetHeight{{"Height", &GeometryCache::height,
                                          "-- GEN getCurrentHeight %d",
                                          "-- GEN getCurrentHeight Error"}};
inline constexpr GeometryRead kGetMaxWidth{{"SensorWidth", &GeometryCache::sensorWidth,
                                            "-- GEN getMaxWidth %d", "-- GEN getMaxWidth Error"}};
inline constexpr GeometryRead kGetMaxHeight{{"SensorHeight", &GeometryCache::sensorHeight,
                                             "-- GEN getMaxHeight %d",
                                             "-- GEN getMaxHeight Error"}};

/// Clamps the value into the camera's limits, and sends one off the camera's increment as it is.
/// @return the value as sent
Reading<std::int32_t> write(CameraSettings& camera, const GeometryWrite& row, std::int32_t value);
Reading<std::int32_t> read(CameraSettings& camera, const GeometryRead& row);
/// @return the value; the cached one when it cannot be read; nothing without such a feature
std::optional<std::int32_t> readOrRecall(CameraSettings& camera, const GeometryRead& row);

#endif
