#include "AccessVariants.h"

namespace
{

template <typename T>
T* available(const Feature<T>& row, const CameraFeatures& features)
{
    T* const feature = features.get(row);
    return feature != nullptr && feature->IsAvailable() ? feature : nullptr;
}

template <typename T, typename Value>
std::int32_t write(const PlainAccess<T>& row, T* feature, Value value)
{
    if (feature == nullptr || !feature->SetValue(value).IsOK()) {
        row.failed.log();
        return kFailure;
    }
    row.done.log(value);
    return kSuccess;
}

std::int32_t read(const PlainAccess<PvGenInteger>& row, PvGenInteger* feature, std::int32_t* value)
{
    std::int64_t wide = 0;
    if (feature == nullptr || !feature->GetValue(wide).IsOK()) {
        row.failed.log();
        return kFailure;
    }
    *value = static_cast<std::int32_t>(wide);
    row.done.log(*value);
    return kSuccess;
}

std::int32_t read(const PlainAccess<PvGenBoolean>& row, PvGenBoolean* feature, std::uint8_t* value)
{
    bool isSet = false;
    if (feature == nullptr || !feature->GetValue(isSet).IsOK()) {
        row.failed.log();
        return kFailure;
    }
    *value = isSet ? 1 : 0;
    row.done.log(*value);
    return kSuccess;
}

std::int32_t finishRange(const RangeAccess& row, bool isRead, const Range& range,
                         std::int32_t* minimum, std::int32_t* maximum, std::int32_t* value)
{
    if (!isRead) {
        row.failed.log();
        return kFailure;
    }
    *minimum = static_cast<std::int32_t>(range.minimum);
    *maximum = static_cast<std::int32_t>(range.maximum);
    *value = static_cast<std::int32_t>(range.value);
    row.done.log(*minimum, *maximum, *value);
    return kSuccess;
}

} // namespace

std::int32_t runPlainWrite(const PlainAccess<PvGenInteger>& row, const CameraFeatures& features,
                           std::int32_t value)
{
    return write(row, features.get(row.feature), value);
}

std::int32_t runPlainWrite(const PlainAccess<PvGenBoolean>& row, const CameraFeatures& features,
                           bool value)
{
    return write(row, features.get(row.feature), value);
}

std::int32_t runPlainRead(const PlainAccess<PvGenInteger>& row, const CameraFeatures& features,
                          std::int32_t* value)
{
    return read(row, features.get(row.feature), value);
}

std::int32_t runPlainRead(const PlainAccess<PvGenBoolean>& row, const CameraFeatures& features,
                          std::uint8_t* value)
{
    return read(row, features.get(row.feature), value);
}

std::int32_t runAvailableWrite(const PlainAccess<PvGenBoolean>& row, const CameraFeatures& features,
                               bool value)
{
    return write(row, available(row.feature, features), value);
}

std::int32_t runAvailableRead(const PlainAccess<PvGenBoolean>& row, const CameraFeatures& features,
                              std::uint8_t* value)
{
    return read(row, available(row.feature, features), value);
}

std::int32_t runAvailableCommand(const Feature<PvGenCommand>& command,
                                 const CameraFeatures& features)
{
    PvGenCommand* const feature = available(command, features);
    if (feature == nullptr) {
        return kFailure;
    }
    (void)feature->Execute();
    return kSuccess;
}

bool readRange(PvGenInteger& feature, Range& range)
{
    const bool isMinimumRead = feature.GetMin(range.minimum).IsOK();
    const bool isMaximumRead = feature.GetMax(range.maximum).IsOK();
    const bool isValueRead = feature.GetValue(range.value).IsOK();
    return isMinimumRead && isMaximumRead && isValueRead;
}

std::int32_t runRangeRead(const RangeAccess& row, const CameraFeatures& features,
                          std::int32_t* minimum, std::int32_t* maximum, std::int32_t* value)
{
    PvGenInteger* const feature = features.get(row.feature);
    Range range;
    const bool isRead = feature != nullptr && readRange(*feature, range);
    return finishRange(row, isRead, range, minimum, maximum, value);
}

std::int32_t runShortRangeRead(const RangeAccess& row, const CameraFeatures& features,
                               std::int32_t* minimum, std::int32_t* maximum, std::int32_t* value)
{
    PvGenInteger* const feature = features.get(row.feature);
    Range range;
    const bool isRead = feature != nullptr && feature->GetMin(range.minimum).IsOK() &&
                        feature->GetMax(range.maximum).IsOK() &&
                        feature->GetValue(range.value).IsOK();
    return finishRange(row, isRead, range, minimum, maximum, value);
}
