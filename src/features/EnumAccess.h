/**
 * Features with named entries, which cross the exported interface as small integers. Entry names
 * are compared exactly.
 */
#ifndef TELVO_SRC_FEATURES_ENUMACCESS_H
#define TELVO_SRC_FEATURES_ENUMACCESS_H

#include "CameraSettings.h"
#include "LogText.h"
#include "Outcome.h"

#include "PvGenParameterArray.h"

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

Outcome write(CameraSettings& camera, const TwoStateEnum& row, std::int32_t value);
/// The value becomes 0 when the camera reports a failure or another entry; both are failures.
Reading<std::int32_t> read(CameraSettings& camera, const TwoStateEnum& row);

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
Outcome write(CameraSettings& camera, const MappedEnum& row, std::int32_t value);
/// An entry without a value leaves the host's alone and is a success.
Reading<std::int32_t> read(CameraSettings& camera, const MappedEnum& row);
/// As above, for a feature that was looked up before. @param feature  null: the camera has none
Reading<std::int32_t> readEntry(PvGenEnum* feature, std::span<const EnumEntry> entries);

#endif
