#include "FeatureTable.h"

#include "BootstrapRegisters.h"
#include "PixelFormat.h"

#include <algorithm>
#include <array>

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

constexpr std::int64_t kWord = 0xFFFFFFFF; // greatest value of a 32-bit register

/** A row under construction: each call sets one thing and returns the row. */
struct Row : Feature {
    constexpr Row(FeatureKind rowKind, std::string_view tip)
    {
        kind = rowKind;
        tooltip = tip;
    }
    constexpr Row& with(Limits rowLimits, std::int64_t start)
    {
        limits = rowLimits;
        initial = start;
        return *this;
    }
    constexpr Row& of(std::span<const EnumEntry> rowEntries, std::int64_t start = 0)
    {
        entries = rowEntries;
        initial = start;
        return *this;
    }
    constexpr Row& at(std::uint32_t rowAddress, std::uint32_t rowLength = 4)
    {
        address = rowAddress;
        length = rowLength;
        return *this;
    }
    constexpr Row& in(std::string_view rowUnit)
    {
        unit = rowUnit;
        return *this;
    }
    constexpr Row& readOnly()
    {
        access = Access::ReadOnly;
        return *this;
    }
    constexpr Row& writeOnly()
    {
        access = Access::WriteOnly;
        return *this;
    }
    constexpr Row& fixed()
    {
        constant = true;
        return readOnly();
    }
    constexpr Row& moving()
    {
        movingLimits = true;
        return *this;
    }
    constexpr Row& lockable()
    {
        locked = true;
        return *this;
    }
    constexpr Row& kept()
    {
        saved = true;
        return *this;
    }
    constexpr Row& low()
    {
        lowHalf = true;
        return *this;
    }
    constexpr Row& as(Representation rowRepresentation)
    {
        representation = rowRepresentation;
        return *this;
    }
    constexpr Row& shownTo(Visibility rowVisibility)
    {
        visibility = rowVisibility;
        return *this;
    }
    constexpr Row& onlyWith(Option option)
    {
        needs = option;
        return *this;
    }
};

constexpr Row integer(std::string_view tip)
{
    return Row(FeatureKind::Integer, tip).with({0, kWord}, 0);
}
constexpr Row enumeration(std::string_view tip)
{
    return {FeatureKind::Enumeration, tip};
}
constexpr Row boolean(std::string_view tip)
{
    return Row(FeatureKind::Boolean, tip).with({0, 1}, 0);
}
constexpr Row command(std::string_view tip)
{
    return Row(FeatureKind::Command, tip).with({0, 1}, 0).writeOnly();
}
constexpr Row text(std::string_view tip)
{
    return {FeatureKind::String, tip};
}
constexpr Row bytes(std::string_view tip)
{
    return {FeatureKind::Register, tip};
}

constexpr StreamChannelRegisters kStream{0};
constexpr std::uint32_t kTextLength = 32;
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
