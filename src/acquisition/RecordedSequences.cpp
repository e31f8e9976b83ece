// How much was recorded, and from which sequence the camera streams.
#include "CQuorGrabber.h"

#include <algorithm>
#include <limits>

std::int32_t CQuorGrabber::getCurrentRecordingSequence(std::int32_t* sequence)
{
    PvGenInteger* const feature = mFeatures->recordCurrentSequenceNumber;
    std::int64_t value = 0;
    if (feature == nullptr || !feature->GetValue(value).IsOK()) {
        return kFailure;
    }
    *sequence = static_cast<std::int32_t>(value);
    return kSuccess;
}

std::int32_t CQuorGrabber::getMaxFramesPerSequence(std::int32_t* count)
{
    PvGenInteger* const feature = mFeatures->recordMaxFramesPerSequence;
    if (feature == nullptr) {
        return kFailure;
    }
    std::int64_t value = 0;
    const bool isRead = feature->GetValue(value).IsOK();
    *count = isRead ? static_cast<std::int32_t>(value) : 0;
    return isRead ? kSuccess : kFailure;
}

std::int32_t CQuorGrabber::setCurrentStreamSequence(std::int32_t* sequence)
{
    if (!mIsMultiSequenceAvailable) {
        return kSuccess;
    }
    auto* const feature = mFeatures.find<PvGenInteger>("StreamSequenceSelector");
    if (feature == nullptr) {
        return kFailure;
    }
    // A limit that cannot be read does not limit.
    std::int64_t minimum = std::numeric_limits<std::int32_t>::min();
    std::int64_t maximum = std::numeric_limits<std::int32_t>::max();
    feature->GetMin(minimum);
    feature->GetMax(maximum);
    const std::int64_t clamped = std::max(minimum, std::min<std::int64_t>(*sequence, maximum));
    *sequence = static_cast<std::int32_t>(clamped);
    return feature->SetValue(clamped).IsOK() ? kSuccess : kFailure;
}

std::int32_t CQuorGrabber::getRecordInfo(std::int32_t* offsetX, std::int32_t* offsetY,
                                         std::int32_t* width, std::int32_t* height,
                                         std::int64_t* frameCount, std::int64_t* reserved)
{
    *offsetX = mGeometry.offsetX;
    *offsetY = mGeometry.offsetY;
    *width = mGeometry.width;
    *height = mGeometry.height;
    *reserved = 0;
    std::int32_t count = 0;
    if (!mIsConnectionLost) {
        getNumberOfAllRecordedFrames(&count);
    }
    *frameCount = count;
    return kSuccess;
}
