#include "FeatureTable.h"

#include "BootstrapRegisters.h"
#include "CameraCore.h"
#include "PixelFormat.h"

#include <algorithm>
#include <array>
#include <functional>
#include <tuple>
#include <utility>

namespace camera
{
namespace
{

using namespace gige::wire;
using Id = FeatureId;

constexpr std::array kPixelFormats{EnumEntry{"Mono8", kPixelMono8},
                                   EnumEntry{"BayerRG8", kPixelBayerRG8}};
constexpr std::array kAcquisitionModes{EnumEntry{"Continuous", kModeContinuous},
                                       EnumEntry{"SingleFrame", kModeSingleFrame}};
constexpr std::array kSources{EnumEntry{"Live", kSourceLive}, EnumEntry{"Memory", kSourceMemory}};
constexpr std::array kStates{EnumEntry{"Idle", kStateIdle}, EnumEntry{"Live", kStateLive},
                             EnumEntry{"Recording", kStateRecording},
                             EnumEntry{"FlashWrite", kStateFlashWrite}};
constexpr std::array kSlopeModes{EnumEntry{"NormalShutter", 0}, EnumEntry{"DualSlope", 1},
                                 EnumEntry{"TripleSlope", 2}};
// "raising" is this camera family's own spelling.
constexpr std::array kEdges{EnumEntry{"falling", 0}, EnumEntry{"raising", 1}};
constexpr std::array kSyncOutputs{EnumEntry{"ARM", 0}, EnumEntry{"SyncOut", 1}};
constexpr std::array kLevels{EnumEntry{"negative", 0}, EnumEntry{"positive", 1}};
constexpr std::array kRecordModes{EnumEntry{"Single", kRecordSingle},
                                  EnumEntry{"Continuous", kRecordContinuous}};
constexpr std::array kSequenceCounts{EnumEntry{"One", 1}, EnumEntry{"Two", 2}, EnumEntry{"Four", 4},
                                     EnumEntry{"Eight", 8}, EnumEntry{"Sixteen", 16}};
constexpr std::array kUserSets{EnumEntry{"Default", kUserSetDefault},
                               EnumEntry{"UserSet1", kUserSet1}};
constexpr std::array kPrivileges{EnumEntry{"OpenAccess", kPrivilegeOpen},
                                 EnumEntry{"ExclusiveAccess", kPrivilegeExclusive},
                                 EnumEntry{"ControlAccess", kPrivilegeControl}};

constexpr std::int64_t kHighestWord = 0xFFFFFFFF; // greatest value of a 32-bit register

/// The part of the camera that a function is a member of.
template <typename Part, typename Value>
const Part& partOf(const CameraCore& core, Value (Part::* /*function*/)() const)
{
    return std::get<const Part&>(std::tie(core, core.settings, core.recorder, core.serial,
                                          std::as_const(core.serial.line())));
}
template <typename Part, typename Value, typename... Arguments>
Part& partOf(CameraCore& core, Value (Part::* /*function*/)(Arguments...))
{
    return std::get<Part&>(
        std::tie(core, core.playback, core.flashCard, core.serial, core.serial.line()));
}

template <auto Function>
std::int64_t call(const CameraCore& core)
{
    return static_cast<std::int64_t>(std::invoke(Function, partOf(core, Function)));
}

/// Hands the value to a function that takes one. One without a result always succeeds.
template <auto Function>
GvcpStatus act(CameraCore& core, std::uint32_t value)
{
    auto& part = partOf(core, Function);
    const auto run = [&] {
        if constexpr (std::is_invocable_v<decltype(Function), decltype(part)>) {
            return std::invoke(Function, part);
        } else {
            return std::invoke(Function, part, value);
        }
    };
    if constexpr (std::is_void_v<decltype(run())>) {
        run();
        return GvcpStatus::Success;
    } else {
        return run();
    }
}

/// A row under construction: each call sets one thing and returns the row.
struct Row : Feature {
  private:
    // Before its users: clang wants to know it when the rows are made at compile time.
    template <typename Field>
    constexpr Row& set(Field& field, std::type_identity_t<Field> value)
    {
        field = value;
        return *this;
    }

  public:
    constexpr Row(FeatureKind rowKind, std::string_view tip)
    {
        kind = rowKind;
        tooltip = tip;
    }
    constexpr Row& with(const Limits& range, std::int64_t start)
    {
        return set(limits, range).set(initial, start);
    }
    constexpr Row& of(std::span<const EnumEntry> all, std::int64_t start = 0)
    {
        return set(entries, all).set(initial, start);
    }
    constexpr Row& at(std::uint32_t ownAddress, std::uint32_t bytes = 4)
    {
        return set(address, ownAddress).set(length, bytes);
    }
    constexpr Row& in(std::string_view unitName) { return set(unit, unitName); }
    constexpr Row& readOnly() { return set(access, Access::ReadOnly); }
    constexpr Row& writeOnly() { return set(access, Access::WriteOnly); }
    constexpr Row& fixed() { return set(constant, true).readOnly(); }
    constexpr Row& lockable() { return set(locked, true); }
    constexpr Row& inUserSets() { return set(saved, true); }
    constexpr Row& keptAlone() { return set(remembered, true); }
    constexpr Row& low() { return set(lowHalf, true); }
    constexpr Row& as(Representation look) { return set(representation, look); }
    constexpr Row& shownTo(Visibility users) { return set(visibility, users); }
    constexpr Row& onlyWith(bool CameraOptions::*option) { return set(needs, option); }

    // Function is a member function of the core or of one of its parts.

    /// It gives the value, in place of the one that was set.
    template <auto Function>
    constexpr Row& reads()
    {
        return set(read, call<Function>);
    }
    /// It gives the greatest value.
    template <auto Function>
    constexpr Row& upTo()
    {
        return set(maximum, call<Function>);
    }
    /// It takes the value before this is set, and may refuse it.
    template <auto Function>
    constexpr Row& writes()
    {
        return set(write, act<Function>);
    }
};

constexpr Row integer(std::string_view tip)
{
    return Row(FeatureKind::Integer, tip).with({0, kHighestWord}, 0);
}
constexpr Row enumeration(std::string_view tip)
{
    return {FeatureKind::Enumeration, tip};
}
constexpr Row boolean(std::string_view tip)
{
    return Row(FeatureKind::Boolean, tip).with({0, 1}, 0);
}
template <auto Function>
constexpr Row command(std::string_view tip)
{
    return Row(FeatureKind::Command, tip).with({0, 1}, 0).writeOnly().writes<Function>();
}
constexpr Row text(std::string_view tip)
{
    return {FeatureKind::String, tip};
}
constexpr Row bytes(std::string_view tip)
{
    return {FeatureKind::Register, tip};
}

constexpr StreamChannelRegisters kFirstStream{0};
constexpr std::uint32_t kFeatureTextLength = 32;
constexpr std::uint32_t kLongTextLength = 48;
constexpr std::uint32_t kShortTextLength = 16;

using enum Visibility;
using enum Representation;

constexpr std::array<Feature, kFeatureCount> kTable = [] {
    std::array<Feature, kFeatureCount> table{};
    Category category{};
    const auto add = [&](Id id, std::string_view name, const Feature& row) {
        Feature& feature = table[static_cast<std::size_t>(id)];
        feature = row;
        feature.id = id;
        feature.name = name;
        feature.category = category;
    };
#define CATEGORY(name) category = Category::name;
#define FEATURE(name, row) add(Id::name, #name, row);
#include "Features.def"
    return table;
}();

} // namespace

std::span<const Feature, kFeatureCount> featureTable()
{
    return kTable;
}

const Feature& featureOf(FeatureId id)
{
    return kTable[static_cast<std::size_t>(id)];
}

bool canStartWith(const Feature& feature, std::int64_t value)
{
    switch (feature.kind) {
    case FeatureKind::Integer:
        // What the camera only tells may be anything; what is a host's to set lies elsewhere.
        return feature.address == 0 &&
               (feature.access == Access::ReadOnly || feature.limits.hold(value));
    case FeatureKind::Boolean:
        return feature.limits.hold(value);
    case FeatureKind::Enumeration:
        return std::ranges::count(feature.entries, value, &EnumEntry::value) != 0;
    case FeatureKind::Command:
    case FeatureKind::String:
    case FeatureKind::Register:
        break;
    }
    return false;
}

std::optional<FeatureId> findFeature(std::string_view name)
{
    const auto* const row = std::ranges::find(kTable, name, &Feature::name);
    return row == kTable.end() ? std::nullopt : std::optional{row->id};
}

std::string_view categoryName(Category category)
{
    constexpr std::array<std::string_view, static_cast<std::size_t>(Category::Count)> kNames{
#define CATEGORY(name) #name,
#define FEATURE(name, row)
#include "Features.def"
    };
    return kNames[static_cast<std::size_t>(category)];
}

std::uint32_t registerOf(const Feature& feature)
{
    return feature.address != 0 ? feature.address
                                : kFeatureRegisters + 4 * static_cast<std::uint32_t>(feature.id);
}

} // namespace camera
