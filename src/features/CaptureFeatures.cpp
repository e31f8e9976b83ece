// How single images and recordings are taken: decimation, standby, multiple slopes, bursts.

#include "AccessVariants.h"
#include "CQuorGrabber.h"
#include "EnumAccess.h"

namespace
{

constexpr PlainAccess<PvGenBoolean> kIsDecimationModeEnabled{
    &FeatureHandles::decimationXY, "-- GEN isDecimationModeEnabled %d",
    "-- GEN isDecimationModeEnabled Error"};
constexpr PlainAccess<PvGenBoolean> kEnableDecimationMode{&FeatureHandles::decimationXY,
                                                          "-- GEN enableDecimationMode %d",
                                                          "-- GEN enableDecimationMode Error"};
constexpr PlainAccess<PvGenBoolean> kIsRecordStandbyEnabled{&FeatureHandles::recordStandby,
                                                            "-- GEN isRecordStandbyEnabled %d",
                                                            "-- GEN isRecordStandbyEnabled Error"};
constexpr PlainAccess<PvGenBoolean> kEnableRecordStandby{&FeatureHandles::recordStandby,
                                                         "-- GEN enableRecordStandby %d",
                                                         "-- GEN enableRecordStandby Error"};

constexpr EnumEntry kMultipleSlopeModes[] = {
    {0, "NormalShutter"}, {1, "DualSlope"}, {2, "TripleSlope"}};
constexpr MappedEnum kMultipleSlopeMode{&FeatureHandles::multipleSlopeMode, kMultipleSlopeModes};

constexpr PlainAccess<PvGenInteger> kSetMultipleSlopeDual{
    &FeatureHandles::multipleSlopeDualRaw, {}, {}};
constexpr RangeAccess kGetMultipleSlopeDual{&FeatureHandles::multipleSlopeDualRaw, {}, {}};
constexpr PlainAccess<PvGenInteger> kSetMultipleSlopeTriple{
    &FeatureHandles::multipleSlopeTripleRaw, {}, {}};
constexpr RangeAccess kGetMultipleSlopeTriple{&FeatureHandles::multipleSlopeTripleRaw, {}, {}};
constexpr PlainAccess<PvGenInteger> kSetRecordBurstCnt{&FeatureHandles::recordBurstCnt, {}, {}};
constexpr PlainAccess<PvGenBoolean> kRecordWhileTrigger{"RecordWhileTriggerActive", {}, {}};

} // namespace

std::int32_t CQuorGrabber::enableDecimationMode(bool enable)
{
    return runAvailableWrite(kEnableDecimationMode, mFeatures, enable);
}

std::int32_t CQuorGrabber::isDecimationModeEnabled(std::uint8_t* enabled)
{
    return runAvailableRead(kIsDecimationModeEnabled, mFeatures, enabled);
}

std::int32_t CQuorGrabber::enableRecordStandby(bool enable)
{
    return runPlainWrite(kEnableRecordStandby, mFeatures, enable);
}

std::int32_t CQuorGrabber::isRecordStandbyEnabled(std::uint8_t* enabled)
{
    return runPlainRead(kIsRecordStandbyEnabled, mFeatures, enabled);
}

std::int32_t CQuorGrabber::setMultipleSlopeMode(std::int32_t mode)
{
    return runMappedWrite(kMultipleSlopeMode, mFeatures, mode);
}

std::int32_t CQuorGrabber::getMultipleSlopeMode(std::int32_t* mode)
{
    return runMappedRead(kMultipleSlopeMode, mFeatures, mode);
}

std::int32_t CQuorGrabber::setMultipleSlopeDual(std::int32_t value)
{
    return runPlainWrite(kSetMultipleSlopeDual, mFeatures, value);
}

std::int32_t CQuorGrabber::getMultipleSlopeDual(std::int32_t* minimum, std::int32_t* maximum,
                                                std::int32_t* value)
{
    return runShortRangeRead(kGetMultipleSlopeDual, mFeatures, minimum, maximum, value);
}

std::int32_t CQuorGrabber::setMultipleSlopeTriple(std::int32_t value)
{
    return runPlainWrite(kSetMultipleSlopeTriple, mFeatures, value);
}

std::int32_t CQuorGrabber::getMultipleSlopeTriple(std::int32_t* minimum, std::int32_t* maximum,
                                                  std::int32_t* value)
{
    return runShortRangeRead(kGetMultipleSlopeTriple, mFeatures, minimum, maximum, value);
}

std::int32_t CQuorGrabber::setRecordBurstCnt(std::int32_t value)
{
    return runPlainWrite(kSetRecordBurstCnt, mFeatures, value);
}

std::int32_t CQuorGrabber::getRecordBurstCnt(std::int32_t* minimum, std::int32_t* maximum,
                                             std::int32_t* value)
{
    auto* const feature = mFeatures.find<PvGenInteger>("RecordBurstCnt");
    if (feature == nullptr) {
        return kFailure;
    }
    // Written as they come: hosts see the limits even when the value cannot be read.
    std::int64_t number = 0;
    if (!feature->GetMin(number).IsOK()) {
        return kFailure;
    }
    *minimum = static_cast<std::int32_t>(number);
    if (!feature->GetMax(number).IsOK()) {
        return kFailure;
    }
    *maximum = static_cast<std::int32_t>(number);
    if (!feature->GetValue(number).IsOK()) {
        return kFailure;
    }
    *value = static_cast<std::int32_t>(number);
    return kSuccess;
}

std::int32_t CQuorGrabber::setRecordWhileTrigger(bool enable)
{
    return runPlainWrite(kRecordWhileTrigger, mFeatures, enable);
}

std::int32_t CQuorGrabber::getRecordWhileTrigger(std::uint8_t* enabled)
{
    return runPlainRead(kRecordWhileTrigger, mFeatures, enabled);
}
