#include "LinkPacing.h"

#include "LogText.h"
#include "Timing.h"

#include <algorithm>

namespace
{

constexpr const char* kDataRate = "InternalDataRate";
constexpr std::int32_t kLowestDataRate = 0;

} // namespace

Outcome setInterPacketDelay(const CameraLink& link, std::int32_t value)
{
    auto* const feature = link.features.find<PvGenInteger>("GevSCPD");
    if (feature == nullptr) {
        logLine("-- GEN setInterPacketDelay Error");
        return Outcome::Failed;
    }
    const bool isWritten = feature->SetValue(value).IsOK();
    sleepFor(kParameterPause);
    if (!isWritten) {
        logLine("-- GEN setInterPacketDelay Error");
        return Outcome::Failed;
    }
    logLine("-- GEN setInterPacketDelay %d", value);
    return Outcome::Done;
}

Outcome setOutputDatarate(const CameraLink& link, std::int32_t value)
{
    auto* const feature = link.features.find<PvGenInteger>(kDataRate);
    if (feature == nullptr) {
        logLine("-- GEN SetOutputDatarate Error NULL");
        return Outcome::Failed;
    }
    if (!feature->IsAvailable()) {
        logLine("-- GEN SetOutputDatarate Error Not available");
        return Outcome::Failed;
    }
    const std::int32_t rate = std::clamp(value, kLowestDataRate, kMaxDataRate);
    logLine("-- GEN SetOutputDatarate Value: %d", rate);
    (void)feature->SetValue(rate);
    return Outcome::Done;
}

Reading<std::int32_t> getOutputDatarate(const CameraLink& link)
{
    auto* const feature = link.features.find<PvGenInteger>(kDataRate);
    if (feature == nullptr || !feature->IsAvailable()) {
        logLine("-- GEN GetOutputDatarate Error");
        return {.outcome = Outcome::Failed, .value = 0};
    }
    std::int64_t wide = 0;
    const std::int32_t rate = feature->GetValue(wide).IsOK() ? static_cast<std::int32_t>(wide) : 0;
    logLine("-- GEN GetOutputDatarate: %d", rate);
    return done(rate);
}
