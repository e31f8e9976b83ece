/// The recording memory: mode, sequences, counts, recording at power-on, IRIG-B time code.
#ifndef TELVO_SRC_FEATURES_RECORDINGFEATURES_H
#define TELVO_SRC_FEATURES_RECORDINGFEATURES_H

#include "AccessVariants.h"
#include "EnumAccess.h"

#include <cstdint>

inline constexpr EnumEntry kRecordModes[] = {{0, "Single"}, {1, "Continuous"}};
inline constexpr MappedEnum kRecordMode{"RecordMode", kRecordModes};
inline constexpr IntegerAccess kGetNumberOfRecordedFramesPerSequence{
    &FeatureHandles::recordNumberOfFramesPerSequence,
    "-- GEN getNumberOfRecordedFramesPerSequence %d",
    "-- GEN getNumberOfRecordedFramesPerSequence Error"};
inline constexpr BooleanAccess kIRIGBState{"IRIGBEnable"};

Outcome setNumberOfRecordSequences(CameraSettings& camera, std::int32_t count);
/// The count is 1 where the camera does not tell a known one. @return also NotAvailable
Reading<std::int32_t> getNumberOfRecordSequences(CameraSettings& camera);
/// 0 without a camera; a failed read shows 0 as well.
Reading<std::int32_t> getNumberOfAllRecordedFrames(CameraSettings& camera);

struct ImageSize {
    std::int32_t width;  // pixels
    std::int32_t height; // pixels
};
/// What the camera does not tell is 0.
ImageSize getLastRecordDimensions(CameraSettings& camera);

Outcome setRecordAtPowerOnState(CameraSettings& camera, bool enable);
Reading<bool> getRecordAtPowerOnState(CameraSettings& camera);
Reading<bool> isRecordAtPowerOnAvailable(CameraSettings& camera);
Reading<bool> isIRIGBAvailable(CameraSettings& camera);

#endif
