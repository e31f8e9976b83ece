#ifndef TELVO_CAMERA_FEATURETABLE_H
#define TELVO_CAMERA_FEATURETABLE_H

#include "GvcpStatus.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace camera
{

class CameraCore;
struct CameraOptions;

/// Every feature, in the order of the table.
enum class FeatureId : std::uint16_t {
#define CATEGORY(name)
#define FEATURE(name, row) name,
#include "Features.def"
    Count,
};

inline constexpr std::size_t kFeatureCount = static_cast<std::size_t>(FeatureId::Count);

enum class FeatureKind : std::uint8_t { Integer, Enumeration, Boolean, Command, String, Register };
enum class Access : std::uint8_t { ReadOnly, ReadWrite, WriteOnly };
enum class Visibility : std::uint8_t { Beginner, Expert, Guru, Invisible };
enum class Representation : std::uint8_t { Linear, PureNumber, HexNumber, Ip4Address };

enum class Category : std::uint8_t {
#define CATEGORY(name) name,
#define FEATURE(name, row)
#include "Features.def"
    Count,
};

struct EnumEntry {
    std::string_view name;
    std::int64_t value;
};

/// Inclusive. A value is valid when (value - minimum) is a multiple of the increment.
struct Limits {
    std::int64_t minimum = 0;
    std::int64_t maximum = 0;
    std::int64_t increment = 1;

    [[nodiscard]] constexpr bool hold(std::int64_t value) const
    {
        return value >= minimum && value <= maximum && (value - minimum) % increment == 0;
    }
    bool operator==(const Limits&) const = default;
};

using ReadFunction = std::int64_t (*)(const CameraCore&);
using WriteFunction = gige::wire::GvcpStatus (*)(CameraCore&, std::uint32_t value);

/// One row of the camera's table: what the description tells a host of the feature, where its
/// register lies, and what the camera does with it.
struct Feature {
    FeatureId id{};
    std::string_view name{};
    FeatureKind kind = FeatureKind::Integer;
    Access access = Access::ReadWrite;
    Category category = Category::DeviceControl;
    Visibility visibility = Visibility::Beginner;
    Representation representation = Representation::Linear;
    Limits limits{};
    std::int64_t initial = 0;
    std::span<const EnumEntry> entries{};
    std::string_view unit{};
    std::string_view tooltip{};
    std::uint32_t address = 0; ///< 0: one of the camera's own registers, see registerOf()
    std::uint32_t length = 4;  ///< bytes
    bool lowHalf = false;      ///< only the low 16 bits of the register
    bool constant = false;     ///< never changes while the camera runs
    bool locked = false;       ///< not writable while images are being taken
    bool saved = false;        ///< part of a user set
    bool remembered = false;   ///< kept by itself when the camera is switched off
    bool CameraOptions::*needs = nullptr; ///< a camera without this does not have the feature
    ReadFunction read = nullptr;          ///< none: the value that was set
    ReadFunction maximum = nullptr;       ///< none: the limits are fixed
    /// Comes before the value is set, and may refuse it. A command has no value, only this.
    WriteFunction write = nullptr;
};

// Address space of the camera's own registers.
inline constexpr std::uint32_t kFeatureRegisters = 0x00010000;      ///< 4 bytes each
inline constexpr std::uint32_t kMaximumRegisters = 0x00020000;      ///< 4 bytes each
inline constexpr std::uint32_t kAvailabilityRegisters = 0x00030000; ///< 4 bytes each, 0 or 1
inline constexpr std::uint32_t kImagingRegister = 0x0003F000;       ///< 1: images are being taken
inline constexpr std::uint32_t kTransmitBuffer = 0x00040000;
inline constexpr std::uint32_t kReceiveBuffer = 0x00041000;
inline constexpr std::uint32_t kDestinationText = 0x00050000; ///< stream destination as text
inline constexpr std::uint32_t kDescriptionFile = 0x00100000;

inline constexpr std::uint32_t kSerialBufferLength = 256;   ///< bytes, both directions
inline constexpr std::uint32_t kDestinationTextLength = 16; ///< bytes

/// The whole table; feature i stands at index i.
[[nodiscard]] std::span<const Feature, kFeatureCount> featureTable();

[[nodiscard]] const Feature& featureOf(FeatureId id);

/// Whether some camera may have this value from power-on; what it depends on is not looked at.
[[nodiscard]] bool canStartWith(const Feature& feature, std::int64_t value);

[[nodiscard]] std::optional<FeatureId> findFeature(std::string_view name);

[[nodiscard]] std::string_view categoryName(Category category);

/// Address of a feature's value.
[[nodiscard]] std::uint32_t registerOf(const Feature& feature);

[[nodiscard]] constexpr std::uint32_t maximumRegisterOf(FeatureId id)
{
    return kMaximumRegisters + 4 * static_cast<std::uint32_t>(id);
}
[[nodiscard]] constexpr std::uint32_t availabilityRegisterOf(FeatureId id)
{
    return kAvailabilityRegisters + 4 * static_cast<std::uint32_t>(id);
}

// Entries that the camera's own code compares with.
inline constexpr std::int64_t kSourceLive = 0;
inline constexpr std::int64_t kSourceMemory = 1;
inline constexpr std::int64_t kModeContinuous = 0;
inline constexpr std::int64_t kModeSingleFrame = 1;
inline constexpr std::int64_t kRecordSingle = 0;
inline constexpr std::int64_t kRecordContinuous = 1;
inline constexpr std::int64_t kStateIdle = 0;
inline constexpr std::int64_t kStateLive = 1;
inline constexpr std::int64_t kStateRecording = 2;
inline constexpr std::int64_t kStateFlashWrite = 3;
inline constexpr std::int64_t kUserSetDefault = 0;
inline constexpr std::int64_t kUserSet1 = 1;
inline constexpr std::int64_t kBrighter = 0; ///< "IBReleaseCondition"
inline constexpr std::int64_t kDarker = 1;

inline constexpr std::int64_t kSlowestDataRate = 15; ///< "InternalDataRate"

} // namespace camera

#endif
