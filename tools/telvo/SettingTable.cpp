/// The settings by their names on the command line: one row each.
#include "Setting.h"
#include "ToolError.h"

#include <algorithm>

namespace telvo
{

namespace
{

std::int32_t getOffsetX(std::uint32_t* value, std::int32_t cameraId)
{
    std::uint32_t unused = 0;
    return expGetOffset(value, &unused, cameraId);
}

std::int32_t getOffsetY(std::uint32_t* value, std::int32_t cameraId)
{
    std::uint32_t unused = 0;
    return expGetOffset(&unused, value, cameraId);
}

constexpr Setting kSettings[] = {
    {"width", "picture width, pixels", ClampedAccess{expGetWidth, expSetWidth}},
    {"height", "picture height, pixels", ClampedAccess{expGetHeight, expSetHeight}},
    {"offset-x", "left edge on the sensor, pixels", ClampedAccess{getOffsetX, expSetOffsetX}},
    {"offset-y", "upper edge on the sensor, pixels", ClampedAccess{getOffsetY, expSetOffsetY}},
    {"frame-rate", "frames per second", RangeAccess{expGetFrameRate, expSetFrameRate}},
    {"exposure", "exposure time, in the camera's units",
     RangeAccess{expGetExposureTime, expSetExposureTime}},
    {"gain", "digital gain", RealRangeAccess{expGetGainRaw, expSetGainRaw}},
    {"black-level", "black level", RangeAccess{expGetBlacklevel, expSetBlacklevel}},
    {"trailer", "frames recorded after the trigger",
     RangeAccess{expGetTrailerCounter, expSetTrailerCounter}},
    {"record-mode", "what a recording does at its memory's end: single, continuous",
     ChoiceAccess{expGetRecordMode, expSetRecordMode, {"single", "continuous"}}},
    {"record-sequences", "sequences that the memory is divided into: 1, 2, 4, 8, 16",
     NumberAccess{expGetNumberOfRecordSequences, expSetNumberOfRecordSequences}},
    {"record-standby", "on, off", SwitchAccess{expIsRecordStandbyEnabled, expEnableRecordStandby}},
    {"external-trigger", "on, off",
     SwitchAccess{expIsExternalTriggerEnabled, expEnableExternalTrigger}},
    {"external-trigger-edge", "falling, raising",
     ChoiceAccess{
         expGetExternalTriggerPolarity, expSetExternalTriggerPolarity, {"falling", "raising"}}},
    {"sync-in", "on, off", SwitchAccess{expIsSyncInEnabled, expEnableSyncIn}},
    {"sync-in-edge", "falling, raising",
     ChoiceAccess{expGetSyncInPolarity, expSetSyncInPolarity, {"falling", "raising"}}},
    {"sync-out", "signal at the sync output: arm, sync-out",
     ChoiceAccess{expGetSyncOut, expSetSyncOut, {"arm", "sync-out"}}},
    {"sync-arm-polarity", "negative, positive",
     ChoiceAccess{expGetSyncARMPolarity, expSetSyncARMPolarity, {"negative", "positive"}}},
    {"decimation", "fewer columns and rows of the same view: on, off",
     SwitchAccess{expIsDecimationModeEnabled, expEnableDecimationMode}},
    {"slopes", "shutter: normal, dual, triple",
     ChoiceAccess{expGetMultipleSlopeMode, expSetMultipleSlopeMode, {"normal", "dual", "triple"}}},
    {"flash-after-record", "copy a recording to the flash card: on, off",
     SwitchAccess{expIsFlashWriteAfterRecordStopEnabled, expEnableFlashWriteAfterRecordStop}},
    {"record-at-power-on", "on, off",
     SwitchAccess{expGetRecordAtPowerState, expSetRecordAtPowerState}},
    {"irig-b", "IRIG-B time in the frame headers: on, off",
     SwitchAccess{expGetIRIGBState, expSetIRIGBState}},
    {"custom-data", "a number that the camera keeps for its user",
     NumberAccess{expGetCustomInformation, expSetCustomInformation}},
    {"data-rate", "output data rate, 0 (fastest) to 15",
     NumberAccess{expGetOutputDatarate, expSetOutputDatarate},
     &TelvoConnectionSettings::outputDataRate},
    {"packet-size", "stream packet, bytes; 0 when connecting: the largest that comes through",
     ParameterAccess{"GevSCPSPacketSize", "GevSCPSPacketSize"},
     &TelvoConnectionSettings::packetSize},
    {"packet-delay", "delay between packets, in the camera's ticks",
     ParameterAccess{"DefaultInterPacketDelay", nullptr},
     &TelvoConnectionSettings::defaultInterPacketDelay},
    {"output-packet-delay", "the same while a recording is read",
     ParameterAccess{"OutputInterPacketDelay", nullptr},
     &TelvoConnectionSettings::outputInterPacketDelay},
    {"first-packet-timeout", "wait for a frame's first packet, ms; 0: no limit",
     ParameterAccess{"FirstPacketTimeout", "FirstPacketTimeout"},
     &TelvoConnectionSettings::firstPacketTimeout},
    {"packet-timeout", "longest gap between a frame's packets, ms",
     ParameterAccess{"PacketTimeout", "PacketTimeout"}, &TelvoConnectionSettings::packetTimeout},
    {"request-timeout", "longest wait for a frame, ms",
     ParameterAccess{"RequestTimeout", "RequestTimeout"}, &TelvoConnectionSettings::requestTimeout},
    {"image-timeout", "longest time from a frame's first packet to its last, ms",
     ParameterAccess{"DefaultImageTimeout", "DefaultImageTimeout"},
     &TelvoConnectionSettings::defaultImageTimeout},
    {"answer-timeout", "wait for the answer to a command, ms",
     ParameterAccess{"AnswerTimeout", "AnswerTimeout"}, &TelvoConnectionSettings::answerTimeout},
    {"heartbeat-timeout", "silence after which the link counts as lost, ms",
     ParameterAccess{"HeartbeatTimeout", "HeartbeatTimeout"},
     &TelvoConnectionSettings::heartbeatTimeout},
    {"heartbeat-interval", "time between two heartbeats, ms",
     ParameterAccess{"HeartbeatInterval", "HeartbeatInterval"},
     &TelvoConnectionSettings::heartbeatInterval},
    {"resends", "lost packets that may be asked for again at once; 0: none",
     ParameterAccess{"MaximumPendingResends", "MaximumPendingResends"},
     &TelvoConnectionSettings::maximumPendingResends},
};

} // namespace

std::span<const Setting> allSettings()
{
    return kSettings;
}

const Setting& findSetting(std::string_view name)
{
    const auto found = std::ranges::find(kSettings, name, &Setting::name);
    if (found == std::end(kSettings)) {
        throw UsageError("there is no setting '" + std::string(name) +
                         "'; 'telvo get --help' lists them all");
    }
    return *found;
}

} // namespace telvo
