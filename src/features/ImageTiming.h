/// Exposure, frame rate, black level, gain, trailer counter and temperature.
#ifndef TELVO_SRC_FEATURES_IMAGETIMING_H
#define TELVO_SRC_FEATURES_IMAGETIMING_H

#include "AccessVariants.h"

#include <cstdint>

inline constexpr IntegerAccess kSetExposureTime{
    &FeatureHandles::exposureTimeRaw, "-- GEN setExposureTime %d", "-- GEN setExposureTime Error"};
inline constexpr IntegerAccess kSetBlacklevel{
    &FeatureHandles::blackLevelRaw, "-- GEN setBlacklevel %d", "-- GEN setBlacklevel Error"};
inline constexpr RangeAccess kGetBlacklevel{&FeatureHandles::blackLevelRaw,
                                            "-- GEN getBlacklevel Min %d Max %d Value %d",
                                            "-- GEN getBlacklevel Error"};
inline constexpr IntegerAccess kSetTrailerCounter{"RecordTrailer", "-- GEN setTrailerCounter %d",
                                                  "-- GEN setTrailerCounter Error"};
inline constexpr IntegerAccess kGetTemperature{.feature = &FeatureHandles::temperature,
                                               .failedRead = FailedRead::ShowsZeroOfKnownFeature};

/// What a failed read means for the tries after it.
enum class FailedTry { EndsItsTry, SpoilsEveryTry };

/// A range that is read until it is not empty: a camera that is still working out new limits
/// reports an empty one for a while.
struct RetriedRangeRead {
    Feature<PvGenInteger> feature;
    FailedTry failedTry;
    LogText<std::int32_t, std::int32_t, std::int32_t, std::int32_t> tried;
    LogText<> failed;
};

// Once a read of the exposure time has failed, no later try counts: hosts rely on the -1.
inline constexpr RetriedRangeRead kGetExposureTime{
    &FeatureHandles::exposureTimeRaw, FailedTry::SpoilsEveryTry,
    "-- GEN %d. try: getExposureTime Min %d Max %d Value %d", "-- GEN getExposureTime Error"};
inline constexpr RetriedRangeRead kGetFramerate{
    &FeatureHandles::acquisitionFrameRateRaw, FailedTry::EndsItsTry,
    "-- GEN %d. try: getFramerate Min %d Max %d Value %d", "-- GEN getFramerate Error"};

/// An empty range is shown to the host although it is a failure.
Reading<Range> read(CameraSettings& camera, const RetriedRangeRead& row);

Outcome setFramerate(CameraSettings& camera, std::int32_t value);
Outcome setDigitalGain(CameraSettings& camera, double value);
Reading<Range> getDigitalGain(CameraSettings& camera);
/// @return also NotAvailable
Reading<Range> getTrailerCounter(CameraSettings& camera);

#endif
