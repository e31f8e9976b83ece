/**
 * The ways in which accessors reach a feature, each written once. A row names a feature and the log
 * texts of its accessor; a default-constructed text is no line. A missing feature is a failure like
 * an error of the camera's.
 */
#ifndef TELVO_SRC_FEATURES_ACCESSVARIANTS_H
#define TELVO_SRC_FEATURES_ACCESSVARIANTS_H

#include "CameraSettings.h"
#include "LogText.h"
#include "Outcome.h"

#include "PvGenParameterArray.h"

#include <cstdint>

/// Whether the camera is asked first if it offers the feature now; if not, that is a failure.
enum class Offer { Assumed, Asked };

/// What the host sees when a read fails.
enum class FailedRead {
    KeepsValue,
    ShowsZero,
    ShowsZeroOfKnownFeature, ///< and keeps the value where the camera has no such feature
};

/// One value, written or read.
template <typename T>
struct PlainAccess {
    Feature<T> feature;
    LogText<std::int32_t> done{};
    LogText<> failed{};
    Offer offer = Offer::Assumed;
    FailedRead failedRead = FailedRead::KeepsValue;
};
using IntegerAccess = PlainAccess<PvGenInteger>;
using BooleanAccess = PlainAccess<PvGenBoolean>;

Outcome write(CameraSettings& camera, const IntegerAccess& row, std::int32_t value);
Outcome write(CameraSettings& camera, const BooleanAccess& row, bool value);
Reading<std::int32_t> read(CameraSettings& camera, const IntegerAccess& row);
Reading<bool> read(CameraSettings& camera, const BooleanAccess& row);

/// A command that is executed if the camera offers it now; its own result is dropped.
Outcome executeOffered(CameraSettings& camera, const Feature<PvGenCommand>& command);

/// Limits and value of one feature.
struct Range {
    std::int64_t minimum = 0;
    std::int64_t maximum = 0;
    std::int64_t value = 0;
};

/// Which of the three reads of a range are made.
enum class RangeReads { All, UntilFailure };

/// Minimum, maximum and value, which reach the host together or not at all.
struct RangeAccess {
    Feature<PvGenInteger> feature;
    LogText<std::int32_t, std::int32_t, std::int32_t> done{};
    LogText<> failed{};
    RangeReads reads = RangeReads::All;
};

/// @return nothing unless all three reads succeed
std::optional<Range> readRange(PvGenInteger& feature, RangeReads reads);
Reading<Range> read(CameraSettings& camera, const RangeAccess& row);

#endif
