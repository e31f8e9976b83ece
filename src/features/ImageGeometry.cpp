#include "ImageGeometry.h"

#include <algorithm>
#include <limits>

namespace
{

using I32 = std::int32_t;

/// A limit that cannot be read does not limit.
struct Limits {
    I32 minimum;
    I32 maximum;
};

Limits limitsOf(PvGenInteger& feature)
{
    std::int64_t minimum = 0;
    if (!feature.GetMin(minimum).IsOK()) {
        minimum = std::numeric_limits<I32>::min();
    }
    std::int64_t maximum = 0;
    if (!feature.GetMax(maximum).IsOK()) {
        maximum = std::numeric_limits<I32>::max();
    }
    return {.minimum = static_cast<I32>(minimum), .maximum = static_cast<I32>(maximum)};
}

} // namespace

Reading<I32> write(CameraSettings& camera, const GeometryWrite& row, I32 value)
{
    auto* const feature = camera.link.features.find<PvGenInteger>(row.feature);
    if (feature == nullptr) {
        row.failed.log();
        return {};
    }
    const Limits limits = limitsOf(*feature);
    row.requested.log(limits.minimum, limits.maximum, value);
    // Not std::clamp: cameras in between two settings report limits that cross.
    const I32 clamped = value < limits.minimum ? limits.minimum : std::min(value, limits.maximum);
    if (!feature->SetValue(clamped).IsOK()) {
        row.failed.log();
        return {.outcome = Outcome::Failed, .value = clamped};
    }
    camera.geometry.*row.cached = clamped;
    row.done.log(clamped);
    return done(clamped);
}

Reading<I32> read(CameraSettings& camera, const GeometryRead& row)
{
    auto* const feature = camera.link.features.find<PvGenInteger>(row.feature);
    std::int64_t wide = 0;
    if (feature == nullptr || !feature->GetValue(wide).IsOK()) {
        row.failed.log();
        return {};
    }
    const auto value = static_cast<I32>(wide);
    camera.geometry.*row.cached = value;
    row.done.log(value);
    return done(value);
}

std::optional<I32> readOrRecall(CameraSettings& camera, const GeometryRead& row)
{
    auto* const feature = camera.link.features.find<PvGenInteger>(row.feature);
    if (feature == nullptr) {
        row.failed.log();
        return std::nullopt;
    }
    std::int64_t wide = 0;
    if (feature->GetValue(wide).IsOK()) {
        camera.geometry.*row.cached = static_cast<I32>(wide);
    }
    const I32 value = camera.geometry.*row.cached;
    row.done.log(value);
    return value;
}
