#include "DefaultCamera.h"

#include <cstdint>
#include <string>
#include <vector>

namespace
{

struct Integer {
    const char* name;
    std::int64_t value;
    std::int64_t minimum;
    std::int64_t maximum;
};

struct Enumeration {
    const char* name;
    const char* value;
    std::vector<std::string> entries;
};

struct Text {
    const char* name;
    const char* value;
};

constexpr std::int64_t kAny = 0xFFFFFFFF;

constexpr Integer kIntegers[] = {
    // image geometry and timing
    {"Width", 1280, 16, 1280},
    {"Height", 1024, 1, 1024},
    {"OffsetX", 0, 0, 1264},
    {"OffsetY", 0, 0, 1023},
    {"SensorWidth", 1280, 1280, 1280},
    {"SensorHeight", 1024, 1024, 1024},
    {"ExposureTimeRaw", 500, 2, 1000000},
    {"AcquisitionFrameRateRaw", 1000, 10, 100000},
    {"BlackLevelRaw", 100, 0, 255},
    {"GainRaw", 1, 0, 7},
    {"Temperature", 42, 0, 100},
    // trigger window, burst, shutter
    {"IBOffsetX", 11, 0, 1280},
    {"IBOffsetY", 22, 0, 1024},
    {"IBWidth", 333, 0, 1280},
    {"IBHeight", 444, 0, 1024},
    {"IBThreshold", 55, 0, 255},
    {"IBReleaseCondition", 6, 0, 7},
    {"RecordBurstCnt", 5, 1, 1000},
    {"MultipleSlopeDualRaw", 20, 1, 90},
    {"MultipleSlopeTripleRaw", 30, 2, 95},
    // recording memory
    {"RecordTrailer", 100, 0, 6400},
    {"RecordCurrentSequenceNumber", 0, 0, 15},
    {"RecordMaxFramesPerSequence", 6400, 0, kAny},
    {"RecordNumberOfFrames", 0, 0, kAny},
    {"RecordNumberOfFramesPerSequence", 0, 0, kAny},
    {"RecordLastRecWidth", 640, 0, kAny},
    {"RecordLastRecHeight", 480, 0, kAny},
    {"StreamSingleFrame", 0, 0, kAny},
    {"StreamSequenceSelector", 0, 0, 15},
    {"StreamStartNumber", 0, 0, kAny},
    {"StreamEndNumber", 0, 0, kAny},
    // words kept for the host, data rate
    {"Data00", 200, 0, kAny},
    {"Data01", 200, 0, kAny},
    {"Data02", 200, 0, kAny},
    {"Data03", 0, 0, kAny},
    {"InternalDataRate", 3, 0, 15},
    // link
    {"GevSCPSPacketSize", 1440, 576, 9000},
    {"GevSCPD", 0, 0, 100000},
    {"GevHeartbeatTimeout", 3000, 500, 100000},
    // identity
    {"FirmwareVersionBootloader", 102, 0, kAny},
    {"FirmwareVersionController", 213, 0, kAny},
    {"FirmwareVersionFPGA", 324, 0, kAny},
    {"RecordCameraBufferSize", 8192, 0, kAny},
};

const Enumeration kEnumerations[] = {
    {"CameraState", "Idle", {"Idle", "Live", "Recording", "FlashWrite"}},
    {"AcquisitionSource", "Memory", {"Live", "Memory"}},
    {"AcquisitionMode", "Continuous", {"Continuous", "SingleFrame"}},
    {"PixelFormat", "Mono8", {"Mono8", "BayerGR8"}},
    {"ExtTriggerPolarity", "falling", {"falling", "raising"}},
    {"SyncInPolarity", "falling", {"falling", "raising"}},
    {"SyncOutSelect", "ARM", {"ARM", "SyncOut"}},
    {"SyncARMPolarity", "negative", {"negative", "positive"}},
    {"MultipleSlopeMode", "NormalShutter", {"NormalShutter", "DualSlope", "TripleSlope"}},
    {"RecordMode", "Single", {"Single", "Continuous"}},
    {"RecordNumberOfSequences", "One", {"One", "Two", "Four", "Eight", "Sixteen"}},
    {"UserSetSelector", "UserSet1", {"Default", "UserSet1"}},
    {"UserSetDefaultSelector", "UserSet1", {"Default", "UserSet1"}},
};

constexpr const char* kBooleans[] = {
    "ExtTriggerEnable",
    "SyncInEnable",
    "DecimationXY",
    "RecordStandby",
    "IBEnable",
    "IBWindowVisible",
    "IRIGBEnable",
    "IRIGBAvailable",
    "FlashCardAvailable",
    "FlashCardWriteAfterRecordEnable",
    "RecordStartAtPowerOn",
    "RecordWhileTriggerActive",
    "ImageVANTOAvailable",
    "MultisequenceAvailable",
    "RecordTrailerRecordingActive",
};

constexpr const char* kCommands[] = {
    "AckEnable",           "AcquisitionStart",   "AcquisitionStop", "RecordStart",
    "RecordStop",          "StreamGetInfoFrame", "FlashCardWrite",  "FlashCardWriteStop",
    "StreamSequenceStart", "UserSetSave",
};

constexpr Text kTexts[] = {
    {"DeviceUserID", "bench camera"}, {"DeviceVendorName", "Orvale"}, {"DeviceModelName", "Quor7"},
    {"DeviceID", "SN-0042"},          {"DeviceVersion", "GigE 1.2"},  {"GevSCDA", "127.0.0.1"},
};

} // namespace

void addDefaultFeatures(ScriptedArray& camera)
{
    for (const Integer& row : kIntegers) {
        camera.integer(row.name).value(row.value).range(row.minimum, row.maximum);
    }
    for (const Enumeration& row : kEnumerations) {
        camera.enumeration(row.name).value(row.value).entries(row.entries);
    }
    for (const char* name : kBooleans) {
        camera.boolean(name);
    }
    for (const char* name : kCommands) {
        camera.command(name);
    }
    for (const Text& row : kTexts) {
        camera.string(row.name).value(row.value);
    }
}

void addDefaultLinkParameters(ScriptedArray& link)
{
    link.integer("AnswerTimeout").value(1000);
    link.integer("CommandRetryCount").value(3);
    link.integer("DefaultHeartbeatTimeout").value(3000);
    link.integer("HeartbeatInterval").value(1000);
    link.integer("DisconnectOnAnswerTimeout").value(0);
}

void addDefaultStreamParameters(ScriptedArray& stream)
{
    stream.integer("RequestTimeout").value(1100);
    stream.integer("FirstPacketTimeout").value(0);
    stream.integer("PacketTimeout").value(1000);
    stream.integer("DefaultImageTimeout").value(1100);
    stream.integer("MaximumPendingResends").value(0);
    stream.integer("MaximumResendRequestRetryByPacket").value(3);
}
