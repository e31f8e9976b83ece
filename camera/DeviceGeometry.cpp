#include "Device.h"

#include "PixelFormat.h"

#include <algorithm>

namespace camera
{
namespace
{

constexpr std::int64_t kWidthStep = 16; // the recording's descriptor counts widths in 16 pixels
constexpr std::int64_t kHeightStep = 2; // whole Bayer cells
constexpr std::int64_t kMicroseconds = 1'000'000;
constexpr std::int64_t kShortestMaximum = 2; // us, so that there is always a choice

std::uint32_t wholeSteps(std::uint32_t value, std::int64_t step)
{
    return value - value % static_cast<std::uint32_t>(step);
}

std::int64_t longestExposure(std::int64_t rate)
{
    return std::max(kMicroseconds / rate - 1, kShortestMaximum);
}

} // namespace

SensorSize Device::largestImage() const
{
    const std::uint32_t step = isOn(FeatureId::DecimationXY) ? 2 : 1;
    return {.width = wholeSteps(mSensor.width / step, kWidthStep),
            .height = wholeSteps(mSensor.height / step, kHeightStep)};
}

SceneView Device::view() const
{
    return {.width = get32(FeatureId::Width),
            .height = get32(FeatureId::Height),
            .offsetX = get32(FeatureId::OffsetX),
            .offsetY = get32(FeatureId::OffsetY),
            .decimation = isOn(FeatureId::DecimationXY) ? 2U : 1U,
            .sensorWidth = mSensor.width,
            .sensorHeight = mSensor.height,
            .colour = get(FeatureId::PixelFormat) != gige::wire::kPixelMono8};
}

SceneView Device::shownView() const
{
    SceneView shown = view();
    if (isOn(FeatureId::IBWindowVisible)) {
        shown.window = {.left = get32(FeatureId::IBOffsetX),
                        .top = get32(FeatureId::IBOffsetY),
                        .width = get32(FeatureId::IBWidth),
                        .height = get32(FeatureId::IBHeight)};
    }
    return shown;
}

std::uint32_t Device::sequences() const
{
    const bool divided = mOptions.multisequence && get(FeatureId::RecordMode) == kRecordContinuous;
    return divided ? get32(FeatureId::RecordNumberOfSequences) : 1;
}

std::uint32_t Device::framesPerSequence() const
{
    const auto frameBytes =
        static_cast<std::uint64_t>(get(FeatureId::Width) * get(FeatureId::Height));
    const std::uint64_t frames = mOptions.memoryBytes / sequences() / frameBytes;
    // Stop pointers have 29 bits.
    return static_cast<std::uint32_t>(std::clamp<std::uint64_t>(frames, 1, (1U << 29) - 1));
}

Limits Device::limitsOf(FeatureId id) const
{
    Limits limits = featureOf(id).limits;
    const SensorSize largest = largestImage();
    const auto lastFrame = [this] {
        const std::int64_t frames = mRecorder.frames(get32(FeatureId::StreamSequenceSelector));
        return std::max<std::int64_t>(frames - 1, 0);
    };
    switch (id) {
    case FeatureId::Width:
        limits.maximum = largest.width - get(FeatureId::OffsetX);
        break;
    case FeatureId::Height:
        limits.maximum = largest.height - get(FeatureId::OffsetY);
        break;
    case FeatureId::OffsetX:
        limits.maximum = largest.width - get(FeatureId::Width);
        break;
    case FeatureId::OffsetY:
        limits.maximum = largest.height - get(FeatureId::Height);
        break;
    case FeatureId::AcquisitionFrameRateRaw:
        limits.maximum = fastestRate(mModel, get32(FeatureId::Width), get32(FeatureId::Height));
        break;
    case FeatureId::ExposureTimeRaw:
        limits.maximum = longestExposure(get(FeatureId::AcquisitionFrameRateRaw));
        break;
    case FeatureId::IBOffsetX:
        limits.maximum = get(FeatureId::Width) - get(FeatureId::IBWidth);
        break;
    case FeatureId::IBOffsetY:
        limits.maximum = get(FeatureId::Height) - get(FeatureId::IBHeight);
        break;
    case FeatureId::IBWidth:
        limits.maximum = get(FeatureId::Width) - get(FeatureId::IBOffsetX);
        break;
    case FeatureId::IBHeight:
        limits.maximum = get(FeatureId::Height) - get(FeatureId::IBOffsetY);
        break;
    case FeatureId::RecordTrailer:
        limits.maximum = framesPerSequence() - 1;
        break;
    case FeatureId::StreamSequenceSelector:
        limits.maximum = mOptions.multisequence ? kMaxSequences - 1 : 0;
        break;
    case FeatureId::StreamSingleFrame:
    case FeatureId::StreamStartNumber:
    case FeatureId::StreamEndNumber:
        limits.maximum = lastFrame();
        break;
    default:
        break;
    }
    return limits;
}

void Device::settle()
{
    const auto fit = [this](FeatureId id) {
        const Limits limits = limitsOf(id);
        set(id, std::clamp(get(id), limits.minimum, std::max(limits.minimum, limits.maximum)));
    };
    const SensorSize largest = largestImage();
    set(FeatureId::Width, std::min<std::int64_t>(get(FeatureId::Width), largest.width));
    set(FeatureId::Height, std::min<std::int64_t>(get(FeatureId::Height), largest.height));
    fit(FeatureId::OffsetX);
    fit(FeatureId::OffsetY);
    fit(FeatureId::AcquisitionFrameRateRaw);
    fit(FeatureId::ExposureTimeRaw);
    set(FeatureId::IBWidth, std::min(get(FeatureId::IBWidth), get(FeatureId::Width)));
    set(FeatureId::IBHeight, std::min(get(FeatureId::IBHeight), get(FeatureId::Height)));
    fit(FeatureId::IBOffsetX);
    fit(FeatureId::IBOffsetY);
    fit(FeatureId::RecordTrailer);
}

SceneView Device::liveView()
{
    const std::scoped_lock lock(mLock);
    return shownView();
}

} // namespace camera
