#include "StreamSource.h"

#include "PacketArithmetic.h"

namespace camera
{
namespace
{

constexpr std::uint64_t kDataRateStep = 250'000'000; // bytes a second of one "InternalDataRate"
constexpr std::uint64_t kDataRateSteps = kSlowestDataRate + 1;

} // namespace

StreamSource::StreamSource(const CameraOptions& options, const Settings& settings,
                           const Recorder& recorder, LiveSource& live, Playback& playback)
    : mOptions(options), mSettings(settings), mRecorder(recorder), mLive(live), mPlayback(playback)
{
}

void StreamSource::setChannel(const StreamChannel& channel)
{
    if (channel.isOpen() && !mChannel.isOpen()) {
        mLastBlockId = 0;
    }
    mChannel = channel;
}

std::uint64_t StreamSource::takeBlockId()
{
    mLastBlockId = gige::wire::nextBlockId(mLastBlockId, mChannel.extendedIds);
    return mLastBlockId;
}

std::optional<StreamOrder> StreamSource::nextBlock(CameraTime now)
{
    std::optional<StreamOrder> order;
    if (mChannel.isOpen() && mPlayback.isRunning()) {
        order = playbackBlock();
    } else if (mChannel.isOpen() && mLive.isRunning()) {
        order = mRecorder.isRecording() ? previewBlock() : liveBlock(now);
    }
    if (order) {
        order->timestamp = static_cast<std::uint64_t>(now.count());
    }
    return order;
}

CameraTime StreamSource::nextExposure() const
{
    if (!mChannel.isOpen() || !mLive.isRunning()) {
        return CameraTime::max();
    }
    return mRecorder.isRecording() ? mRecorder.nextExposure() : mLive.nextExposure();
}

std::optional<StreamOrder> StreamSource::liveBlock(CameraTime now)
{
    const bool isOnly = mSettings.get(FeatureId::AcquisitionMode) == kModeSingleFrame;
    const auto exposure = isOnly ? mLive.takeOnly(now) : mLive.take(now);
    if (!exposure) {
        return std::nullopt;
    }
    if (isOnly) {
        mLive.stop();
    }
    const bool irigB = mSettings.isOn(FeatureId::IRIGBEnable);
    StreamOrder order =
        block(mSettings.shownView(), {.number = static_cast<std::uint32_t>(exposure->number),
                                      .time = headerTime(exposure->time, irigB),
                                      .flags = mSettings.frameFlags()});
    order.leftOut = exposure->leftOut;
    return order;
}

std::optional<StreamOrder> StreamSource::previewBlock()
{
    const auto frame = mLive.takePreview(mRecorder);
    return frame ? std::optional{block(mRecorder.settings().view, *frame)} : std::nullopt;
}

std::optional<StreamOrder> StreamSource::playbackBlock()
{
    const auto picture = mPlayback.next();
    if (!picture) {
        return std::nullopt;
    }
    if (!picture->frame) {
        return infoBlock();
    }
    StreamOrder order = block(mRecorder.settings().view, *picture->frame);
    order.pixelFormat = mRecorder.settings().pixelFormat;
    order.position = picture->position;
    return order;
}

StreamOrder StreamSource::infoBlock()
{
    const bool recorded = mRecorder.hasRecorded();
    const RecordSettings shown = recorded ? mRecorder.settings() : mSettings.recording();
    RecordingInfo info{.width = shown.view.width,
                       .height = shown.view.height,
                       .continuous = shown.continuous,
                       .sequences = shown.sequences};
    for (std::uint32_t i = 0; i < kMaxSequences; ++i) {
        info.stopPointers[i] = mRecorder.stopPointer(i);
    }
    // At the set geometry, for which the host has its buffer.
    StreamOrder order = block(mSettings.view(), {});
    order.info = encode(info);
    return order;
}

StreamOrder StreamSource::block(const SceneView& view, const FrameStamp& stamp)
{
    const auto rate = static_cast<std::uint64_t>(mSettings.get(FeatureId::InternalDataRate));
    StreamOrder order{.channel = mChannel,
                      .blockId = takeBlockId(),
                      .view = view,
                      .pixelFormat = mSettings.get32(FeatureId::PixelFormat),
                      .stamp = stamp,
                      .position = stamp.number,
                      .bytesPerSecond = (kDataRateSteps - rate) * kDataRateStep};
    if (mOptions.unpaced) {
        order.bytesPerSecond = mOptions.unpacedLimit;
        order.channel.delay = 0;
    }
    return order;
}

} // namespace camera
