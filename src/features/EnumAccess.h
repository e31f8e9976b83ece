/**
 * Features with named entries, which cross the exported interface as small integers. Entry names
 * are compared exactly.
 */
#ifndef TELVO_SRC_FEATURES_ENUMACCESS_H
#define TELVO_SRC_FEATURES_ENUMACCESS_H

#include "CameraFeatures.h"
#include "LogText.h"

#include <cstdint>
#include <span>

/// Two entries, for 0 and for anything else.
struct TwoStateEnum {
    Feature<PvGenEnum> feature;
    const char* zero;
    const char* one;
    LogText<std::int32_t> readZero;
    LogText<std::int32_t> readOne;
    LogText<> readFailed;
    LogText<const char*> written;
    LogText<> writeFailed;
};

std::int32_t runTwoStateWrite(const TwoStateEnum& row, const CameraFeatures& features,
                              std::int32_t value);
/// The value becomes 0 when the camera reports a failure or another entry; both are failures.
std::int32_t runTwoStateRead(const TwoStateEnum& row, const CameraFeatures& features,
                             std::int32_t* value);

struct EnumEntry {
    std::int32_t value;
    const char* name;
};

/// Any number of entries, without log lines.
struct MappedEnum {
    Feature<PvGenEnum> feature;
    std::span<const EnumEntry> entries;
};

/// A value without an entry is sent as an empty name, which the camera refuses.
std::int32_t runMappedWrite(const MappedEnum& row, const CameraFeatures& features,
                            std::int32_t value);
/// An entry without a value leaves the out parameter alone and is a success.
std::int32_t readMapped(std::span<const EnumEntry> entries, PvGenEnum* feature,
                        std::int32_t* value);
std::int32_t runMappedRead(const MappedEnum& row, const CameraFeatures& features,
                           std::int32_t* value);

#endif
