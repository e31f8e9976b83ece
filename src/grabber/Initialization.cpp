// From a connected camera to one in a known state, without harming a recording that it is making.

#include "CQuorGrabber.h"
#include "CameraState.h"
#include "CaptureFeatures.h"
#include "DataWords.h"
#include "FlashCard.h"
#include "ImageGeometry.h"
#include "LinkPacing.h"
#include "LogText.h"
#include "StreamParameters.h"
#include "Timing.h"
#include "UserSets.h"

#include <chrono>

namespace
{

constexpr std::chrono::milliseconds kRecordStopPause{100};

/// What applies to a host that leaves the settings to us: unit and meaning of each field as there.
constexpr TelvoConnectionSettings kDefaultSettings{
    .useSettings = 0,
    .reserved1 = {},
    .packetSize = 1440,
    .defaultInterPacketDelay = 2000,
    .outputInterPacketDelay = 0,
    .firstPacketTimeout = 0,
    .packetTimeout = 1000,
    .requestTimeout = 1100,
    .defaultImageTimeout = 1100,
    .answerTimeout = 1000,
    .heartbeatTimeout = 0,  // not written
    .heartbeatInterval = 0, // not written
    .maximumPendingResends = 0,
    .fastReadoutActive = 1,
    .reserved2 = {},
    .requestMode = 0,
    .outputDataRate = 3,
    .reserved3 = {},
};

void applyTransferSettings(CameraSettings& camera, const TelvoConnectionSettings& settings,
                           bool isUsingHostSettings)
{
    TransferSettings& transfer = camera.link.transfer;
    transfer.defaultInterPacketDelay = static_cast<std::int32_t>(settings.defaultInterPacketDelay);
    transfer.outputInterPacketDelay = static_cast<std::int32_t>(settings.outputInterPacketDelay);
    transfer.outputDataRate = static_cast<std::int32_t>(settings.outputDataRate);
    transfer.requestMode = static_cast<std::int32_t>(settings.requestMode);
    if (isUsingHostSettings) {
        logLine("----------------------------> Set interpacket delay = %d\n",
                transfer.defaultInterPacketDelay.load());
    } else {
        logLine("Set default device parameters");
    }
    (void)setStreamParameter(camera, "InterPacketDelay", transfer.defaultInterPacketDelay);
    (void)setOutputDatarate(camera.link, transfer.outputDataRate);
    logLine("DefaultInterPacketDelay %d", transfer.defaultInterPacketDelay.load());
    logLine("OutputInterPacketDelay %d", transfer.outputInterPacketDelay.load());
    logLine("OutputDataRate %d", transfer.outputDataRate.load());
    logLine("RequestMode %d", transfer.requestMode.load());
}

/// @return whether the camera is recording
bool stopUnlessRecording(const CameraFeatures& features)
{
    if (readCameraState(features) == CameraState::Recording) {
        return true;
    }
    execute(features.find<PvGenCommand>("RecordStop"));
    sleepFor(kRecordStopPause);
    execute(features.find<PvGenCommand>("AcquisitionStop"));
    return false;
}

void applyStreamSettings(CameraSettings& camera, const TelvoConnectionSettings& settings,
                         bool isUsingHostSettings)
{
    const auto set = [&camera](const char* name, std::uint32_t value) {
        (void)setStreamParameter(camera, name, static_cast<std::int32_t>(value));
    };
    set("FirstPacketTimeout", settings.firstPacketTimeout);
    set("PacketTimeout", settings.packetTimeout);
    set("RequestTimeout", settings.requestTimeout);
    set("DefaultImageTimeout", settings.defaultImageTimeout);
    set("AnswerTimeout", settings.answerTimeout);
    if (isUsingHostSettings) {
        set("HeartbeatTimeout", settings.heartbeatTimeout);
        set("HeartbeatInterval", settings.heartbeatInterval);
    }
    set("MaximumPendingResends", settings.maximumPendingResends);
    logLine("FastReadoutActive %d", settings.fastReadoutActive);
}

void readMultiSequenceFlag(CameraSettings& camera)
{
    auto* const feature = camera.link.features.find<PvGenBoolean>("MultisequenceAvailable");
    bool isAvailable = false;
    camera.isMultiSequenceAvailable =
        feature != nullptr && feature->GetValue(isAvailable).IsOK() && isAvailable;
    logLine("MultiSequenceModeAvailable %d", camera.isMultiSequenceAvailable);
}

void prepareSingleImageBuffer(CameraSettings& camera, SingleImageBuffer& buffer)
{
    buffer.release();
    (void)read(camera, kGetOffsetX);
    (void)read(camera, kGetOffsetY);
    (void)readOrRecall(camera, kGetWidth);
    (void)readOrRecall(camera, kGetHeight);
    buffer.allocate(camera.geometry.frameSize());
}

void logMode(const ModeControl& modes)
{
    logLine("Camera connected! Current mode = %d", static_cast<std::int32_t>(modes.mode()));
}

void attachToRecording(CameraSettings& camera, ModeControl& modes)
{
    const Reading<bool> hasFlashCard = read(camera, kIsFlashCardAvailable);
    if (hasFlashCard.isDone() && *hasFlashCard.value) {
        (void)isFlashWriteAfterRecordStopEnabled(camera);
    }
    (void)modes.startRecordMode(RecordStart::Attached);
    logMode(modes);
}

void enterPlayback(CameraSettings& camera, ModeControl& modes)
{
    logMode(modes);
    modes.becomeIdle();
    (void)write(camera, kEnableRecordStandby, false);
    (void)modes.startPlaybackMode();
}

} // namespace

InitializeResult CQuorGrabber::initialize(const TelvoConnectionSettings& hostSettings)
{
    if (mLink.isLost) {
        return InitializeResult::Failed;
    }
    const bool isUsingHostSettings = hostSettings.useSettings != 0;
    const TelvoConnectionSettings& settings = isUsingHostSettings ? hostSettings : kDefaultSettings;

    mLink.transfer.currentInterPacketDelay = 0;
    applyTransferSettings(mSettings, settings, isUsingHostSettings);
    const bool isRecording = stopUnlessRecording(mLink.features);
    mLink.features.bind();
    applyStreamSettings(mSettings, settings, isUsingHostSettings);
    readStreamAddresses(mIdentity, mLink);
    readIdentity(mIdentity, mLink.features);
    mModel = checkCameraType(mIdentity.model.c_str());
    (void)readOrRecall(mSettings, kGetMaxWidth); // what the check may save is the whole sensor
    (void)readOrRecall(mSettings, kGetMaxHeight);
    if (checkUserSetSelection(mSettings) != Outcome::Done) {
        return InitializeResult::UserSetPrepared;
    }
    readColorInformation(mSettings);
    readMultiSequenceFlag(mSettings);
    prepareSingleImageBuffer(mSettings, mSingleImage);
    if (isRecording) {
        attachToRecording(mSettings, mModes);
        return InitializeResult::AttachedToRecording;
    }
    enterPlayback(mSettings, mModes);
    return InitializeResult::Ready;
}
