#include "ImageTiming.h"

#include "RetriedAccess.h"
#include "Truncation.h"

namespace
{

using I32 = std::int32_t;

constexpr RangeAccess kGetTrailerCounter{&FeatureHandles::recordTrailer,
                                         "-- GEN getTrailerCounter Min %d Max %d Value %d",
                                         "-- GEN getTrailerCounter Error"};

} // namespace

Reading<Range> read(CameraSettings& camera, const RetriedRangeRead& row)
{
    PvGenInteger* const feature = camera.link.features.get(row.feature);
    Reading<Range> reading;
    bool isSpoiled = false;
    for (I32 tryNumber = 1; feature != nullptr && tryNumber <= kFeatureTries; ++tryNumber) {
        const std::optional<Range> range = readRange(*feature, RangeReads::All);
        isSpoiled = isSpoiled || (!range && row.failedTry == FailedTry::SpoilsEveryTry);
        if (!range || isSpoiled) {
            continue;
        }
        reading.value = range;
        const auto minimum = static_cast<I32>(range->minimum);
        const auto maximum = static_cast<I32>(range->maximum);
        row.tried.log(tryNumber, minimum, maximum, static_cast<I32>(range->value));
        if (minimum < maximum && maximum != 0) {
            reading.outcome = Outcome::Done;
            return reading;
        }
        sleepFor(kFeatureRetryPause);
    }
    row.failed.log();
    return reading;
}

Outcome setFramerate(CameraSettings& camera, std::int32_t value)
{
    PvGenInteger* const feature = camera.link.features->acquisitionFrameRateRaw;
    for (I32 tryNumber = 1; feature != nullptr && tryNumber <= kFeatureTries; ++tryNumber) {
        if (!feature->IsAvailable()) {
            continue;
        }
        const PvResult result = feature->SetValue(value);
        if (result.IsOK()) {
            logLine("-- GEN %d. try: setFramerate %d", tryNumber, value);
            return Outcome::Done;
        }
        logRefusal("-- GEN %d. try: setFramerate Error Nr. %d, description: %s", tryNumber, result);
    }
    logLine("-- GEN setFramerate Error");
    return Outcome::Failed;
}

Outcome setDigitalGain(CameraSettings& camera, double value)
{
    PvGenInteger* const feature = camera.link.features->gainRaw;
    if (feature == nullptr || !feature->SetValue(truncated<I32>(value)).IsOK()) {
        logLine("-- GEN setDigitalGain Error");
        return Outcome::Failed;
    }
    logLine("-- GEN setDigitalGain %f", value);
    return Outcome::Done;
}

Reading<Range> getDigitalGain(CameraSettings& camera)
{
    PvGenInteger* const feature = camera.link.features->gainRaw;
    const std::optional<Range> range =
        feature == nullptr ? std::nullopt : readRange(*feature, RangeReads::All);
    if (!range) {
        logLine("-- GEN getDigitalGain Error");
        return {};
    }
    logLine("-- GEN getDigitalGain Min %f Max %f Value %f", static_cast<double>(range->minimum),
            static_cast<double>(range->maximum), static_cast<double>(range->value));
    return done(*range);
}

Reading<Range> getTrailerCounter(CameraSettings& camera)
{
    PvGenInteger* const feature = camera.link.features->recordTrailer;
    if (feature != nullptr && !feature->IsAvailable()) {
        logLine("-- GEN getTrailerCounter Error N.A.");
        return {.outcome = Outcome::NotAvailable};
    }
    return read(camera, kGetTrailerCounter);
}
