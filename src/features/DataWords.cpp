#include "DataWords.h"

#include "LogText.h"
#include "Truncation.h"

#include <iterator>

namespace
{

struct DataWord {
    const char* feature;
    LogText<std::uint32_t> read;
    LogText<std::uint32_t> written;
};

constexpr DataWord kDataWords[] = {
    {"Data00", "-- GEN getCustomData Data00 %u", "-- GEN setCustomData Data00 %u"},
    {"Data01", "-- GEN getCustomData Data01 %u", "-- GEN setCustomData Data01 %u"},
    {"Data02", "-- GEN getCustomData Data02 %u", "-- GEN setCustomData Data02 %u"},
    {"Data03", "-- GEN getCustomData Data03 %u", "-- GEN setCustomData Data03 %u"},
};

constexpr double kLowestColorFactor = 0.0;
constexpr double kHighestColorFactor = 5.0;

const DataWord* dataWord(std::int32_t index)
{
    const bool isKnown = index >= 0 && index < static_cast<std::int32_t>(std::size(kDataWords));
    return isKnown ? &kDataWords[index] : nullptr;
}

/// A colour factor as its data word: 1.0 is 200.
std::int32_t encodedFactor(double factor)
{
    return static_cast<std::int32_t>(truncated<std::int64_t>((factor + 1.0) * 100.0));
}

double decodedFactor(std::int32_t dataWord)
{
    return dataWord / 100.0 - 1.0;
}

void readColorFactors(CameraSettings& camera)
{
    for (std::int32_t index = 0; double& factor : camera.color.factors) {
        const Reading<std::int32_t> word = getCustomData(camera, index++);
        if (!word.isDone()) {
            continue;
        }
        const double decoded = decodedFactor(*word.value);
        if (decoded >= kLowestColorFactor && decoded <= kHighestColorFactor) {
            factor = decoded;
        }
    }
}

} // namespace

Outcome setCustomData(CameraSettings& camera, std::int32_t index, std::int32_t value)
{
    const DataWord* const word = dataWord(index);
    if (word == nullptr) {
        return Outcome::Failed;
    }
    auto* const feature = camera.link.features.find<PvGenInteger>(word->feature);
    if (feature == nullptr) {
        logLine("-- GEN setCustomData Error");
        return Outcome::Failed;
    }
    word->written.log(static_cast<std::uint32_t>(value));
    (void)feature->SetValue(value);
    return Outcome::Done;
}

Reading<std::int32_t> getCustomData(CameraSettings& camera, std::int32_t index)
{
    const DataWord* const word = dataWord(index);
    if (word == nullptr) {
        return {};
    }
    auto* const feature = camera.link.features.find<PvGenInteger>(word->feature);
    if (feature == nullptr) {
        logLine("-- GEN getCustomData Error");
        return {};
    }
    std::int64_t number = 0;
    const std::int32_t value =
        feature->GetValue(number).IsOK() ? static_cast<std::int32_t>(number) : 0;
    word->read.log(static_cast<std::uint32_t>(value));
    return done(value);
}

void setColorInformation(CameraSettings& camera, const ColorFactors& factors)
{
    camera.color.factors = factors;
    for (std::int32_t index = 0; const double factor : factors) {
        (void)setCustomData(camera, index++, encodedFactor(factor));
    }
}

void readColorInformation(CameraSettings& camera)
{
    auto* const pixelFormat = camera.link.features.find<PvGenEnum>("PixelFormat");
    PvString format;
    if (pixelFormat == nullptr || !pixelFormat->GetValue(format).IsOK()) {
        return;
    }
    camera.color.isColorCamera = format != PvString("Mono8");
    if (camera.color.isColorCamera) {
        readColorFactors(camera);
    }
}
