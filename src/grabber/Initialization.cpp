// From a connected camera to one in a known state, without harming a recording that it is making.

#include "CQuorGrabber.h"
#include "LogText.h"
#include "Timing.h"

#include <chrono>
#include <string_view>

namespace
{

constexpr std::int32_t kAttachedToRecording = 1;
constexpr std::int32_t kUserSetPrepared = -2;

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

constexpr double kLowestColorFactor = 0.0;
constexpr double kHighestColorFactor = 5.0;

double decodedFactor(std::int32_t dataWord)
{
    return dataWord / 100.0 - 1.0;
}

} // namespace

std::int32_t CQuorGrabber::initialize(const TelvoConnectionSettings& hostSettings)
{
    if (mIsConnectionLost) {
        return kFailure;
    }
    const bool isUsingHostSettings = hostSettings.useSettings != 0;
    const TelvoConnectionSettings& settings = isUsingHostSettings ? hostSettings : kDefaultSettings;

    mTransfer.currentInterPacketDelay = 0;
    applyTransferSettings(settings, isUsingHostSettings);
    const bool isRecording = stopUnlessRecording();
    mFeatures.bind();
    applyStreamSettings(settings, isUsingHostSettings);
    readStreamAddresses();
    readIdentity();
    (void)checkCameraType(mIdentity.model.c_str());
    (void)getMaxWidth(); // the user set that the check may save covers the whole sensor
    (void)getMaxHeight();
    if (checkUserSetSelection() != kSuccess) {
        return kUserSetPrepared;
    }
    detectColorCamera();
    readMultiSequenceFlag();
    prepareSingleImageBuffer();
    if (isRecording) {
        attachToRecording();
        return kAttachedToRecording;
    }
    enterPlayback();
    return kSuccess;
}

void CQuorGrabber::applyTransferSettings(const TelvoConnectionSettings& settings,
                                         bool isUsingHostSettings)
{
    mTransfer.defaultInterPacketDelay = static_cast<std::int32_t>(settings.defaultInterPacketDelay);
    mTransfer.outputInterPacketDelay = static_cast<std::int32_t>(settings.outputInterPacketDelay);
    mTransfer.outputDataRate = static_cast<std::int32_t>(settings.outputDataRate);
    mTransfer.requestMode = static_cast<std::int32_t>(settings.requestMode);
    if (isUsingHostSettings) {
        logLine("----------------------------> Set interpacket delay = %d\n",
                mTransfer.defaultInterPacketDelay.load());
    } else {
        logLine("Set default device parameters");
    }
    (void)setStreamParameter("InterPacketDelay", mTransfer.defaultInterPacketDelay);
    (void)SetOutputDatarate(mTransfer.outputDataRate);
    logLine("DefaultInterPacketDelay %d", mTransfer.defaultInterPacketDelay.load());
    logLine("OutputInterPacketDelay %d", mTransfer.outputInterPacketDelay.load());
    logLine("OutputDataRate %d", mTransfer.outputDataRate.load());
    logLine("RequestMode %d", mTransfer.requestMode.load());
}

bool CQuorGrabber::stopUnlessRecording()
{
    std::int32_t state = 0;
    (void)getCameraState(&state);
    if (state == static_cast<std::int32_t>(CameraState::Recording)) {
        return true;
    }
    if (auto* const recordStop = mFeatures.find<PvGenCommand>("RecordStop")) {
        (void)recordStop->Execute();
    }
    sleepFor(kRecordStopPause);
    if (auto* const acquisitionStop = mFeatures.find<PvGenCommand>("AcquisitionStop")) {
        (void)acquisitionStop->Execute();
    }
    return false;
}

void CQuorGrabber::applyStreamSettings(const TelvoConnectionSettings& settings,
                                       bool isUsingHostSettings)
{
    const auto set = [this](const char* name, std::uint32_t value) {
        (void)setStreamParameter(name, static_cast<std::int32_t>(value));
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

void CQuorGrabber::detectColorCamera()
{
    auto* const pixelFormat = mFeatures.find<PvGenEnum>("PixelFormat");
    PvString format;
    if (pixelFormat == nullptr || !pixelFormat->GetValue(format).IsOK()) {
        return;
    }
    mColor.isColorCamera = format != PvString("Mono8");
    if (mColor.isColorCamera) {
        readColorFactors();
    }
}

void CQuorGrabber::readColorFactors()
{
    for (std::int32_t index = 0; double& factor : mColor.factors) {
        std::int32_t word = 0;
        if (getCustomData(index++, &word) != kSuccess) {
            continue;
        }
        const double decoded = decodedFactor(word);
        if (decoded >= kLowestColorFactor && decoded <= kHighestColorFactor) {
            factor = decoded;
        }
    }
}

void CQuorGrabber::readMultiSequenceFlag()
{
    auto* const feature = mFeatures.find<PvGenBoolean>("MultisequenceAvailable");
    bool isAvailable = false;
    mIsMultiSequenceAvailable =
        feature != nullptr && feature->GetValue(isAvailable).IsOK() && isAvailable;
    logLine("MultiSequenceModeAvailable %d", mIsMultiSequenceAvailable);
}

void CQuorGrabber::prepareSingleImageBuffer()
{
    releaseSingleImageBuffer();
    std::int32_t offset = 0;
    (void)getOffsetX(&offset);
    (void)getOffsetY(&offset);
    (void)getCurrentWidth();
    (void)getCurrentHeight();
    allocateSingleImageBuffer(mGeometry.frameSize());
}

void CQuorGrabber::attachToRecording()
{
    std::uint8_t isAvailable = 0;
    if (isFlashCardAvailable(&isAvailable) == kSuccess && isAvailable != 0) {
        std::uint8_t isEnabled = 0;
        (void)isFlashWriteAfterRecordStopEnabled(&isEnabled);
    }
    (void)startRecordMode(true);
    logLine("Camera connected! Current mode = %d", static_cast<std::int32_t>(mMode.current.load()));
}

void CQuorGrabber::enterPlayback()
{
    logLine("Camera connected! Current mode = %d", static_cast<std::int32_t>(mMode.current.load()));
    mMode.current = Mode::Idle;
    (void)changeAquisitionSource(Mode::Idle);
    (void)enableRecordStandby(false);
    (void)startPlaybackMode();
}
