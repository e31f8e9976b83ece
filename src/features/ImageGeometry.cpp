// Width, height, offsets and sensor size. Every accessor keeps the geometry cache up to date.

#include "CQuorGrabber.h"
#include "LogText.h"

#include <algorithm>
#include <limits>

namespace
{

using I32 = std::int32_t;

struct GeometryAccess {
    const char* feature;
    std::atomic<I32> GeometryCache::*cached;
    LogText<I32> done;
    LogText<> failed;
    LogText<I32, I32, I32> requested{}; ///< minimum, maximum and value, before a write
};

constexpr GeometryAccess kSetWidth{
    "Width", &GeometryCache::width, "-- GEN setCurrentWidth %d", "-- GEN setCurrentWidth Error",
    "<--------------- GEN setCurrentWidth: min = %d, max = %d, value = %d"};
constexpr GeometryAccess kSetHeight{"Height", &GeometryCache::height, "-- GEN setCurrentHeight %d",
                                    "-- GEN setCurrentHeight Error"};
constexpr GeometryAccess kSetOffsetX{"OffsetX", &GeometryCache::offsetX, "-- GEN setOffsetX %d",
                                     "-- GEN setOffsetX Error"};
constexpr GeometryAccess kSetOffsetY{"OffsetY", &GeometryCache::offsetY, "-- GEN setOffsetY %d",
                                     "-- GEN setOffsetY Error"};
constexpr GeometryAccess kGetOffsetX{"OffsetX", &GeometryCache::offsetX, "-- GEN getOffsetX %d",
                                     "-- GEN getOffsetX Error"};
constexpr GeometryAccess kGetOffsetY{"OffsetY", &GeometryCache::offsetY, "-- GEN getOffsetY %d",
                                     "-- GEN getOffsetY Error"};
constexpr GeometryAccess kGetWidth{"Width", &GeometryCache::width, "-- GEN getCurrentWidth %d",
                                   "-- GEN getCurrentWidth Error"};
constexpr GeometryAccess kGetHeight{"Height", &GeometryCache::height, "-- GEN getCurrentHeight %d",
                                    "-- GEN getCurrentHeight Error"};
constexpr GeometryAccess kGetMaxWidth{"SensorWidth", &GeometryCache::sensorWidth,
                                      "-- GEN getMaxWidth %d", "-- GEN getMaxWidth Error"};
constexpr GeometryAccess kGetMaxHeight{"SensorHeight", &GeometryCache::sensorHeight,
                                       "-- GEN getMaxHeight %d", "-- GEN getMaxHeight Error"};

/// The value is clamped into the camera's limits, and the host sees what was sent. A value off the
/// camera's increment is sent as it is.
I32 runClampedWrite(const GeometryAccess& row, const CameraFeatures& features, GeometryCache& cache,
                    I32* value)
{
    auto* const feature = features.find<PvGenInteger>(row.feature);
    if (feature == nullptr) {
        row.failed.log();
        return kFailure;
    }
    // Limits that cannot be read do not limit.
    std::int64_t lowest = 0;
    if (!feature->GetMin(lowest).IsOK()) {
        lowest = std::numeric_limits<I32>::min();
    }
    std::int64_t highest = 0;
    if (!feature->GetMax(highest).IsOK()) {
        highest = std::numeric_limits<I32>::max();
    }
    const auto minimum = static_cast<I32>(lowest);
    const auto maximum = static_cast<I32>(highest);
    row.requested.log(minimum, maximum, *value);
    *value = *value < minimum ? minimum : std::min(*value, maximum);
    if (!feature->SetValue(*value).IsOK()) {
        row.failed.log();
        return kFailure;
    }
    cache.*row.cached = *value;
    row.done.log(*value);
    return kSuccess;
}

I32 runValueRead(const GeometryAccess& row, const CameraFeatures& features, GeometryCache& cache,
                 I32* value)
{
    auto* const feature = features.find<PvGenInteger>(row.feature);
    std::int64_t wide = 0;
    if (feature == nullptr || !feature->GetValue(wide).IsOK()) {
        row.failed.log();
        return kFailure;
    }
    *value = static_cast<I32>(wide);
    cache.*row.cached = *value;
    row.done.log(*value);
    return kSuccess;
}

/// @return the value; the cached one when it cannot be read; kFailure when the camera has no such
/// feature
I32 readValue(const GeometryAccess& row, const CameraFeatures& features, GeometryCache& cache)
{
    auto* const feature = features.find<PvGenInteger>(row.feature);
    if (feature == nullptr) {
        row.failed.log();
        return kFailure;
    }
    std::int64_t wide = 0;
    if (feature->GetValue(wide).IsOK()) {
        cache.*row.cached = static_cast<I32>(wide);
    }
    const I32 value = cache.*row.cached;
    row.done.log(value);
    return value;
}

} // namespace

std::int32_t CQuorGrabber::setCurrentWidth(std::int32_t* value)
{
    return runClampedWrite(kSetWidth, mFeatures, mGeometry, value);
}

std::int32_t CQuorGrabber::setCurrentHeight(std::int32_t* value)
{
    return runClampedWrite(kSetHeight, mFeatures, mGeometry, value);
}

std::int32_t CQuorGrabber::setOffsetX(std::int32_t* value)
{
    return runClampedWrite(kSetOffsetX, mFeatures, mGeometry, value);
}

std::int32_t CQuorGrabber::setOffsetY(std::int32_t* value)
{
    return runClampedWrite(kSetOffsetY, mFeatures, mGeometry, value);
}

std::int32_t CQuorGrabber::getOffsetX(std::int32_t* value)
{
    return runValueRead(kGetOffsetX, mFeatures, mGeometry, value);
}

std::int32_t CQuorGrabber::getOffsetY(std::int32_t* value)
{
    return runValueRead(kGetOffsetY, mFeatures, mGeometry, value);
}

std::int32_t CQuorGrabber::getCurrentWidth()
{
    return readValue(kGetWidth, mFeatures, mGeometry);
}

std::int32_t CQuorGrabber::getCurrentHeight()
{
    return readValue(kGetHeight, mFeatures, mGeometry);
}

std::int32_t CQuorGrabber::getMaxWidth()
{
    return readValue(kGetMaxWidth, mFeatures, mGeometry);
}

std::int32_t CQuorGrabber::getMaxHeight()
{
    return readValue(kGetMaxHeight, mFeatures, mGeometry);
}
