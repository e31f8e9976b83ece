#include "CaptureFeatures.h"

RangeParts getRecordBurstCnt(CameraSettings& camera)
{
    auto* const feature = camera.link.features.find<PvGenInteger>("RecordBurstCnt");
    RangeParts parts;
    std::int64_t number = 0;
    if (feature == nullptr || !feature->GetMin(number).IsOK()) {
        return parts;
    }
    parts.minimum = number;
    if (!feature->GetMax(number).IsOK()) {
        return parts;
    }
    parts.maximum = number;
    if (feature->GetValue(number).IsOK()) {
        parts.value = number;
    }
    return parts;
}
