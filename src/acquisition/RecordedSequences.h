/// How much was recorded, and from which sequence the camera streams.
#ifndef TELVO_SRC_ACQUISITION_RECORDEDSEQUENCES_H
#define TELVO_SRC_ACQUISITION_RECORDEDSEQUENCES_H

#include "AccessVariants.h"

#include <cstdint>

inline constexpr IntegerAccess kGetCurrentRecordingSequence{
    &FeatureHandles::recordCurrentSequenceNumber};
inline constexpr IntegerAccess kGetMaxFramesPerSequence{
    .feature = &FeatureHandles::recordMaxFramesPerSequence,
    .failedRead = FailedRead::ShowsZeroOfKnownFeature};

constexpr std::int32_t kFirstSequence = 0;

/// Clamps the sequence into the camera's limits; a camera of one sequence has none to choose.
/// @return the sequence as sent
Reading<std::int32_t> setCurrentStreamSequence(CameraSettings& camera, std::int32_t sequence);

struct RecordInfo {
    std::int32_t offsetX; // pixels, as the next three
    std::int32_t offsetY;
    std::int32_t width;
    std::int32_t height;
    std::int32_t frameCount;
};
/// Geometry as last known, and the number of all recorded frames.
RecordInfo getRecordInfo(CameraSettings& camera);

#endif
