#include "RecordingFeatures.h"

namespace
{

constexpr EnumEntry kSequenceCounts[] = {
    {1, "One"}, {2, "Two"}, {4, "Four"}, {8, "Eight"}, {16, "Sixteen"}};
constexpr MappedEnum kNumberOfRecordSequences{"RecordNumberOfSequences", kSequenceCounts};

constexpr IntegerAccess kGetNumberOfAllRecordedFrames{
    .feature = &FeatureHandles::recordNumberOfFrames,
    .done = "-- GEN getNumberOfAllRecordedFrames %d",
    .failed = "-- GEN getNumberOfAllRecordedFrames Error",
    .failedRead = FailedRead::ShowsZero};

constexpr const char* kRecordStartAtPowerOn = "RecordStartAtPowerOn";

const char* trueOrFalse(bool value)
{
    return value ? "true" : "false";
}

std::int32_t valueOrZero(PvGenInteger& feature)
{
    std::int64_t value = 0;
    return feature.GetValue(value).IsOK() ? static_cast<std::int32_t>(value) : 0;
}

} // namespace

Outcome setNumberOfRecordSequences(CameraSettings& camera, std::int32_t count)
{
    const Outcome outcome = write(camera, kNumberOfRecordSequences, count);
    if (outcome == Outcome::Done) {
        logLine("-- GEN setNumberOfRecordSequences %d", count);
    } else {
        logLine("-- GEN setNumberOfRecordSequences Error");
    }
    return outcome;
}

Reading<std::int32_t> getNumberOfRecordSequences(CameraSettings& camera)
{
    PvGenEnum* const feature = camera.link.features.get(kNumberOfRecordSequences.feature);
    if (feature != nullptr && !feature->IsAvailable()) {
        return {.outcome = Outcome::NotAvailable, .value = 1};
    }
    Reading<std::int32_t> reading = readEntry(feature, kSequenceCounts);
    reading.value = reading.value.value_or(1); // also what an unknown entry stands for
    if (reading.isDone()) {
        logLine("-- GEN getNumberOfRecordSequences %d", *reading.value);
    } else {
        logLine("-- GEN getNumberOfRecordSequences Error");
    }
    return reading;
}

Reading<std::int32_t> getNumberOfAllRecordedFrames(CameraSettings& camera)
{
    return camera.link.isUp() ? read(camera, kGetNumberOfAllRecordedFrames) : done(0);
}

ImageSize getLastRecordDimensions(CameraSettings& camera)
{
    const CameraFeatures& features = camera.link.features;
    auto* const width = features.find<PvGenInteger>("RecordLastRecWidth");
    auto* const height = features.find<PvGenInteger>("RecordLastRecHeight");
    ImageSize size{};
    if (width != nullptr && height != nullptr) {
        size.width = valueOrZero(*width);
        size.height = valueOrZero(*height);
    }
    logLine("LastRecordDimensions Width %d Height %d", size.width, size.height);
    return size;
}

Outcome setRecordAtPowerOnState(CameraSettings& camera, bool enable)
{
    auto* const feature = camera.link.features.find<PvGenBoolean>(kRecordStartAtPowerOn);
    if (feature == nullptr) {
        logLine("-- GEN setRecordAtPowerOnState = null");
        return Outcome::Failed;
    }
    if (!feature->SetValue(enable).IsOK()) {
        logLine("-- GEN setRecordAtPowerOnState Error");
        return Outcome::Failed;
    }
    logLine("-- GEN setRecordAtPowerOnState %s", trueOrFalse(enable));
    return Outcome::Done;
}

Reading<bool> getRecordAtPowerOnState(CameraSettings& camera)
{
    auto* const feature = camera.link.features.find<PvGenBoolean>(kRecordStartAtPowerOn);
    if (feature == nullptr) {
        logLine("-- GEN getRecordAtPowerOnState = null");
        return {.outcome = Outcome::Failed, .value = false};
    }
    bool isEnabled = false;
    if (!feature->GetValue(isEnabled).IsOK()) {
        return {};
    }
    logLine("-- GEN getRecordAtPowerOnState %s", trueOrFalse(isEnabled));
    return done(isEnabled);
}

Reading<bool> isRecordAtPowerOnAvailable(CameraSettings& camera)
{
    auto* const feature = camera.link.features.find<PvGenBoolean>(kRecordStartAtPowerOn);
    if (feature == nullptr) {
        logLine("-- GEN isRecordAtPowerOnAvailable = null");
        return {.outcome = Outcome::Failed, .value = false};
    }
    const bool isAvailable = feature->IsAvailable();
    logLine("-- GEN isRecordAtPowerOnAvailable %s", trueOrFalse(isAvailable));
    return done(isAvailable);
}

Reading<bool> isIRIGBAvailable(CameraSettings& camera)
{
    auto* const feature = camera.link.features.find<PvGenBoolean>("IRIGBAvailable");
    bool isAvailable = false;
    if (feature == nullptr || !feature->GetValue(isAvailable).IsOK()) {
        logLine("-- GEN isIRIGBAvailable null");
        return {.outcome = Outcome::Failed, .value = false};
    }
    logLine("-- GEN isIRIGBAvailable %s", trueOrFalse(isAvailable));
    return done(isAvailable);
}
