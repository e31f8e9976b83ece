#include "Settings.h"

#include "PixelFormat.h"
#include "TriggerWindow.h"

#include <algorithm>

namespace camera
{
namespace
{

constexpr std::int64_t kMebibyte = 1024 * 1024;
constexpr std::uint32_t kWidthStep = 16; // the recording's descriptor counts widths in 16 pixels
constexpr std::uint32_t kHeightStep = 2; // whole Bayer cells
constexpr std::int64_t kMicroseconds = 1'000'000;
constexpr std::int64_t kShortestMaximum = 2; // us, so that there is always a choice

} // namespace

Settings::Settings(const CameraOptions& options)
    : mOptions(options),
      mModel(modelFor(options.model)),
      mSensor(options.sensor.value_or(mModel.sensor))
{
    for (const Feature& feature : featureTable()) {
        set(feature.id, feature.initial);
    }
    set(Id::SensorWidth, mSensor.width);
    set(Id::SensorHeight, mSensor.height);
    set(Id::Width, largestWidth());
    set(Id::Height, largestHeight());
    set(Id::MultisequenceAvailable, options.multisequence ? 1 : 0);
    set(Id::FlashCardAvailable, options.flashCard ? 1 : 0);
    set(Id::IRIGBAvailable, options.irigB ? 1 : 0);
    set(Id::RecordCameraBufferSize, static_cast<std::int64_t>(options.memoryBytes) / kMebibyte);
    if (options.colour) {
        set(Id::PixelFormat, gige::wire::kPixelBayerRG8);
    }
}

void Settings::take(const FeatureValues& values)
{
    // Sizes and offsets limit each other, so all are set before any is judged.
    for (const auto& [feature, value] : values) {
        if (canStartWith(featureOf(feature), value)) { // a file may hold anything
            set(feature, value);
        }
    }
    settle();
}

void Settings::settle()
{
    // In this order: each is limited by some before it.
    fit(Id::Width, largestWidth());
    fit(Id::Height, largestHeight());
    fit(Id::OffsetX, greatestOffsetX());
    fit(Id::OffsetY, greatestOffsetY());
    fit(Id::AcquisitionFrameRateRaw, fastestFrameRate());
    fit(Id::ExposureTimeRaw, longestExposure());
    fit(Id::IBWidth, get(Id::Width));
    fit(Id::IBHeight, get(Id::Height));
    fit(Id::IBOffsetX, greatestWindowX());
    fit(Id::IBOffsetY, greatestWindowY());
    fit(Id::RecordTrailer, longestTrailer());
}

void Settings::fit(FeatureId id, std::int64_t maximum)
{
    const std::int64_t minimum = featureOf(id).limits.minimum;
    set(id, std::clamp(get(id), minimum, std::max(minimum, maximum)));
}

SensorSize Settings::largestImage() const
{
    const std::uint32_t step = isOn(Id::DecimationXY) ? 2 : 1;
    const SensorSize pixels{.width = mSensor.width / step, .height = mSensor.height / step};
    return {.width = pixels.width - pixels.width % kWidthStep,
            .height = pixels.height - pixels.height % kHeightStep};
}

std::int64_t Settings::fastestFrameRate() const
{
    return fastestRate(mModel, get32(Id::Width), get32(Id::Height));
}

std::int64_t Settings::longestExposure() const
{
    return std::max(kMicroseconds / get(Id::AcquisitionFrameRateRaw) - 1, kShortestMaximum);
}

std::int64_t Settings::lastSequence() const
{
    return mOptions.multisequence ? kMaxSequences - 1 : 0;
}

SceneView Settings::view() const
{
    return {.width = get32(Id::Width),
            .height = get32(Id::Height),
            .offsetX = get32(Id::OffsetX),
            .offsetY = get32(Id::OffsetY),
            .decimation = isOn(Id::DecimationXY) ? 2U : 1U,
            .sensorWidth = mSensor.width,
            .sensorHeight = mSensor.height,
            .colour = get(Id::PixelFormat) != gige::wire::kPixelMono8};
}

SceneView Settings::shownView() const
{
    SceneView shown = view();
    if (isOn(Id::IBWindowVisible)) {
        shown.window = {.left = get32(Id::IBOffsetX),
                        .top = get32(Id::IBOffsetY),
                        .width = get32(Id::IBWidth),
                        .height = get32(Id::IBHeight)};
    }
    return shown;
}

std::uint8_t Settings::frameFlags() const
{
    const int syncIn = isOn(Id::SyncInEnable) ? kFlagSyncIn : 0;
    const int irigB = isOn(Id::IRIGBEnable) ? kFlagIrigB : 0;
    return static_cast<std::uint8_t>(syncIn | irigB);
}

bool Settings::recordsContinuously() const
{
    return get(Id::RecordMode) == kRecordContinuous;
}

std::uint32_t Settings::sequences() const
{
    const bool divided = mOptions.multisequence && recordsContinuously();
    return divided ? get32(Id::RecordNumberOfSequences) : 1;
}

std::uint32_t Settings::framesPerSequence() const
{
    const std::uint64_t frames =
        mOptions.memoryBytes / sequences() / static_cast<std::uint64_t>(payloadSize());
    // Stop pointers have 29 bits.
    return static_cast<std::uint32_t>(std::clamp<std::uint64_t>(frames, 1, (1U << 29) - 1));
}

RecordSettings Settings::recording() const
{
    const bool single = !recordsContinuously();
    RecordSettings recording{.view = view(),
                             .pixelFormat = get32(Id::PixelFormat),
                             .frameRate = get32(Id::AcquisitionFrameRateRaw),
                             .continuous = !single,
                             .sequences = sequences(),
                             .framesPerSequence = framesPerSequence(),
                             .trailer = get32(Id::RecordTrailer),
                             .waitForTrigger = single && isOn(Id::ExtTriggerEnable),
                             .burst = get32(Id::RecordBurstCnt),
                             .whileTriggerActive = single && isOn(Id::RecordWhileTriggerActive),
                             .irigB = isOn(Id::IRIGBEnable),
                             .flags = frameFlags()};
    if (isOn(Id::IBEnable)) {
        const TriggerWindow window{.left = get32(Id::IBOffsetX),
                                   .top = get32(Id::IBOffsetY),
                                   .width = get32(Id::IBWidth),
                                   .height = get32(Id::IBHeight),
                                   .threshold = get32(Id::IBThreshold),
                                   .darker = get(Id::IBReleaseCondition) == kDarker};
        recording.contentTrigger = [window, shown = view()](const FrameStamp& stamp) {
            return window.releases(shown, stamp.sequence, stamp.number);
        };
    }
    return recording;
}

} // namespace camera
