/**
 * The ways in which accessors reach a feature, each written once. A row names a feature and the log
 * texts of its accessor; a default-constructed text is no line. All return kSuccess or kFailure
 * unless said otherwise; a missing feature is a failure like an error of the camera's.
 */
#ifndef TELVO_SRC_FEATURES_ACCESSVARIANTS_H
#define TELVO_SRC_FEATURES_ACCESSVARIANTS_H

#include "CameraFeatures.h"
#include "LogText.h"
#include "Results.h"

#include <cstdint>

/// One value, written or read.
template <typename T>
struct PlainAccess {
    Feature<T> feature;
    LogText<std::int32_t> done;
    LogText<> failed;
};

std::int32_t runPlainWrite(const PlainAccess<PvGenInteger>& row, const CameraFeatures& features,
                           std::int32_t value);
std::int32_t runPlainWrite(const PlainAccess<PvGenBoolean>& row, const CameraFeatures& features,
                           bool value);

/// The out parameter keeps its value on failure.
std::int32_t runPlainRead(const PlainAccess<PvGenInteger>& row, const CameraFeatures& features,
                          std::int32_t* value);
std::int32_t runPlainRead(const PlainAccess<PvGenBoolean>& row, const CameraFeatures& features,
                          std::uint8_t* value);

/// As the plain access, but the camera is asked first whether it offers the feature now.
std::int32_t runAvailableWrite(const PlainAccess<PvGenBoolean>& row, const CameraFeatures& features,
                               bool value);
std::int32_t runAvailableRead(const PlainAccess<PvGenBoolean>& row, const CameraFeatures& features,
                              std::uint8_t* value);

/// A command that is executed if the camera offers it now; its own result is dropped.
std::int32_t runAvailableCommand(const Feature<PvGenCommand>& command,
                                 const CameraFeatures& features);

/// Minimum, maximum and value of one feature.
struct RangeAccess {
    Feature<PvGenInteger> feature;
    LogText<std::int32_t, std::int32_t, std::int32_t> done;
    LogText<> failed;
};

struct Range {
    std::int64_t minimum = 0;
    std::int64_t maximum = 0;
    std::int64_t value = 0;
};

/// Makes all three reads whatever the first ones give.
/// @return whether all succeeded
[[nodiscard]] bool readRange(PvGenInteger& feature, Range& range);

/// The out parameters are written together, only if all three reads succeed.
std::int32_t runRangeRead(const RangeAccess& row, const CameraFeatures& features,
                          std::int32_t* minimum, std::int32_t* maximum, std::int32_t* value);

/// As the range read, but the first failed read is the last.
std::int32_t runShortRangeRead(const RangeAccess& row, const CameraFeatures& features,
                               std::int32_t* minimum, std::int32_t* maximum, std::int32_t* value);

#endif
