#include "EnumAccess.h"

#include <algorithm>
#include <string_view>

Outcome write(CameraSettings& camera, const TwoStateEnum& row, std::int32_t value)
{
    PvGenEnum* const feature = camera.link.features.get(row.feature);
    const char* const entry = value != 0 ? row.one : row.zero;
    if (feature == nullptr || !feature->SetValue(entry).IsOK()) {
        row.writeFailed.log();
        return Outcome::Failed;
    }
    row.written.log(entry);
    return Outcome::Done;
}

Reading<std::int32_t> read(CameraSettings& camera, const TwoStateEnum& row)
{
    PvGenEnum* const feature = camera.link.features.get(row.feature);
    if (feature == nullptr) {
        row.readFailed.log();
        return {};
    }
    PvString entry;
    const bool isRead = feature->GetValue(entry).IsOK();
    if (isRead && entry == PvString(row.zero)) {
        row.readZero.log(0);
        return done(0);
    }
    if (isRead && entry == PvString(row.one)) {
        row.readOne.log(1);
        return done(1);
    }
    row.readFailed.log();
    return {.outcome = Outcome::Failed, .value = 0};
}

Outcome write(CameraSettings& camera, const MappedEnum& row, std::int32_t value)
{
    PvGenEnum* const feature = camera.link.features.get(row.feature);
    const auto entry = std::ranges::find(row.entries, value, &EnumEntry::value);
    const char* const name = entry == row.entries.end() ? "" : entry->name;
    return doneIf(feature != nullptr && feature->SetValue(name).IsOK());
}

Reading<std::int32_t> read(CameraSettings& camera, const MappedEnum& row)
{
    return readEntry(camera.link.features.get(row.feature), row.entries);
}

Reading<std::int32_t> readEntry(PvGenEnum* feature, std::span<const EnumEntry> entries)
{
    PvString name;
    if (feature == nullptr || !feature->GetValue(name).IsOK()) {
        return {};
    }
    const auto entry =
        std::ranges::find(entries, std::string_view(name.GetAscii()), &EnumEntry::name);
    return {.outcome = Outcome::Done,
            .value = entry == entries.end() ? std::nullopt : std::optional(entry->value)};
}
