#include "CameraCore.h"

#include <algorithm>

namespace camera
{

using gige::wire::GvcpStatus;

namespace
{

constexpr std::int64_t kColdTemperature = 38; // degrees Celsius at power-on
constexpr std::int64_t kWarmUp = 7;           // degrees Celsius until it is warm
constexpr CameraTime kWarmUpStep = std::chrono::seconds(30);

} // namespace

CameraCore::CameraCore(const CameraOptions& cameraOptions, Faults& cameraFaults)
    : options(cameraOptions),
      faults(cameraFaults),
      settings(options),
      live(options.unpaced),
      playback(recorder),
      stream(options, settings, recorder, live, playback),
      flashCard(options.flashBytesPerSecond),
      serial([this](std::uint16_t address, std::uint32_t value) {
          return writeSerialRegister(address, value);
      }),
      userSets(options, settings)
{
    for (const FeatureId unavailable : options.unavailable) {
        faults.setAvailable(unavailable, false);
    }
    powerOn();
}

void CameraCore::powerOn()
{
    userSets.restore(settings);
    settings.take(options.settings);
    if (options.flashBusy.count() > 0) {
        flashCard.occupy(mNow + options.flashBusy);
    }
    if (options.recordAtPowerOn || settings.isOn(FeatureId::RecordStartAtPowerOn)) {
        (void)startRecording(); // refused while the flash card is written
    }
}

void CameraCore::advance(CameraTime now)
{
    mNow = now;
    if (recorder.isRecording()) {
        recorder.advance(now);
        if (!recorder.isRecording()) {
            recordingEnded();
        }
    }
}

std::int64_t CameraCore::read(const Feature& feature) const
{
    return feature.read != nullptr ? feature.read(*this) : settings.get(feature.id);
}

Limits CameraCore::limits(const Feature& feature) const
{
    Limits limits = feature.limits;
    if (feature.maximum != nullptr) {
        limits.maximum = feature.maximum(*this);
    }
    return limits;
}

bool CameraCore::isAvailable(const Feature& feature) const
{
    return (feature.needs == nullptr || options.*feature.needs) && faults.isAvailable(feature.id);
}

GvcpStatus CameraCore::write(const Feature& feature, std::int64_t value)
{
    Status status = check(feature, value);
    if (status == Status::Success && feature.write != nullptr) {
        status = feature.write(*this, static_cast<std::uint32_t>(value));
    }
    if (status != Status::Success || feature.kind == FeatureKind::Command) {
        return status;
    }
    settings.set(feature.id, value);
    settings.settle();
    return !feature.remembered || userSets.keep(settings) ? Status::Success : Status::LocalProblem;
}

GvcpStatus CameraCore::check(const Feature& feature, std::int64_t value) const
{
    if (feature.access == Access::ReadOnly) {
        return Status::WriteProtect;
    }
    if (!isAvailable(feature) || (feature.locked && isImaging())) {
        return Status::AccessDenied;
    }
    const bool valid =
        feature.kind == FeatureKind::Enumeration
            ? std::ranges::count(entriesOf(feature, options), value, &EnumEntry::value) != 0
            : limits(feature).hold(value);
    return valid ? Status::Success : Status::InvalidParameter;
}

std::int64_t CameraCore::temperature() const
{
    return kColdTemperature + std::min<std::int64_t>(mNow / kWarmUpStep, kWarmUp);
}

std::int64_t CameraCore::state() const
{
    if (flashCard.isBusy(mNow)) {
        return kStateFlashWrite;
    }
    if (recorder.isRecording()) {
        return kStateRecording;
    }
    return live.isRunning() ? kStateLive : kStateIdle;
}

bool CameraCore::isImaging() const
{
    return recorder.isRecording() || live.isRunning() || settings.isOn(FeatureId::TLParamsLocked);
}

std::uint32_t CameraCore::framesOfSequence() const
{
    return recorder.frames(recorder.isRecording()
                               ? recorder.currentSequence()
                               : settings.get32(FeatureId::StreamSequenceSelector));
}

std::int64_t CameraCore::lastSelectedFrame() const
{
    const std::int64_t frames = recorder.frames(settings.get32(FeatureId::StreamSequenceSelector));
    return std::max<std::int64_t>(frames - 1, 0);
}

GvcpStatus CameraCore::startAcquisition()
{
    const bool fromSensor = settings.get(FeatureId::AcquisitionSource) == kSourceLive;
    if (fromSensor && flashCard.isBusy(mNow)) {
        return Status::AccessDenied;
    }
    if (fromSensor ? live.isRunning() : playback.isRunning()) {
        return Status::Success;
    }
    stopSending();
    if (fromSensor) {
        live.start(mNow, settings.get32(FeatureId::AcquisitionFrameRateRaw), recorder);
    } else {
        playback.start();
    }
    return Status::Success;
}

void CameraCore::stopAcquisition()
{
    stopRecording();
    stopSending();
}

void CameraCore::stopSending()
{
    live.stop();
    playback.stop();
}

void CameraCore::changeFrameRate(std::uint32_t rate)
{
    if (rate == settings.get32(FeatureId::AcquisitionFrameRateRaw)) {
        return; // even the same rate would move the next exposures by a rounding
    }
    live.setRate(mNow, rate);
    if (recorder.isRecording()) {
        recorder.setFrameRate(mNow, rate);
    }
}

GvcpStatus CameraCore::startRecording()
{
    if (flashCard.isBusy(mNow) || settings.get(FeatureId::AcquisitionSource) != kSourceLive) {
        return Status::AccessDenied;
    }
    recorder.setTriggerActive(mNow, mTriggerHigh == settings.isOn(FeatureId::ExtTriggerPolarity));
    recorder.start(settings.recording(), mNow);
    live.beginPreview();
    if (!recorder.isRecording()) {
        recordingEnded();
    }
    return Status::Success;
}

void CameraCore::stopRecording()
{
    if (recorder.isRecording()) {
        recorder.stop(mNow);
        recordingEnded();
    }
}

void CameraCore::recordingEnded()
{
    // Live images that follow count on, so that a host that counts frames sees no wrap.
    live.endPreview(mNow, settings.get32(FeatureId::AcquisitionFrameRateRaw),
                    recorder.newest().number + std::uint64_t{1});
    if (options.flashCard && settings.isOn(FeatureId::FlashCardWriteAfterRecordEnable) &&
        flashCard.copy(recorder, mNow)) {
        stopSending();
    }
}

GvcpStatus CameraCore::writeFlashCard()
{
    return flashCard.copy(recorder, mNow) ? Status::Success : Status::AccessDenied;
}

bool CameraCore::trigger()
{
    if (!settings.isOn(FeatureId::ExtTriggerEnable)) {
        return false;
    }
    if (recorder.isRecording()) {
        recorder.trigger(mNow);
        if (!recorder.isRecording()) {
            recordingEnded();
        }
        return true;
    }
    const bool begins = settings.isOn(FeatureId::RecordStandby) && recorder.hasRecorded() &&
                        startRecording() == Status::Success;
    if (begins && recorder.settings().waitForTrigger) {
        recorder.trigger(mNow); // the one that it would wait for
    }
    return begins;
}

bool CameraCore::setTriggerInput(bool high)
{
    const bool isEdge = high != mTriggerHigh;
    mTriggerHigh = high;
    const bool active = high == settings.isOn(FeatureId::ExtTriggerPolarity);
    recorder.setTriggerActive(mNow, active);
    return isEdge && active && trigger();
}

GvcpStatus CameraCore::requestFrame(std::uint32_t number)
{
    return playback.requestFrame(settings.get32(FeatureId::StreamSequenceSelector), number);
}

GvcpStatus CameraCore::acceptFirst(std::uint32_t number)
{
    return acceptRange(number, settings.get32(FeatureId::StreamEndNumber));
}

GvcpStatus CameraCore::acceptLast(std::uint32_t number)
{
    return acceptRange(settings.get32(FeatureId::StreamStartNumber), number);
}

GvcpStatus CameraCore::acceptRange(std::uint32_t first, std::uint32_t last) const
{
    return faults.requiresOrderedRange() && first > last ? Status::InvalidParameter
                                                         : Status::Success;
}

GvcpStatus CameraCore::requestRange()
{
    return playback.requestRange(settings.get32(FeatureId::StreamSequenceSelector),
                                 settings.get32(FeatureId::StreamStartNumber),
                                 settings.get32(FeatureId::StreamEndNumber));
}

void CameraCore::transmit(std::uint32_t count)
{
    serial.transmit(std::min(count, faults.serialLimit()));
}

bool CameraCore::writeSerialRegister(std::uint16_t address, std::uint32_t value)
{
    switch (address) {
    case kSerialFirstFrame:
        settings.set(FeatureId::StreamStartNumber, value);
        return true;
    case kSerialLastFrame:
        settings.set(FeatureId::StreamEndNumber, value);
        return true;
    case kSerialStartStream:
        return requestRange() == Status::Success;
    default:
        return true; // a register without an effect here
    }
}

GvcpStatus CameraCore::loadUserSet()
{
    const FeatureValues* const set = userSets.find(settings.get(FeatureId::UserSetSelector));
    if (isImaging() || set == nullptr) {
        return Status::AccessDenied;
    }
    settings.take(*set);
    return Status::Success;
}

GvcpStatus CameraCore::saveUserSet()
{
    if (settings.get(FeatureId::UserSetSelector) != kUserSet1) {
        return Status::AccessDenied; // the factory's set stays as it is
    }
    return userSets.save(settings) ? Status::Success : Status::LocalProblem;
}

void CameraCore::dropHost()
{
    stream.closeChannel();
    stopSending();
    settings.set(FeatureId::TLParamsLocked, 0);
}

} // namespace camera
