// The recording memory: mode, sequences, counts, recording at power-on, IRIG-B time code.

#include "AccessVariants.h"
#include "CQuorGrabber.h"
#include "EnumAccess.h"
#include "LogText.h"

namespace
{

constexpr EnumEntry kRecordModes[] = {{0, "Single"}, {1, "Continuous"}};
constexpr MappedEnum kRecordMode{"RecordMode", kRecordModes};

constexpr EnumEntry kSequenceCounts[] = {
    {1, "One"}, {2, "Two"}, {4, "Four"}, {8, "Eight"}, {16, "Sixteen"}};
constexpr MappedEnum kNumberOfRecordSequences{"RecordNumberOfSequences", kSequenceCounts};

constexpr PlainAccess<PvGenInteger> kGetNumberOfAllRecordedFrames{
    &FeatureHandles::recordNumberOfFrames, "-- GEN getNumberOfAllRecordedFrames %d",
    "-- GEN getNumberOfAllRecordedFrames Error"};
constexpr PlainAccess<PvGenInteger> kGetNumberOfRecordedFramesPerSequence{
    &FeatureHandles::recordNumberOfFramesPerSequence,
    "-- GEN getNumberOfRecordedFramesPerSequence %d",
    "-- GEN getNumberOfRecordedFramesPerSequence Error"};
constexpr PlainAccess<PvGenBoolean> kIRIGBState{"IRIGBEnable", {}, {}};

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

std::int32_t CQuorGrabber::setRecordMode(std::int32_t mode)
{
    return runMappedWrite(kRecordMode, mFeatures, mode);
}

std::int32_t CQuorGrabber::getRecordMode(std::int32_t* mode)
{
    return runMappedRead(kRecordMode, mFeatures, mode);
}

std::int32_t CQuorGrabber::setNumberOfRecordSequences(std::int32_t count)
{
    const std::int32_t result = runMappedWrite(kNumberOfRecordSequences, mFeatures, count);
    if (result == kSuccess) {
        logLine("-- GEN setNumberOfRecordSequences %d", count);
    } else {
        logLine("-- GEN setNumberOfRecordSequences Error");
    }
    return result;
}

std::int32_t CQuorGrabber::getNumberOfRecordSequences(std::int32_t* count)
{
    *count = 1; // also what an unknown entry stands for
    PvGenEnum* const feature = mFeatures.get(kNumberOfRecordSequences.feature);
    if (feature != nullptr && !feature->IsAvailable()) {
        return kNotAvailable;
    }
    const std::int32_t result = readMapped(kSequenceCounts, feature, count);
    if (result == kSuccess) {
        logLine("-- GEN getNumberOfRecordSequences %d", *count);
    } else {
        logLine("-- GEN getNumberOfRecordSequences Error");
    }
    return result;
}

std::int32_t CQuorGrabber::getNumberOfAllRecordedFrames(std::int32_t* count)
{
    *count = 0;
    if (mIsConnectionLost || !mDevice.IsConnected()) {
        return kSuccess;
    }
    return runPlainRead(kGetNumberOfAllRecordedFrames, mFeatures, count);
}

std::int32_t CQuorGrabber::getNumberOfRecordedFramesPerSequence(std::int32_t* count)
{
    return runPlainRead(kGetNumberOfRecordedFramesPerSequence, mFeatures, count);
}

std::int32_t CQuorGrabber::getLastRecordDimensions(std::int32_t* width, std::int32_t* height)
{
    auto* const widthFeature = mFeatures.find<PvGenInteger>("RecordLastRecWidth");
    auto* const heightFeature = mFeatures.find<PvGenInteger>("RecordLastRecHeight");
    const bool isKnown = widthFeature != nullptr && heightFeature != nullptr;
    *width = isKnown ? valueOrZero(*widthFeature) : 0;
    *height = isKnown ? valueOrZero(*heightFeature) : 0;
    logLine("LastRecordDimensions Width %d Height %d", *width, *height);
    return kSuccess;
}

std::int32_t CQuorGrabber::setRecordAtPowerOnState(bool enable)
{
    auto* const feature = mFeatures.find<PvGenBoolean>(kRecordStartAtPowerOn);
    if (feature == nullptr) {
        logLine("-- GEN setRecordAtPowerOnState = null");
        return kFailure;
    }
    if (!feature->SetValue(enable).IsOK()) {
        logLine("-- GEN setRecordAtPowerOnState Error");
        return kFailure;
    }
    logLine("-- GEN setRecordAtPowerOnState %s", trueOrFalse(enable));
    return kSuccess;
}

std::int32_t CQuorGrabber::getRecordAtPowerOnState(std::uint8_t* enabled)
{
    auto* const feature = mFeatures.find<PvGenBoolean>(kRecordStartAtPowerOn);
    if (feature == nullptr) {
        *enabled = 0;
        logLine("-- GEN getRecordAtPowerOnState = null");
        return kFailure;
    }
    bool isEnabled = false;
    if (!feature->GetValue(isEnabled).IsOK()) {
        return kFailure;
    }
    *enabled = isEnabled ? 1 : 0;
    logLine("-- GEN getRecordAtPowerOnState %s", trueOrFalse(isEnabled));
    return kSuccess;
}

std::int32_t CQuorGrabber::isRecordAtPowerOnAvailable(std::uint8_t* available)
{
    *available = 0;
    auto* const feature = mFeatures.find<PvGenBoolean>(kRecordStartAtPowerOn);
    if (feature == nullptr) {
        logLine("-- GEN isRecordAtPowerOnAvailable = null");
        return kFailure;
    }
    const bool isAvailable = feature->IsAvailable();
    *available = isAvailable ? 1 : 0;
    logLine("-- GEN isRecordAtPowerOnAvailable %s", trueOrFalse(isAvailable));
    return kSuccess;
}

std::int32_t CQuorGrabber::setIRIGBState(bool enable)
{
    return runPlainWrite(kIRIGBState, mFeatures, enable);
}

std::int32_t CQuorGrabber::getIRIGBState(std::uint8_t* enabled)
{
    return runPlainRead(kIRIGBState, mFeatures, enabled);
}

std::int32_t CQuorGrabber::isIRIGBAvailable(std::uint8_t* available)
{
    *available = 0;
    auto* const feature = mFeatures.find<PvGenBoolean>("IRIGBAvailable");
    bool isAvailable = false;
    if (feature == nullptr || !feature->GetValue(isAvailable).IsOK()) {
        logLine("-- GEN isIRIGBAvailable null");
        return kFailure;
    }
    *available = isAvailable ? 1 : 0;
    logLine("-- GEN isIRIGBAvailable %s", trueOrFalse(isAvailable));
    return kSuccess;
}
