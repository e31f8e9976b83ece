// How fast the camera may send. The worker threads adjust these after stream errors as well.

#include "CQuorGrabber.h"
#include "LogText.h"
#include "Timing.h"

#include <algorithm>

namespace
{

constexpr const char* kDataRate = "InternalDataRate";
constexpr std::int32_t kLowestDataRate = 0;
constexpr std::int32_t kHighestDataRate = 15;

} // namespace

std::int32_t CQuorGrabber::setInterPacketDelay(std::int32_t value)
{
    auto* const feature = mFeatures.find<PvGenInteger>("GevSCPD");
    if (feature == nullptr) {
        logLine("-- GEN setInterPacketDelay Error");
        return kFailure;
    }
    const bool isWritten = feature->SetValue(value).IsOK();
    sleepFor(kParameterPause);
    if (!isWritten) {
        logLine("-- GEN setInterPacketDelay Error");
        return kFailure;
    }
    logLine("-- GEN setInterPacketDelay %d", value);
    return kSuccess;
}

std::int32_t CQuorGrabber::SetOutputDatarate(std::int32_t value)
{
    auto* const feature = mFeatures.find<PvGenInteger>(kDataRate);
    if (feature == nullptr) {
        logLine("-- GEN SetOutputDatarate Error NULL");
        return kFailure;
    }
    if (!feature->IsAvailable()) {
        logLine("-- GEN SetOutputDatarate Error Not available");
        return kFailure;
    }
    const std::int32_t rate = std::clamp(value, kLowestDataRate, kHighestDataRate);
    logLine("-- GEN SetOutputDatarate Value: %d", rate);
    (void)feature->SetValue(rate);
    return kSuccess;
}

std::int32_t CQuorGrabber::GetOutputDatarate(std::int32_t* value)
{
    *value = 0;
    auto* const feature = mFeatures.find<PvGenInteger>(kDataRate);
    if (feature == nullptr || !feature->IsAvailable()) {
        logLine("-- GEN GetOutputDatarate Error");
        return kFailure;
    }
    std::int64_t wide = 0;
    if (feature->GetValue(wide).IsOK()) {
        *value = static_cast<std::int32_t>(wide);
    }
    logLine("-- GEN GetOutputDatarate: %d", *value);
    return kSuccess;
}
