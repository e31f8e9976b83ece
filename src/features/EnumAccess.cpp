#include "EnumAccess.h"

#include "Results.h"

#include <algorithm>
#include <string_view>

std::int32_t runTwoStateWrite(const TwoStateEnum& row, const CameraFeatures& features,
                              std::int32_t value)
{
    PvGenEnum* const feature = features.get(row.feature);
    const char* const entry = value != 0 ? row.one : row.zero;
    if (feature == nullptr || !feature->SetValue(entry).IsOK()) {
        row.writeFailed.log();
        return kFailure;
    }
    row.written.log(entry);
    return kSuccess;
}

std::int32_t runTwoStateRead(const TwoStateEnum& row, const CameraFeatures& features,
                             std::int32_t* value)
{
    PvGenEnum* const feature = features.get(row.feature);
    if (feature == nullptr) {
        row.readFailed.log();
        return kFailure;
    }
    *value = 0;
    PvString entry;
    if (!feature->GetValue(entry).IsOK()) {
        row.readFailed.log();
        return kFailure;
    }
    if (entry == PvString(row.zero)) {
        row.readZero.log(*value);
        return kSuccess;
    }
    if (entry == PvString(row.one)) {
        *value = 1;
        row.readOne.log(*value);
        return kSuccess;
    }
    row.readFailed.log();
    return kFailure;
}

std::int32_t runMappedWrite(const MappedEnum& row, const CameraFeatures& features,
                            std::int32_t value)
{
    PvGenEnum* const feature = features.get(row.feature);
    const auto entry = std::ranges::find(row.entries, value, &EnumEntry::value);
    const char* const name = entry == row.entries.end() ? "" : entry->name;
    return feature != nullptr && feature->SetValue(name).IsOK() ? kSuccess : kFailure;
}

std::int32_t readMapped(std::span<const EnumEntry> entries, PvGenEnum* feature, std::int32_t* value)
{
    PvString name;
    if (feature == nullptr || !feature->GetValue(name).IsOK()) {
        return kFailure;
    }
    const auto entry =
        std::ranges::find(entries, std::string_view(name.GetAscii()), &EnumEntry::name);
    if (entry != entries.end()) {
        *value = entry->value;
    }
    return kSuccess;
}

std::int32_t runMappedRead(const MappedEnum& row, const CameraFeatures& features,
                           std::int32_t* value)
{
    return readMapped(row.entries, features.get(row.feature), value);
}
