#include "AccessVariants.h"

namespace
{

std::int32_t narrowed(std::int64_t wide)
{
    return static_cast<std::int32_t>(wide);
}

/// @return null for a feature that is missing, or not offered where the row asks
template <typename T>
T* reachable(const CameraSettings& camera, const PlainAccess<T>& row)
{
    T* const feature = camera.link.features.get(row.feature);
    const bool isWithheld =
        feature != nullptr && row.offer == Offer::Asked && !feature->IsAvailable();
    return isWithheld ? nullptr : feature;
}

template <typename T, typename Value>
Outcome writePlain(const CameraSettings& camera, const PlainAccess<T>& row, Value value)
{
    T* const feature = reachable(camera, row);
    if (feature == nullptr || !feature->SetValue(value).IsOK()) {
        row.failed.log();
        return Outcome::Failed;
    }
    row.done.log(value);
    return Outcome::Done;
}

/// @tparam Wide  what the feature's own read gives
template <typename Value, typename Wide, typename T>
Reading<Value> readPlain(const CameraSettings& camera, const PlainAccess<T>& row)
{
    T* const feature = reachable(camera, row);
    Wide wide{};
    if (feature != nullptr && feature->GetValue(wide).IsOK()) {
        const auto value = static_cast<Value>(wide);
        row.done.log(value);
        return done(value);
    }
    row.failed.log();
    const bool showsZero =
        row.failedRead == FailedRead::ShowsZero ||
        (row.failedRead == FailedRead::ShowsZeroOfKnownFeature && feature != nullptr);
    return {.outcome = Outcome::Failed, .value = showsZero ? std::optional(Value{}) : std::nullopt};
}

} // namespace

Outcome write(CameraSettings& camera, const IntegerAccess& row, std::int32_t value)
{
    return writePlain(camera, row, value);
}

Outcome write(CameraSettings& camera, const BooleanAccess& row, bool value)
{
    return writePlain(camera, row, value);
}

Reading<std::int32_t> read(CameraSettings& camera, const IntegerAccess& row)
{
    return readPlain<std::int32_t, std::int64_t>(camera, row);
}

Reading<bool> read(CameraSettings& camera, const BooleanAccess& row)
{
    return readPlain<bool, bool>(camera, row);
}

Outcome executeOffered(CameraSettings& camera, const Feature<PvGenCommand>& command)
{
    PvGenCommand* const feature = camera.link.features.get(command);
    if (feature == nullptr || !feature->IsAvailable()) {
        return Outcome::Failed;
    }
    (void)feature->Execute();
    return Outcome::Done;
}

std::optional<Range> readRange(PvGenInteger& feature, RangeReads reads)
{
    Range range;
    bool isRead = true;
    const auto take = [&](auto get) {
        if (isRead || reads == RangeReads::All) {
            isRead = get().IsOK() && isRead;
        }
    };
    take([&] { return feature.GetMin(range.minimum); });
    take([&] { return feature.GetMax(range.maximum); });
    take([&] { return feature.GetValue(range.value); });
    return isRead ? std::optional(range) : std::nullopt;
}

Reading<Range> read(CameraSettings& camera, const RangeAccess& row)
{
    PvGenInteger* const feature = camera.link.features.get(row.feature);
    const std::optional<Range> range =
        feature == nullptr ? std::nullopt : readRange(*feature, row.reads);
    if (!range) {
        row.failed.log();
        return {};
    }
    row.done.log(narrowed(range->minimum), narrowed(range->maximum), narrowed(range->value));
    return done(*range);
}
