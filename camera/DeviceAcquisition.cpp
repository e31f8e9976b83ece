#include "Device.h"

#include "PacketArithmetic.h"

#include <algorithm>

namespace camera
{

using gige::wire::GvcpStatus;

namespace
{

constexpr std::uint64_t kDataRateStep = 250'000'000; // bytes a second of one "InternalDataRate"
constexpr std::uint64_t kDataRateSteps = kSlowestDataRate + 1;

} // namespace

GvcpStatus Device::startAcquisition()
{
    const bool live = get(FeatureId::AcquisitionSource) == kSourceLive;
    if (live && isFlashBusy()) {
        return Status::AccessDenied;
    }
    const Acquisition wanted = live ? Acquisition::Live : Acquisition::Playback;
    if (mAcquisition == wanted) {
        return Status::Success;
    }
    mAcquisition = wanted;
    mRequests.clear();
    mLiveClock = FrameClock(now(), get32(FeatureId::AcquisitionFrameRateRaw));
    mLiveSent = 0;
    mLiveFirst = 0;
    mPreviewSent = mRecorder.exposed();
    return Status::Success;
}

void Device::stopAcquisition()
{
    stopRecording();
    mAcquisition = Acquisition::Stopped;
    mRequests.clear();
}

void Device::changeFrameRate()
{
    const CameraTime time = now();
    const std::uint32_t rate = get32(FeatureId::AcquisitionFrameRateRaw);
    mLiveClock.setRate(time, rate);
    if (mRecorder.isRecording()) {
        mRecorder.setFrameRate(time, rate);
    }
}

StreamChannel Device::channel()
{
    const std::scoped_lock lock(mLock);
    return mChannel;
}

void Device::setChannel(const StreamChannel& channel)
{
    const std::scoped_lock lock(mLock);
    if (channel.isOpen() && !mChannel.isOpen()) {
        mLastBlockId = 0;
    }
    mChannel = channel;
    mChanged.notify_all();
}

void Device::dropHost()
{
    const std::scoped_lock lock(mLock);
    mChannel.destination = {};
    mAcquisition = Acquisition::Stopped;
    mRequests.clear();
    set(FeatureId::TLParamsLocked, 0);
    mChanged.notify_all();
}

void Device::wake()
{
    const std::scoped_lock lock(mLock);
    mWoken = true;
    mChanged.notify_all();
}

std::uint64_t Device::takeBlockId()
{
    const std::scoped_lock lock(mLock);
    return nextBlockId();
}

std::uint64_t Device::nextBlockId()
{
    mLastBlockId = gige::wire::nextBlockId(mLastBlockId, mChannel.extendedIds);
    return mLastBlockId;
}

std::optional<StreamOrder> Device::nextBlock(std::chrono::milliseconds patience)
{
    std::unique_lock lock(mLock);
    const CameraTime limit = now() + patience;
    while (!mWoken) {
        advance();
        const CameraTime time = now();
        CameraTime due = limit;
        if (mChannel.isOpen() && mAcquisition != Acquisition::Stopped) {
            auto block = mAcquisition == Acquisition::Playback ? playbackOrder()
                         : mRecorder.isRecording()             ? previewOrder(due)
                                                               : liveOrder(time, due);
            if (block) {
                return block;
            }
        }
        if (time >= limit) {
            break;
        }
        mChanged.wait_until(lock, mPowerOn + std::min(due, limit));
    }
    return std::nullopt;
}

std::optional<StreamOrder> Device::liveOrder(CameraTime time, CameraTime& due)
{
    const std::uint64_t exposed = mOptions.unpaced ? mLiveSent + 1 : mLiveClock.exposedAt(time);
    if (exposed <= mLiveSent) {
        due = mLiveClock.timeOf(mLiveSent);
        return std::nullopt;
    }
    // Only the newest frame: what the stream is too slow for is left out.
    const std::uint64_t leftOut = exposed - mLiveSent - 1;
    mLiveSent = exposed;
    const bool irigB = isOn(FeatureId::IRIGBEnable);
    int flags = isOn(FeatureId::SyncInEnable) ? kFlagSyncIn : 0;
    flags |= irigB ? kFlagIrigB : 0;
    const CameraTime exposure = mOptions.unpaced ? time : mLiveClock.timeOf(exposed - 1);
    const FrameStamp stamp{.number = static_cast<std::uint32_t>(mLiveFirst + exposed - 1),
                           .time = headerTime(exposure, irigB),
                           .flags = static_cast<std::uint8_t>(flags)};
    if (get(FeatureId::AcquisitionMode) == kModeSingleFrame) {
        mAcquisition = Acquisition::Stopped;
    }
    StreamOrder block = order(shownView(), stamp);
    block.position = stamp.number;
    block.leftOut = leftOut;
    return block;
}

std::optional<StreamOrder> Device::previewOrder(CameraTime& due)
{
    if (mRecorder.exposed() <= mPreviewSent) {
        due = mRecorder.nextExposure();
        return std::nullopt;
    }
    mPreviewSent = mRecorder.exposed();
    StreamOrder block = order(mRecorder.settings().view, mRecorder.newest());
    block.position = block.stamp.number;
    return block;
}

StreamOrder Device::order(const SceneView& sceneView, const FrameStamp& stamp)
{
    const std::uint64_t steps =
        kDataRateSteps - static_cast<std::uint64_t>(get(FeatureId::InternalDataRate));
    StreamOrder block{.channel = mChannel,
                      .blockId = nextBlockId(),
                      .timestamp = static_cast<std::uint64_t>(now().count()),
                      .view = sceneView,
                      .pixelFormat = get32(FeatureId::PixelFormat),
                      .stamp = stamp,
                      .bytesPerSecond = steps * kDataRateStep};
    if (mOptions.unpaced) {
        block.bytesPerSecond = mOptions.unpacedLimit;
        block.channel.delay = 0;
    }
    return block;
}

} // namespace camera
