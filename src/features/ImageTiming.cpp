// Exposure, frame rate, black level, gain, trailer counter and temperature.

#include "AccessVariants.h"
#include "CQuorGrabber.h"
#include "LogText.h"
#include "RetriedAccess.h"
#include "Timing.h"
#include "Truncation.h"

namespace
{

using I32 = std::int32_t;

constexpr PlainAccess<PvGenInteger> kSetExposureTime{
    &FeatureHandles::exposureTimeRaw, "-- GEN setExposureTime %d", "-- GEN setExposureTime Error"};
constexpr PlainAccess<PvGenInteger> kSetBlacklevel{
    &FeatureHandles::blackLevelRaw, "-- GEN setBlacklevel %d", "-- GEN setBlacklevel Error"};
constexpr RangeAccess kGetBlacklevel{&FeatureHandles::blackLevelRaw,
                                     "-- GEN getBlacklevel Min %d Max %d Value %d",
                                     "-- GEN getBlacklevel Error"};
constexpr PlainAccess<PvGenInteger> kSetTrailerCounter{
    "RecordTrailer", "-- GEN setTrailerCounter %d", "-- GEN setTrailerCounter Error"};
constexpr RangeAccess kGetTrailerCounter{&FeatureHandles::recordTrailer,
                                         "-- GEN getTrailerCounter Min %d Max %d Value %d",
                                         "-- GEN getTrailerCounter Error"};
constexpr PlainAccess<PvGenInteger> kGetTemperature{&FeatureHandles::temperature, {}, {}};

/// What a failed read means for the tries after it.
enum class FailedRead { EndsItsTry, SpoilsEveryTry };

struct RetriedRangeRead {
    Feature<PvGenInteger> feature;
    FailedRead failedRead;
    LogText<I32, I32, I32, I32> tried;
    LogText<> failed;
};

// Once a read of the exposure time has failed, no later try counts: hosts rely on the -1.
constexpr RetriedRangeRead kGetExposureTime{
    &FeatureHandles::exposureTimeRaw, FailedRead::SpoilsEveryTry,
    "-- GEN %d. try: getExposureTime Min %d Max %d Value %d", "-- GEN getExposureTime Error"};
constexpr RetriedRangeRead kGetFramerate{
    &FeatureHandles::acquisitionFrameRateRaw, FailedRead::EndsItsTry,
    "-- GEN %d. try: getFramerate Min %d Max %d Value %d", "-- GEN getFramerate Error"};

/// A camera that is still working out new limits reports an empty range for a while.
std::int32_t runRetriedRangeRead(const RetriedRangeRead& row, const CameraFeatures& features,
                                 I32* minimum, I32* maximum, I32* value)
{
    PvGenInteger* const feature = features.get(row.feature);
    bool isSpoiled = false;
    for (I32 tryNumber = 1; feature != nullptr && tryNumber <= kFeatureTries; ++tryNumber) {
        Range range;
        const bool isRead = readRange(*feature, range);
        isSpoiled = isSpoiled || (!isRead && row.failedRead == FailedRead::SpoilsEveryTry);
        if (!isRead || isSpoiled) {
            continue;
        }
        *minimum = static_cast<I32>(range.minimum);
        *maximum = static_cast<I32>(range.maximum);
        *value = static_cast<I32>(range.value);
        row.tried.log(tryNumber, *minimum, *maximum, *value);
        if (*minimum < *maximum && *maximum != 0) {
            return kSuccess;
        }
        sleepFor(kFeatureRetryPause);
    }
    row.failed.log();
    return kFailure;
}

} // namespace

std::int32_t CQuorGrabber::setExposureTime(std::int32_t value)
{
    return runPlainWrite(kSetExposureTime, mFeatures, value);
}

std::int32_t CQuorGrabber::getExposureTime(std::int32_t* minimum, std::int32_t* maximum,
                                           std::int32_t* value)
{
    return runRetriedRangeRead(kGetExposureTime, mFeatures, minimum, maximum, value);
}

std::int32_t CQuorGrabber::setFramerate(std::int32_t value)
{
    PvGenInteger* const feature = mFeatures->acquisitionFrameRateRaw;
    for (I32 tryNumber = 1; feature != nullptr && tryNumber <= kFeatureTries; ++tryNumber) {
        if (!feature->IsAvailable()) {
            continue;
        }
        const PvResult result = feature->SetValue(value);
        if (result.IsOK()) {
            logLine("-- GEN %d. try: setFramerate %d", tryNumber, value);
            return kSuccess;
        }
        logRefusal("-- GEN %d. try: setFramerate Error Nr. %d, description: %s", tryNumber, result);
    }
    logLine("-- GEN setFramerate Error");
    return kFailure;
}

std::int32_t CQuorGrabber::getFramerate(std::int32_t* minimum, std::int32_t* maximum,
                                        std::int32_t* value)
{
    return runRetriedRangeRead(kGetFramerate, mFeatures, minimum, maximum, value);
}

std::int32_t CQuorGrabber::setBlacklevel(std::int32_t value)
{
    return runPlainWrite(kSetBlacklevel, mFeatures, value);
}

std::int32_t CQuorGrabber::getBlacklevel(std::int32_t* minimum, std::int32_t* maximum,
                                         std::int32_t* value)
{
    return runRangeRead(kGetBlacklevel, mFeatures, minimum, maximum, value);
}

std::int32_t CQuorGrabber::setDigitalGain(double value)
{
    PvGenInteger* const feature = mFeatures->gainRaw;
    if (feature == nullptr || !feature->SetValue(truncated<std::int32_t>(value)).IsOK()) {
        logLine("-- GEN setDigitalGain Error");
        return kFailure;
    }
    logLine("-- GEN setDigitalGain %f", value);
    return kSuccess;
}

std::int32_t CQuorGrabber::getDigitalGain(double* minimum, double* maximum, double* value)
{
    PvGenInteger* const feature = mFeatures->gainRaw;
    Range range;
    if (feature == nullptr || !readRange(*feature, range)) {
        logLine("-- GEN getDigitalGain Error");
        return kFailure;
    }
    *minimum = static_cast<double>(range.minimum);
    *maximum = static_cast<double>(range.maximum);
    *value = static_cast<double>(range.value);
    logLine("-- GEN getDigitalGain Min %f Max %f Value %f", *minimum, *maximum, *value);
    return kSuccess;
}

std::int32_t CQuorGrabber::setTrailerCounter(std::int32_t value)
{
    return runPlainWrite(kSetTrailerCounter, mFeatures, value);
}

std::int32_t CQuorGrabber::getTrailerCounter(std::int32_t* minimum, std::int32_t* maximum,
                                             std::int32_t* value)
{
    PvGenInteger* const feature = mFeatures->recordTrailer;
    if (feature != nullptr && !feature->IsAvailable()) {
        logLine("-- GEN getTrailerCounter Error N.A.");
        return kNotAvailable;
    }
    return runRangeRead(kGetTrailerCounter, mFeatures, minimum, maximum, value);
}

std::int32_t CQuorGrabber::getTemperature(std::int32_t* value)
{
    if (mFeatures->temperature != nullptr) {
        *value = 0; // what a failed read shows
    }
    return runPlainRead(kGetTemperature, mFeatures, value);
}
