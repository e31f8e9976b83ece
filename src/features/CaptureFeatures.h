/// How single images and recordings are taken: decimation, standby, multiple slopes, bursts.
#ifndef TELVO_SRC_FEATURES_CAPTUREFEATURES_H
#define TELVO_SRC_FEATURES_CAPTUREFEATURES_H

#include "AccessVariants.h"
#include "EnumAccess.h"

inline constexpr BooleanAccess kIsDecimationModeEnabled{
    &FeatureHandles::decimationXY, "-- GEN isDecimationModeEnabled %d",
    "-- GEN isDecimationModeEnabled Error", Offer::Asked};
inline constexpr BooleanAccess kEnableDecimationMode{
    &FeatureHandles::decimationXY, "-- GEN enableDecimationMode %d",
    "-- GEN enableDecimationMode Error", Offer::Asked};
inline constexpr BooleanAccess kIsRecordStandbyEnabled{&FeatureHandles::recordStandby,
                                                       "-- GEN isRecordStandbyEnabled %d",
                                                       "-- GEN isRecordStandbyEnabled Error"};
inline constexpr BooleanAccess kEnableRecordStandby{&FeatureHandles::recordStandby,
                                                    "-- GEN enableRecordStandby %d",
                                                    "-- GEN enableRecordStandby Error"};

inline constexpr EnumEntry kMultipleSlopeModes[] = {
    {0, "NormalShutter"}, {1, "DualSlope"}, {2, "TripleSlope"}};
inline constexpr MappedEnum kMultipleSlopeMode{&FeatureHandles::multipleSlopeMode,
                                               kMultipleSlopeModes};
inline constexpr IntegerAccess kSetMultipleSlopeDual{&FeatureHandles::multipleSlopeDualRaw};
inline constexpr RangeAccess kGetMultipleSlopeDual{.feature = &FeatureHandles::multipleSlopeDualRaw,
                                                   .reads = RangeReads::UntilFailure};
inline constexpr IntegerAccess kSetMultipleSlopeTriple{&FeatureHandles::multipleSlopeTripleRaw};
inline constexpr RangeAccess kGetMultipleSlopeTriple{
    .feature = &FeatureHandles::multipleSlopeTripleRaw, .reads = RangeReads::UntilFailure};

inline constexpr IntegerAccess kSetRecordBurstCnt{&FeatureHandles::recordBurstCnt};
inline constexpr BooleanAccess kRecordWhileTrigger{"RecordWhileTriggerActive"};

/// What could be read of a range, up to the first read that failed.
struct RangeParts {
    std::optional<std::int64_t> minimum;
    std::optional<std::int64_t> maximum;
    std::optional<std::int64_t> value;
};

/// Hosts see the limits even when the value cannot be read.
RangeParts getRecordBurstCnt(CameraSettings& camera);

#endif
