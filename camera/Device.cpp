#include "Device.h"

#include "PixelFormat.h"

#include <algorithm>

namespace camera
{

using gige::wire::GvcpStatus;

namespace
{

constexpr std::int64_t kMebibyte = 1024 * 1024;
constexpr std::int64_t kColdTemperature = 38; // degrees Celsius at power-on
constexpr std::int64_t kWarmUp = 7;           // degrees Celsius until it is warm
constexpr CameraTime kWarmUpStep = std::chrono::seconds(30);

std::int64_t temperatureAt(CameraTime time)
{
    return kColdTemperature + std::min<std::int64_t>(time / kWarmUpStep, kWarmUp);
}

} // namespace

Device::Device(const CameraOptions& options, Faults& faults)
    : mOptions(options),
      mFaults(faults),
      mModel(modelFor(options.model)),
      mSensor(options.sensor.value_or(mModel.sensor)),
      mSerial([this](std::uint16_t address, std::uint32_t value) {
          return serialWrite(address, value);
      })
{
    initialiseValues();
    powerOn();
}

void Device::initialiseValues()
{
    for (const Feature& feature : featureTable()) {
        set(feature.id, feature.initial);
    }
    set(FeatureId::SensorWidth, mSensor.width);
    set(FeatureId::SensorHeight, mSensor.height);
    set(FeatureId::Width, largestImage().width);
    set(FeatureId::Height, largestImage().height);
    set(FeatureId::MultisequenceAvailable, mOptions.multisequence ? 1 : 0);
    set(FeatureId::FlashCardAvailable, mOptions.flashCard ? 1 : 0);
    set(FeatureId::IRIGBAvailable, mOptions.irigB ? 1 : 0);
    set(FeatureId::RecordCameraBufferSize,
        static_cast<std::int64_t>(mOptions.memoryBytes) / kMebibyte);
    if (mOptions.colour) {
        set(FeatureId::PixelFormat, gige::wire::kPixelBayerRG8);
    }
    mFactory = mValues;
    for (const FeatureId unavailable : mOptions.unavailable) {
        mFaults.setAvailable(unavailable, false);
    }
}

CameraTime Device::now() const
{
    return std::chrono::steady_clock::now() - mPowerOn;
}

bool Device::hasOption(Option option) const
{
    switch (option) {
    case Option::None:
        return true;
    case Option::Multisequence:
        return mOptions.multisequence;
    case Option::FlashCard:
        return mOptions.flashCard;
    case Option::IrigB:
        return mOptions.irigB;
    case Option::RecordAtPowerOn:
        return mOptions.recordAtPowerOnAvailable;
    }
    return false;
}

bool Device::isAvailable(FeatureId id) const
{
    return hasOption(featureOf(id).needs) && mFaults.isAvailable(id);
}

std::int64_t Device::read(FeatureId id)
{
    const std::scoped_lock lock(mLock);
    advance();
    return valueOf(id);
}

std::int64_t Device::valueOf(FeatureId id)
{
    switch (id) {
    case FeatureId::Temperature:
        return temperatureAt(now());
    case FeatureId::WidthMax:
        return largestImage().width;
    case FeatureId::HeightMax:
        return largestImage().height;
    case FeatureId::PayloadSize:
        return get(FeatureId::Width) * get(FeatureId::Height);
    case FeatureId::CameraState:
        return state();
    case FeatureId::RecordTrailerRecordingActive:
        return mRecorder.isTrailerActive() ? 1 : 0;
    case FeatureId::RecordCurrentSequenceNumber:
        return mRecorder.currentSequence();
    case FeatureId::RecordMaxFramesPerSequence:
        return framesPerSequence();
    case FeatureId::RecordNumberOfFrames:
        return mRecorder.allFrames();
    case FeatureId::RecordNumberOfFramesPerSequence:
        return mRecorder.frames(mRecorder.isRecording() ? mRecorder.currentSequence()
                                                        : get32(FeatureId::StreamSequenceSelector));
    case FeatureId::RecordLastRecWidth:
        return mRecorder.hasRecorded() ? mRecorder.settings().view.width : 0;
    case FeatureId::RecordLastRecHeight:
        return mRecorder.hasRecorded() ? mRecorder.settings().view.height : 0;
    case FeatureId::SerialPort0TransmitLength:
        return mTransmitted;
    case FeatureId::SerialPort0ReceiveLength:
        return static_cast<std::int64_t>(mSerial.waiting());
    default:
        return get(id);
    }
}

Limits Device::limits(FeatureId id)
{
    const std::scoped_lock lock(mLock);
    advance();
    return limitsOf(id);
}

bool Device::isImaging()
{
    const std::scoped_lock lock(mLock);
    advance();
    return imaging();
}

bool Device::imaging() const
{
    return mRecorder.isRecording() || mAcquisition == Acquisition::Live ||
           isOn(FeatureId::TLParamsLocked);
}

GvcpStatus Device::write(FeatureId id, std::int64_t value)
{
    const std::scoped_lock lock(mLock);
    advance();
    const Feature& feature = featureOf(id);
    if (const Status status = check(feature, value); status != Status::Success) {
        return status;
    }
    const Status status = feature.kind == FeatureKind::Command ? execute(id) : store(id, value);
    mChanged.notify_all();
    return status;
}

GvcpStatus Device::check(const Feature& feature, std::int64_t value)
{
    if (feature.access == Access::ReadOnly) {
        return Status::WriteProtect;
    }
    if (!isAvailable(feature.id) || (feature.locked && imaging())) {
        return Status::AccessDenied;
    }
    const bool valid =
        feature.kind == FeatureKind::Enumeration
            ? std::ranges::count(entriesOf(feature, mOptions), value, &EnumEntry::value) != 0
            : limitsOf(feature.id).hold(value);
    return valid ? Status::Success : Status::InvalidParameter;
}

GvcpStatus Device::store(FeatureId id, std::int64_t value)
{
    switch (id) {
    case FeatureId::StreamSingleFrame:
        return requestFrame(static_cast<std::uint32_t>(value));
    case FeatureId::StreamStartNumber:
    case FeatureId::StreamEndNumber:
        return selectRange(id, static_cast<std::uint32_t>(value));
    case FeatureId::SerialPort0TransmitLength:
        return transmit(static_cast<std::uint32_t>(value));
    case FeatureId::SerialPort0ReceiveConsume:
        mSerial.consume(static_cast<std::size_t>(value));
        return Status::Success;
    default:
        break;
    }
    const std::int64_t before = get(id);
    set(id, value);
    settle();
    if (id == FeatureId::AcquisitionFrameRateRaw && value != before) {
        changeFrameRate();
    }
    return !isKeptAlone(id) || keep() ? Status::Success : Status::LocalProblem;
}

GvcpStatus Device::execute(FeatureId id)
{
    switch (id) {
    case FeatureId::AcquisitionStart:
        return startAcquisition();
    case FeatureId::AcquisitionStop:
        stopAcquisition();
        return Status::Success;
    case FeatureId::RecordStart:
        return startRecording();
    case FeatureId::RecordStop:
        stopRecording();
        return Status::Success;
    case FeatureId::FlashCardWrite:
        return startFlashWrite();
    case FeatureId::FlashCardWriteStop:
        mFlashEnd.reset();
        return Status::Success;
    case FeatureId::StreamGetInfoFrame:
        return requestInfo();
    case FeatureId::StreamSequenceStart:
        return requestRange();
    case FeatureId::UserSetLoad:
        return loadUserSet();
    case FeatureId::UserSetSave:
        return saveUserSet();
    case FeatureId::AckEnable:
        mSerial.enableAcknowledges(true);
        return Status::Success;
    case FeatureId::SerialPort0ReceiveFlush:
        mSerial.flush();
        return Status::Success;
    default:
        return Status::NotImplemented;
    }
}

} // namespace camera
