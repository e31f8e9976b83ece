#include "Device.h"

#include "TriggerWindow.h"

namespace camera
{

using gige::wire::GvcpStatus;

void Device::advance()
{
    if (mFlashEnd && now() >= *mFlashEnd) {
        mFlashEnd.reset();
    }
    if (mRecorder.isRecording()) {
        mRecorder.advance(now());
        if (!mRecorder.isRecording()) {
            recordingEnded();
        }
    }
}

std::int64_t Device::state() const
{
    if (isFlashBusy()) {
        return kStateFlashWrite;
    }
    if (mRecorder.isRecording()) {
        return kStateRecording;
    }
    return mAcquisition == Acquisition::Live ? kStateLive : kStateIdle;
}

GvcpStatus Device::startRecording()
{
    if (isFlashBusy() || get(FeatureId::AcquisitionSource) != kSourceLive) {
        return Status::AccessDenied;
    }
    const bool continuous = get(FeatureId::RecordMode) == kRecordContinuous;
    RecordSettings settings{.view = view(),
                            .pixelFormat = get32(FeatureId::PixelFormat),
                            .frameRate = get32(FeatureId::AcquisitionFrameRateRaw),
                            .continuous = continuous,
                            .sequences = sequences(),
                            .framesPerSequence = framesPerSequence(),
                            .trailer = get32(FeatureId::RecordTrailer),
                            .waitForTrigger = !continuous && isOn(FeatureId::ExtTriggerEnable),
                            .burst = get32(FeatureId::RecordBurstCnt),
                            .whileTriggerActive =
                                !continuous && isOn(FeatureId::RecordWhileTriggerActive),
                            .irigB = isOn(FeatureId::IRIGBEnable)};
    int flags = isOn(FeatureId::SyncInEnable) ? kFlagSyncIn : 0;
    flags |= settings.irigB ? kFlagIrigB : 0;
    settings.flags = static_cast<std::uint8_t>(flags);
    if (isOn(FeatureId::IBEnable)) {
        const TriggerWindow window{.left = get32(FeatureId::IBOffsetX),
                                   .top = get32(FeatureId::IBOffsetY),
                                   .width = get32(FeatureId::IBWidth),
                                   .height = get32(FeatureId::IBHeight),
                                   .threshold = get32(FeatureId::IBThreshold),
                                   .darker = get(FeatureId::IBReleaseCondition) == kDarker};
        settings.contentTrigger = [window, shown = view()](const FrameStamp& stamp) {
            return window.releases(shown, stamp.sequence, stamp.number);
        };
    }
    const bool active = mTriggerHigh == isOn(FeatureId::ExtTriggerPolarity);
    const CameraTime time = now();
    mRecorder.setTriggerActive(time, active);
    mRecorder.start(std::move(settings), time);
    mPreviewSent = 0;
    if (!mRecorder.isRecording()) {
        recordingEnded();
    }
    return Status::Success;
}

void Device::stopRecording()
{
    if (mRecorder.isRecording()) {
        mRecorder.stop(now());
        recordingEnded();
    }
}

void Device::recordingEnded()
{
    // Live images that follow count on, so that a host that counts frames sees no wrap.
    const CameraTime time = now();
    mLiveClock = FrameClock(time, get32(FeatureId::AcquisitionFrameRateRaw));
    mLiveSent = 0;
    mLiveFirst = mRecorder.newest().number + std::uint64_t{1};
    if (mOptions.flashCard && isOn(FeatureId::FlashCardWriteAfterRecordEnable) &&
        startFlashWrite() == Status::Success) {
        mAcquisition = Acquisition::Stopped;
    }
}

bool Device::pulse()
{
    if (!isOn(FeatureId::ExtTriggerEnable)) {
        return false;
    }
    if (mRecorder.isRecording()) {
        mRecorder.trigger(now());
        if (!mRecorder.isRecording()) {
            recordingEnded();
        }
        return true;
    }
    const bool begins = isOn(FeatureId::RecordStandby) && mRecorder.hasRecorded() &&
                        startRecording() == Status::Success;
    if (begins && mRecorder.settings().waitForTrigger) {
        mRecorder.trigger(now()); // the one that it would wait for
    }
    return begins;
}

bool Device::trigger()
{
    const std::scoped_lock lock(mLock);
    advance();
    const bool acted = pulse();
    mChanged.notify_all();
    return acted;
}

bool Device::setTriggerInput(bool high)
{
    const std::scoped_lock lock(mLock);
    advance();
    const bool isEdge = high != mTriggerHigh;
    mTriggerHigh = high;
    const bool active = high == isOn(FeatureId::ExtTriggerPolarity);
    mRecorder.setTriggerActive(now(), active);
    const bool acted = isEdge && active && pulse();
    mChanged.notify_all();
    return acted;
}

GvcpStatus Device::startFlashWrite()
{
    if (mRecorder.isRecording() || mRecorder.allFrames() == 0) {
        return Status::AccessDenied;
    }
    const SceneView& view = mRecorder.settings().view;
    const std::uint64_t bytes = std::uint64_t{view.width} * view.height * mRecorder.allFrames();
    const std::chrono::milliseconds time(bytes * 1000 / mOptions.flashBytesPerSecond);
    mFlashEnd = now() + time;
    return Status::Success;
}

bool Device::isFlashBusy() const
{
    return mFlashEnd && now() < *mFlashEnd;
}

void Device::occupyFlash(std::chrono::milliseconds time)
{
    const std::scoped_lock lock(mLock);
    mFlashEnd = now() + time;
}

} // namespace camera
