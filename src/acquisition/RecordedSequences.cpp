#include "RecordedSequences.h"

#include "RecordingFeatures.h"

#include <algorithm>
#include <limits>

Reading<std::int32_t> setCurrentStreamSequence(CameraSettings& camera, std::int32_t sequence)
{
    if (!camera.isMultiSequenceAvailable) {
        return done(sequence);
    }
    auto* const feature = camera.link.features.find<PvGenInteger>("StreamSequenceSelector");
    if (feature == nullptr) {
        return {};
    }
    // A limit that cannot be read does not limit.
    std::int64_t minimum = std::numeric_limits<std::int32_t>::min();
    std::int64_t maximum = std::numeric_limits<std::int32_t>::max();
    (void)feature->GetMin(minimum);
    (void)feature->GetMax(maximum);
    const std::int64_t clamped = std::max(minimum, std::min<std::int64_t>(sequence, maximum));
    return {.outcome = doneIf(feature->SetValue(clamped).IsOK()),
            .value = static_cast<std::int32_t>(clamped)};
}

RecordInfo getRecordInfo(CameraSettings& camera)
{
    const GeometryCache& geometry = camera.geometry;
    RecordInfo info{.offsetX = geometry.offsetX,
                    .offsetY = geometry.offsetY,
                    .width = geometry.width,
                    .height = geometry.height,
                    .frameCount = 0};
    if (!camera.link.isLost) {
        info.frameCount = getNumberOfAllRecordedFrames(camera).value.value_or(0);
    }
    return info;
}
