/// The settings by their names on the command line: one row each.
#include "Setting.h"
#include "ToolError.h"

#include <algorithm>

namespace telvo
{

namespace
{

using Connection = TelvoConnectionSettings;

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

/// The window whose content triggers, which the library reads and writes as a whole.
struct TriggerWindow {
    std::uint32_t top = 0;
    std::uint32_t left = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t condition = 0;
    std::uint32_t threshold = 0;
};

std::int32_t readWindow(TriggerWindow& window, std::int32_t cameraId)
{
    return expGetFrameTrigger(&window.top, &window.left, &window.width, &window.height,
                              &window.condition, &window.threshold, cameraId);
}

template <std::uint32_t TriggerWindow::*Part>
std::int32_t getWindow(std::uint32_t* value, std::int32_t cameraId)
{
    TriggerWindow window;
    const std::int32_t result = readWindow(window, cameraId);
    *value = window.*Part;
    return result;
}

template <std::uint32_t TriggerWindow::*Part>
std::int32_t setWindow(std::uint32_t value, std::int32_t cameraId)
{
    TriggerWindow window;
    if (const std::int32_t result = readWindow(window, cameraId); result != 0) {
        return result;
    }
    window.*Part = value;
    return expSetFrameTrigger(window.top, window.left, window.width, window.height,
                              window.condition, window.threshold, cameraId);
}

template <std::uint32_t TriggerWindow::*Part>
constexpr NumberAccess kWindowPart{getWindow<Part>, setWindow<Part>};

constexpr Setting kSettings[] = {
    {"width", "picture width, pixels", ClampedAccess{expGetWidth, expSetWidth}, "Width"},
    {"height", "picture height, pixels", ClampedAccess{expGetHeight, expSetHeight}, "Height"},
    {"offset-x", "left edge on the sensor, pixels", ClampedAccess{getOffsetX, expSetOffsetX},
     "OffsetX"},
    {"offset-y", "upper edge on the sensor, pixels", ClampedAccess{getOffsetY, expSetOffsetY},
     "OffsetY"},
    {"decimation", "fewer columns and rows of the same view: on, off",
     SwitchAccess{expIsDecimationModeEnabled, expEnableDecimationMode}, "DecimationXY"},
    {"frame-rate", "frames per second", RangeAccess{expGetFrameRate, expSetFrameRate},
     "AcquisitionFrameRateRaw"},
    {"exposure", "exposure time, in the camera's unit",
     RangeAccess{expGetExposureTime, expSetExposureTime}, "ExposureTimeRaw"},
    {"slopes", "shutter: normal, dual, triple",
     ChoiceAccess{expGetMultipleSlopeMode,
                  expSetMultipleSlopeMode,
                  {"normal", "dual", "triple"},
                  {"NormalShutter", "DualSlope", "TripleSlope"}},
     "MultipleSlopeMode"},
    {"slope-dual", "where the second slope begins, in the camera's unit",
     RangeAccess{expGetMultipleSlopeDual, expSetMultipleSlopeDual}, "MultipleSlopeDualRaw"},
    {"slope-triple", "where the third slope begins, in the camera's unit",
     RangeAccess{expGetMultipleSlopeTriple, expSetMultipleSlopeTriple}, "MultipleSlopeTripleRaw"},
    {"gain", "digital gain", RealRangeAccess{expGetGainRaw, expSetGainRaw}, "GainRaw"},
    {"black-level", "black level", RangeAccess{expGetBlacklevel, expSetBlacklevel},
     "BlackLevelRaw"},
    {"record-mode", "what a recording does at its memory's end: single, continuous",
     ChoiceAccess{
         expGetRecordMode, expSetRecordMode, {"single", "continuous"}, {"Single", "Continuous"}},
     "RecordMode"},
    {"record-sequences", "sequences that the memory is divided into: 1, 2, 4, 8, 16",
     NumberAccess{expGetNumberOfRecordSequences, expSetNumberOfRecordSequences},
     "RecordNumberOfSequences"},
    {"trailer", "frames recorded after the trigger",
     RangeAccess{expGetTrailerCounter, expSetTrailerCounter}, "RecordTrailer"},
    {"record-burst", "frames that a trigger records in single mode; 0: all that fit",
     RangeAccess{expGetSingleSettingRecordBurstCnt, expSetSingleSettingRecordBurstCnt},
     "RecordBurstCnt"},
    {"record-while-trigger", "in single mode record only while the trigger is active: on, off",
     SwitchAccess{expGetSingleSettingRecordWhileTrigger, expSetSingleSettingRecordWhileTrigger},
     "RecordWhileTriggerActive"},
    {"record-standby", "a trigger after a recording starts the next: on, off",
     SwitchAccess{expIsRecordStandbyEnabled, expEnableRecordStandby}, "RecordStandby", nullptr,
     Lasting::NextConnection},
    {"external-trigger", "on, off",
     SwitchAccess{expIsExternalTriggerEnabled, expEnableExternalTrigger}, "ExtTriggerEnable"},
    {"external-trigger-edge", "falling, raising",
     ChoiceAccess{expGetExternalTriggerPolarity,
                  expSetExternalTriggerPolarity,
                  {"falling", "raising"},
                  {"falling", "raising"}},
     "ExtTriggerPolarity"},
    {"window-trigger", "trigger by what the pictures show in a window: on, off",
     SwitchAccess{expIsFrameTriggerEnabled, expEnableFrameTrigger}, "IBEnable"},
    {"window-left", "left edge of that window, pixels", kWindowPart<&TriggerWindow::left>,
     "IBOffsetX"},
    {"window-top", "upper edge of that window, pixels", kWindowPart<&TriggerWindow::top>,
     "IBOffsetY"},
    {"window-width", "width of that window, pixels", kWindowPart<&TriggerWindow::width>, "IBWidth"},
    {"window-height", "height of that window, pixels", kWindowPart<&TriggerWindow::height>,
     "IBHeight"},
    {"window-condition", "when it triggers, by the camera's number",
     kWindowPart<&TriggerWindow::condition>, "IBReleaseCondition"},
    {"window-threshold", "grey value at which it triggers", kWindowPart<&TriggerWindow::threshold>,
     "IBThreshold"},
    {"sync-in", "on, off", SwitchAccess{expIsSyncInEnabled, expEnableSyncIn}, "SyncInEnable"},
    {"sync-in-edge", "falling, raising",
     ChoiceAccess{expGetSyncInPolarity,
                  expSetSyncInPolarity,
                  {"falling", "raising"},
                  {"falling", "raising"}},
     "SyncInPolarity"},
    {"sync-out", "signal at the sync output: arm, sync-out",
     ChoiceAccess{expGetSyncOut, expSetSyncOut, {"arm", "sync-out"}, {"ARM", "SyncOut"}},
     "SyncOutSelect"},
    {"sync-arm-polarity", "negative, positive",
     ChoiceAccess{expGetSyncARMPolarity,
                  expSetSyncARMPolarity,
                  {"negative", "positive"},
                  {"negative", "positive"}},
     "SyncARMPolarity"},
    {"flash-after-record", "copy a recording to the flash card: on, off",
     SwitchAccess{expIsFlashWriteAfterRecordStopEnabled, expEnableFlashWriteAfterRecordStop},
     "FlashCardWriteAfterRecordEnable"},
    {"record-at-power-on", "on, off",
     SwitchAccess{expGetRecordAtPowerState, expSetRecordAtPowerState}, "RecordStartAtPowerOn"},
    {"irig-b", "IRIG-B time in the frame headers: on, off",
     SwitchAccess{expGetIRIGBState, expSetIRIGBState}, "IRIGBEnable"},
    {"custom-data", "a number that the camera keeps for its user",
     NumberAccess{expGetCustomInformation, expSetCustomInformation}, "Data03"},
    {"data-rate", "output data rate, 0 (fastest) to 15",
     NumberAccess{expGetOutputDatarate, expSetOutputDatarate}, "InternalDataRate",
     &Connection::outputDataRate},
    {"packet-size", "stream packet, bytes; 0 when connecting: the largest that comes through",
     ParameterAccess{"GevSCPSPacketSize", "GevSCPSPacketSize"}, "GevSCPSPacketSize",
     &Connection::packetSize},
    {"packet-delay", "delay between packets, in the camera's ticks",
     ParameterAccess{"DefaultInterPacketDelay", nullptr}, "", &Connection::defaultInterPacketDelay},
    {"output-packet-delay", "the same while a recording is read",
     ParameterAccess{"OutputInterPacketDelay", nullptr}, "", &Connection::outputInterPacketDelay},
    {"first-packet-timeout", "wait for a frame's first packet, ms; 0: no limit",
     ParameterAccess{"FirstPacketTimeout", "FirstPacketTimeout"}, "",
     &Connection::firstPacketTimeout, Lasting::Connection, "ms"},
    {"packet-timeout", "longest gap between a frame's packets, ms",
     ParameterAccess{"PacketTimeout", "PacketTimeout"}, "", &Connection::packetTimeout,
     Lasting::Connection, "ms"},
    {"request-timeout", "longest wait for a frame, ms",
     ParameterAccess{"RequestTimeout", "RequestTimeout"}, "", &Connection::requestTimeout,
     Lasting::Connection, "ms"},
    {"image-timeout", "longest time from a frame's first packet to its last, ms",
     ParameterAccess{"DefaultImageTimeout", "DefaultImageTimeout"}, "",
     &Connection::defaultImageTimeout, Lasting::Connection, "ms"},
    {"answer-timeout", "wait for the answer to a command, ms",
     ParameterAccess{"AnswerTimeout", "AnswerTimeout"}, "", &Connection::answerTimeout,
     Lasting::Connection, "ms"},
    {"heartbeat-timeout", "silence after which the link counts as lost, ms",
     ParameterAccess{"HeartbeatTimeout", "HeartbeatTimeout"}, "", &Connection::heartbeatTimeout,
     Lasting::Connection, "ms"},
    {"heartbeat-interval", "time between two heartbeats, ms",
     ParameterAccess{"HeartbeatInterval", "HeartbeatInterval"}, "", &Connection::heartbeatInterval,
     Lasting::Connection, "ms"},
    {"resends", "lost packets that may be asked for again at once; 0: none",
     ParameterAccess{"MaximumPendingResends", "MaximumPendingResends"}, "",
     &Connection::maximumPendingResends},
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
