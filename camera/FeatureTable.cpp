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
    constexpr Row(Id rowId, std::string_view rowName, FeatureKind rowKind, std::string_view tip)
    {
        id = rowId;
        name = rowName;
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

constexpr Row integer(Id id, std::string_view name, std::string_view tip)
{
    return Row(id, name, FeatureKind::Integer, tip).with({0, kWord}, 0);
}
constexpr Row enumeration(Id id, std::string_view name, std::string_view tip)
{
    return {id, name, FeatureKind::Enumeration, tip};
}
constexpr Row boolean(Id id, std::string_view name, std::string_view tip)
{
    return Row(id, name, FeatureKind::Boolean, tip).with({0, 1}, 0);
}
constexpr Row command(Id id, std::string_view name, std::string_view tip)
{
    return Row(id, name, FeatureKind::Command, tip).with({0, 1}, 0).writeOnly();
}
constexpr Row text(Id id, std::string_view name, std::string_view tip)
{
    return {id, name, FeatureKind::String, tip};
}
constexpr Row bytes(Id id, std::string_view name, std::string_view tip)
{
    return {id, name, FeatureKind::Register, tip};
}

constexpr StreamChannelRegisters kStream{0};
constexpr std::uint32_t kTextLength = 32;
constexpr std::uint32_t kLongTextLength = 48;
constexpr std::uint32_t kShortTextLength = 16;

using enum Visibility;

constexpr std::array kDeviceRows{
    text(Id::DeviceVendorName, "DeviceVendorName", "Name of the manufacturer")
        .fixed()
        .at(kRegManufacturerName, kTextLength),
    text(Id::DeviceModelName, "DeviceModelName", "Name of the camera model")
        .fixed()
        .at(kRegModelName, kTextLength),
    text(Id::DeviceManufacturerInfo, "DeviceManufacturerInfo",
         "What the manufacturer says of the camera")
        .fixed()
        .at(kRegManufacturerInformation, kLongTextLength),
    text(Id::DeviceVersion, "DeviceVersion", "Version of the camera")
        .fixed()
        .at(kRegDeviceVersion, kTextLength),
    text(Id::DeviceID, "DeviceID", "Serial number").fixed().at(kRegSerialNumber, kShortTextLength),
    text(Id::DeviceUserID, "DeviceUserID", "Name given by the user")
        .at(kRegUserDefinedName, kShortTextLength),
    integer(Id::FirmwareVersionBootloader, "FirmwareVersionBootloader", "Hundredths of a version")
        .fixed()
        .with({0, 99999}, 102)
        .shownTo(Expert),
    integer(Id::FirmwareVersionController, "FirmwareVersionController", "Hundredths of a version")
        .fixed()
        .with({0, 99999}, 217)
        .shownTo(Expert),
    integer(Id::FirmwareVersionFPGA, "FirmwareVersionFPGA", "Hundredths of a version")
        .fixed()
        .with({0, 99999}, 305)
        .shownTo(Expert),
    integer(Id::Temperature, "Temperature", "Temperature of the sensor")
        .readOnly()
        .with({0, 125}, 41)
        .in("C"),
    integer(Id::SensorWidth, "SensorWidth", "Columns of the sensor").fixed().with({16, 2048}, 1280),
    integer(Id::SensorHeight, "SensorHeight", "Lines of the sensor").fixed().with({2, 2048}, 1024),
    boolean(Id::MultisequenceAvailable, "MultisequenceAvailable",
            "The memory can be divided into sequences")
        .fixed(),
    boolean(Id::ImageVANTOAvailable, "ImageVANTOAvailable", "The image-content trigger is there")
        .fixed()
        .with({0, 1}, 1),
    command(Id::AckEnable, "AckEnable", "From now on the serial interpreter answers each command")
        .shownTo(Guru),
    integer(Id::Data00, "Data00", "General-purpose word 0")
        .as(Representation::HexNumber)
        .shownTo(Expert),
    integer(Id::Data01, "Data01", "General-purpose word 1")
        .as(Representation::HexNumber)
        .shownTo(Expert),
    integer(Id::Data02, "Data02", "General-purpose word 2")
        .as(Representation::HexNumber)
        .shownTo(Expert),
    integer(Id::Data03, "Data03", "General-purpose word 3")
        .as(Representation::HexNumber)
        .shownTo(Expert),
};

constexpr std::array kFormatRows{
    integer(Id::WidthMax, "WidthMax", "Greatest width at offset 0").readOnly(),
    integer(Id::HeightMax, "HeightMax", "Greatest height at offset 0").readOnly(),
    integer(Id::Width, "Width", "Columns of the image")
        .with({16, 2048, 16}, 1280)
        .moving()
        .lockable()
        .kept(),
    integer(Id::Height, "Height", "Lines of the image")
        .with({2, 2048, 2}, 1024)
        .moving()
        .lockable()
        .kept(),
    integer(Id::OffsetX, "OffsetX", "First column on the sensor")
        .with({0, 2032, 16}, 0)
        .moving()
        .lockable()
        .kept(),
    integer(Id::OffsetY, "OffsetY", "First line on the sensor")
        .with({0, 2046, 2}, 0)
        .moving()
        .lockable()
        .kept(),
    boolean(Id::DecimationXY, "DecimationXY", "Every second pixel of every second line")
        .lockable()
        .kept(),
    enumeration(Id::PixelFormat, "PixelFormat", "Meaning of a pixel's byte")
        .of(kPixelFormats, kPixelMono8)
        .lockable()
        .kept(),
};

constexpr std::array kAcquisitionRows{
    enumeration(Id::AcquisitionMode, "AcquisitionMode", "How many images one start takes")
        .of(kAcquisitionModes),
    enumeration(Id::AcquisitionSource, "AcquisitionSource",
                "Where images come from: the sensor or the recording memory")
        .of(kSources),
    command(Id::AcquisitionStart, "AcquisitionStart", "Starts sending images"),
    command(Id::AcquisitionStop, "AcquisitionStop",
            "Stops sending images; ends a running recording"),
    enumeration(Id::CameraState, "CameraState", "What the camera is doing").of(kStates).readOnly(),
    integer(Id::AcquisitionFrameRateRaw, "AcquisitionFrameRateRaw", "Images a second")
        .with({1, 200000}, 50)
        .in("Hz")
        .moving()
        .kept(),
    integer(Id::ExposureTimeRaw, "ExposureTimeRaw", "Exposure time of one image")
        .with({1, 1000000}, 1000)
        .in("us")
        .moving()
        .kept(),
    enumeration(Id::MultipleSlopeMode, "MultipleSlopeMode", "Slopes of the exposure")
        .of(kSlopeModes)
        .kept(),
    integer(Id::MultipleSlopeDualRaw, "MultipleSlopeDualRaw", "Knee of the dual slope")
        .with({1, 99}, 50)
        .in("%")
        .kept(),
    integer(Id::MultipleSlopeTripleRaw, "MultipleSlopeTripleRaw", "Second knee of the triple slope")
        .with({1, 99}, 75)
        .in("%")
        .kept(),
};

constexpr std::array kAnalogRows{
    integer(Id::GainRaw, "GainRaw", "Digital gain").with({0, 15}, 0).kept(),
    integer(Id::BlackLevelRaw, "BlackLevelRaw", "Black level").with({0, 255}, 16).kept(),
};

constexpr std::array kTriggerRows{
    boolean(Id::ExtTriggerEnable, "ExtTriggerEnable", "The external trigger input acts").kept(),
    enumeration(Id::ExtTriggerPolarity, "ExtTriggerPolarity", "Edge that triggers")
        .of(kEdges)
        .kept(),
    boolean(Id::SyncInEnable, "SyncInEnable", "Images are exposed on the sync input").kept(),
    enumeration(Id::SyncInPolarity, "SyncInPolarity", "Edge that exposes").of(kEdges).kept(),
    enumeration(Id::SyncOutSelect, "SyncOutSelect", "Signal on the sync output")
        .of(kSyncOutputs)
        .kept(),
    enumeration(Id::SyncARMPolarity, "SyncARMPolarity", "Level of the armed signal")
        .of(kLevels)
        .kept(),
    boolean(Id::IBEnable, "IBEnable", "The trigger window acts").kept(),
    boolean(Id::IBWindowVisible, "IBWindowVisible", "Live images show the trigger window").kept(),
    integer(Id::IBOffsetX, "IBOffsetX", "Left edge of the trigger window")
        .with({0, 2047}, 0)
        .moving()
        .kept(),
    integer(Id::IBOffsetY, "IBOffsetY", "Top edge of the trigger window")
        .with({0, 2047}, 0)
        .moving()
        .kept(),
    integer(Id::IBWidth, "IBWidth", "Width of the trigger window")
        .with({1, 2048}, 64)
        .moving()
        .kept(),
    integer(Id::IBHeight, "IBHeight", "Height of the trigger window")
        .with({1, 2048}, 64)
        .moving()
        .kept(),
    integer(Id::IBThreshold, "IBThreshold", "Mean grey value that releases")
        .with({0, 255}, 128)
        .kept(),
    integer(Id::IBReleaseCondition, "IBReleaseCondition",
            "0: brighter than the threshold, 1: darker")
        .with({0, 1}, 0)
        .kept(),
};

constexpr std::array kRecordRows{
    command(Id::RecordStart, "RecordStart", "Starts recording into the memory"),
    command(Id::RecordStop, "RecordStop", "Ends the recording"),
    enumeration(Id::RecordMode, "RecordMode",
                "Single: until the memory is full; Continuous: over and over until a trigger")
        .of(kRecordModes)
        .kept(),
    enumeration(Id::RecordNumberOfSequences, "RecordNumberOfSequences",
                "Parts of the memory in continuous mode")
        .of(kSequenceCounts, 1)
        .kept()
        .onlyWith(Option::Multisequence),
    integer(Id::RecordTrailer, "RecordTrailer", "Images taken after the trigger")
        .with({0, kWord}, 0)
        .moving()
        .kept(),
    boolean(Id::RecordStandby, "RecordStandby", "After a recording a trigger starts the next")
        .kept(),
    integer(Id::RecordBurstCnt, "RecordBurstCnt",
            "Images of one trigger in single mode, 0: all that the memory takes")
        .with({0, 65535}, 0)
        .kept(),
    boolean(Id::RecordWhileTriggerActive, "RecordWhileTriggerActive",
            "In single mode record only while the trigger input is active")
        .kept(),
    boolean(Id::RecordTrailerRecordingActive, "RecordTrailerRecordingActive",
            "The images after the trigger are being taken")
        .readOnly(),
    integer(Id::RecordCurrentSequenceNumber, "RecordCurrentSequenceNumber",
            "Sequence that is recorded now")
        .readOnly(),
    integer(Id::RecordMaxFramesPerSequence, "RecordMaxFramesPerSequence",
            "Images that one sequence holds at the set geometry")
        .readOnly(),
    integer(Id::RecordNumberOfFrames, "RecordNumberOfFrames", "Images in the memory").readOnly(),
    integer(Id::RecordNumberOfFramesPerSequence, "RecordNumberOfFramesPerSequence",
            "Images in the selected sequence; while recording, in the current one")
        .readOnly(),
    integer(Id::RecordLastRecWidth, "RecordLastRecWidth", "Width of the recorded images")
        .readOnly(),
    integer(Id::RecordLastRecHeight, "RecordLastRecHeight", "Height of the recorded images")
        .readOnly(),
    integer(Id::RecordCameraBufferSize, "RecordCameraBufferSize", "Size of the memory")
        .fixed()
        .in("MiB"),
    boolean(Id::RecordStartAtPowerOn, "RecordStartAtPowerOn",
            "Recording begins when the camera is switched on")
        .onlyWith(Option::RecordAtPowerOn),
    boolean(Id::IRIGBAvailable, "IRIGBAvailable", "The time code input is there").fixed(),
    boolean(Id::IRIGBEnable, "IRIGBEnable", "Images carry the time of the time code")
        .kept()
        .onlyWith(Option::IrigB),
    boolean(Id::FlashCardAvailable, "FlashCardAvailable", "A flash card is in")
        .fixed()
        .onlyWith(Option::FlashCard),
    command(Id::FlashCardWrite, "FlashCardWrite", "Copies the recording to the flash card")
        .onlyWith(Option::FlashCard),
    command(Id::FlashCardWriteStop, "FlashCardWriteStop", "Ends the copying")
        .onlyWith(Option::FlashCard),
    boolean(Id::FlashCardWriteAfterRecordEnable, "FlashCardWriteAfterRecordEnable",
            "The end of a recording starts the copying")
        .kept()
        .onlyWith(Option::FlashCard),
};

constexpr std::array kPlaybackRows{
    command(Id::StreamGetInfoFrame, "StreamGetInfoFrame", "Sends the description of the recording"),
    integer(Id::StreamSingleFrame, "StreamSingleFrame",
            "Writing a number sends that image of the selected sequence")
        .moving(),
    integer(Id::StreamSequenceSelector, "StreamSequenceSelector",
            "Sequence that images are sent from")
        .with({0, 15}, 0)
        .moving(),
    integer(Id::StreamStartNumber, "StreamStartNumber", "First image of a range").moving(),
    integer(Id::StreamEndNumber, "StreamEndNumber", "Last image of a range").moving(),
    command(Id::StreamSequenceStart, "StreamSequenceStart", "Sends the range"),
};

constexpr std::array kUserSetRows{
    enumeration(Id::UserSetSelector, "UserSetSelector", "Set that load and save act on")
        .of(kUserSets),
    enumeration(Id::UserSetDefaultSelector, "UserSetDefaultSelector",
                "Set that is loaded at power-on")
        .of(kUserSets),
    command(Id::UserSetLoad, "UserSetLoad", "Takes the settings from the selected set"),
    command(Id::UserSetSave, "UserSetSave", "Puts the settings into the selected set"),
};

constexpr std::array kTransportRows{
    integer(Id::InternalDataRate, "InternalDataRate",
            "Ceiling of the output: (16 - value) * 250 MB/s")
        .with({0, kSlowestDataRate}, 3),
    integer(Id::PayloadSize, "PayloadSize", "Bytes of one image").readOnly().in("B"),
    integer(Id::TLParamsLocked, "TLParamsLocked",
            "1: the host has locked what changes an image's size")
        .with({0, 1}, 0)
        .shownTo(Invisible),
    enumeration(Id::GevCCP, "GevCCP", "Control channel privilege")
        .of(kPrivileges)
        .at(kRegControlPrivilege)
        .shownTo(Guru),
    integer(Id::GevHeartbeatTimeout, "GevHeartbeatTimeout",
            "Silence after which the camera drops its host")
        .with({500, 600000}, 3000)
        .in("ms")
        .at(kRegHeartbeatTimeout)
        .shownTo(Guru),
    integer(Id::GevTimestampTickFrequency, "GevTimestampTickFrequency", "Ticks a second")
        .fixed()
        .with({0, kWord}, 1'000'000'000)
        .in("Hz")
        .at(kRegTimestampFrequencyHigh, 8)
        .shownTo(Expert),
    integer(Id::GevCurrentIPAddress, "GevCurrentIPAddress", "Address of the camera")
        .fixed()
        .at(kRegCurrentIpAddress)
        .as(Representation::Ip4Address),
    integer(Id::GevSCPHostPort, "GevSCPHostPort", "Port that images are sent to, 0: none")
        .with({0, 65535}, 0)
        .at(kStream.port())
        .low()
        .shownTo(Guru),
    integer(Id::GevSCPSPacketSize, "GevSCPSPacketSize",
            "Bytes of a stream packet, IP header included")
        .with({576, 9000, 4}, 1440)
        .in("B")
        .at(kStream.packetSize())
        .low()
        .shownTo(Expert),
    integer(Id::GevSCPD, "GevSCPD", "Delay between two stream packets in timestamp ticks")
        .with({0, 100'000'000}, 0)
        .at(kStream.packetDelay())
        .shownTo(Expert),
    text(Id::GevSCDA, "GevSCDA", "Address that images are sent to")
        .at(kDestinationText, kDestinationTextLength)
        .shownTo(Guru),
};

constexpr std::array kSerialRows{
    bytes(Id::SerialPort0TransmitBuffer, "SerialPort0TransmitBuffer", "Bytes to send")
        .at(kTransmitBuffer, kSerialBufferLength)
        .shownTo(Guru),
    integer(Id::SerialPort0TransmitLength, "SerialPort0TransmitLength",
            "Writing n sends n bytes; reads the number that the line took")
        .with({0, kSerialBufferLength}, 0)
        .shownTo(Guru),
    integer(Id::SerialPort0ReceiveLength, "SerialPort0ReceiveLength", "Bytes that wait")
        .readOnly()
        .shownTo(Guru),
    bytes(Id::SerialPort0ReceiveBuffer, "SerialPort0ReceiveBuffer", "The first bytes that wait")
        .readOnly()
        .at(kReceiveBuffer, kSerialBufferLength)
        .shownTo(Guru),
    integer(Id::SerialPort0ReceiveConsume, "SerialPort0ReceiveConsume",
            "Writing n drops the first n bytes")
        .writeOnly()
        .with({0, kSerialBufferLength}, 0)
        .shownTo(Guru),
    command(Id::SerialPort0ReceiveFlush, "SerialPort0ReceiveFlush", "Drops all bytes that wait")
        .shownTo(Guru),
};

constexpr std::array<Feature, kFeatureCount> kTable = [] {
    std::array<Feature, kFeatureCount> table{};
    std::size_t next = 0;
    const auto add = [&table, &next](Category category, const auto& rows) {
        for (const Row& row : rows) {
            table[next] = row;
            table[next].category = category;
            ++next;
        }
    };
    add(Category::DeviceControl, kDeviceRows);
    add(Category::ImageFormatControl, kFormatRows);
    add(Category::AcquisitionControl, kAcquisitionRows);
    add(Category::AnalogControl, kAnalogRows);
    add(Category::TriggerControl, kTriggerRows);
    add(Category::RecordControl, kRecordRows);
    add(Category::PlaybackControl, kPlaybackRows);
    add(Category::UserSetControl, kUserSetRows);
    add(Category::TransportLayerControl, kTransportRows);
    add(Category::SerialPortControl, kSerialRows);
    return table;
}();

constexpr bool inOrder()
{
    for (std::size_t i = 0; i < kTable.size(); ++i) {
        if (static_cast<std::size_t>(kTable[i].id) != i || kTable[i].name.empty()) {
            return false;
        }
    }
    return true;
}
static_assert(inOrder(), "every feature has one row, in the order of FeatureId");

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
        "DeviceControl",         "ImageFormatControl", "AcquisitionControl", "AnalogControl",
        "TriggerControl",        "RecordControl",      "PlaybackControl",    "UserSetControl",
        "TransportLayerControl", "SerialPortControl"};
    return kNames[static_cast<std::size_t>(category)];
}

std::uint32_t registerOf(const Feature& feature)
{
    return feature.address != 0 ? feature.address
                                : kFeatureRegisters + 4 * static_cast<std::uint32_t>(feature.id);
}

} // namespace camera
