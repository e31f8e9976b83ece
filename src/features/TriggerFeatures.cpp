// External trigger, sync input, sync output and arming signal.

#include "AccessVariants.h"
#include "CQuorGrabber.h"
#include "EnumAccess.h"
#include "LogText.h"
#include "RetriedAccess.h"

namespace
{

constexpr PlainAccess<PvGenBoolean> kIsExternalTriggerEnabled{
    &FeatureHandles::extTriggerEnable, {}, {}};
constexpr PlainAccess<PvGenBoolean> kEnableExternalTrigger{&FeatureHandles::extTriggerEnable,
                                                           "-- GEN enableExternalTrigger %d",
                                                           "-- GEN enableExternalTrigger Error"};
constexpr PlainAccess<PvGenBoolean> kIsSyncInEnabled{
    &FeatureHandles::syncInEnable, "-- GEN isSyncInEnabled %d", "-- GEN isSyncInEnabled Error"};
// The camera spells its entry "raising".
constexpr TwoStateEnum kExternalTriggerPolarity{
    .feature = &FeatureHandles::extTriggerPolarity,
    .zero = "falling",
    .one = "raising",
    .readZero = "-- GEN getExternalTriggerPolarity falling %d",
    .readOne = "-- GEN getExternalTriggerPolarity raising %d",
    .readFailed = "-- GEN getExternalTriggerPolarity Error",
    .written = "-- GEN setExternalTriggerPolarity %s",
    .writeFailed = "-- GEN setExternalTriggerPolarity Error"};
constexpr TwoStateEnum kSyncInPolarity{.feature = &FeatureHandles::syncInPolarity,
                                       .zero = "falling",
                                       .one = "raising",
                                       .readZero = "-- GEN getSyncInPolarity falling %d",
                                       .readOne = "-- GEN getSyncInPolarity raising %d",
                                       .readFailed = "-- GEN getSyncInPolarity Error",
                                       .written = "-- GEN setSyncInPolarity %s",
                                       .writeFailed = "-- GEN setSyncInPolarity Error"};
constexpr TwoStateEnum kSyncOut{.feature = &FeatureHandles::syncOutSelect,
                                .zero = "ARM",
                                .one = "SyncOut",
                                .readZero = "-- GEN getSyncOut ARM %d",
                                .readOne = "-- GEN getSyncOut SyncOut %d",
                                .readFailed = "-- GEN getSyncOut Error",
                                .written = "-- GEN setSyncOut %s",
                                .writeFailed = "-- GEN setSyncOut Error"};
constexpr TwoStateEnum kSyncARMPolarity{.feature = &FeatureHandles::syncARMPolarity,
                                        .zero = "negative",
                                        .one = "positive",
                                        .readZero = "-- GEN getSyncARMPolarity negative %d",
                                        .readOne = "-- GEN getSyncARMPolarity positive %d",
                                        .readFailed = "-- GEN getSyncARMPolarity Error",
                                        .written = "-- GEN setSyncARMPolarity %s",
                                        .writeFailed = "-- GEN setSyncARMPolarity Error"};

} // namespace

std::int32_t CQuorGrabber::enableExternalTrigger(bool enable)
{
    return runPlainWrite(kEnableExternalTrigger, mFeatures, enable);
}

std::int32_t CQuorGrabber::isExternalTriggerEnabled(std::uint8_t* enabled)
{
    return runPlainRead(kIsExternalTriggerEnabled, mFeatures, enabled);
}

std::int32_t CQuorGrabber::setExternalTriggerPolarity(std::int32_t polarity)
{
    return runTwoStateWrite(kExternalTriggerPolarity, mFeatures, polarity);
}

std::int32_t CQuorGrabber::getExternalTriggerPolarity(std::int32_t* polarity)
{
    return runTwoStateRead(kExternalTriggerPolarity, mFeatures, polarity);
}

std::int32_t CQuorGrabber::enableSyncIn(bool enable)
{
    PvGenBoolean* const feature = mFeatures->syncInEnable;
    const auto write = [&] { return feature->SetValue(enable); };
    const auto logTaken = [&](std::int32_t tryNumber) {
        logLine("-- GEN %d. try: enableSyncIn %d", tryNumber, enable);
    };
    if (feature != nullptr &&
        retryWithPauses(write, logTaken,
                        "------- GEN %d. try: enableSyncIn Error Nr. %d, description: %s")) {
        return kSuccess;
    }
    logLine("-- GEN enableSyncIn Error");
    return kFailure;
}

std::int32_t CQuorGrabber::isSyncInEnabled(std::uint8_t* enabled)
{
    return runPlainRead(kIsSyncInEnabled, mFeatures, enabled);
}

std::int32_t CQuorGrabber::setSyncInPolarity(std::int32_t polarity)
{
    return runTwoStateWrite(kSyncInPolarity, mFeatures, polarity);
}

std::int32_t CQuorGrabber::getSyncInPolarity(std::int32_t* polarity)
{
    return runTwoStateRead(kSyncInPolarity, mFeatures, polarity);
}

std::int32_t CQuorGrabber::setSyncOut(std::int32_t output)
{
    return runTwoStateWrite(kSyncOut, mFeatures, output);
}

std::int32_t CQuorGrabber::getSyncOut(std::int32_t* output)
{
    return runTwoStateRead(kSyncOut, mFeatures, output);
}

std::int32_t CQuorGrabber::setSyncARMPolarity(std::int32_t polarity)
{
    return runTwoStateWrite(kSyncARMPolarity, mFeatures, polarity);
}

std::int32_t CQuorGrabber::getSyncARMPolarity(std::int32_t* polarity)
{
    return runTwoStateRead(kSyncARMPolarity, mFeatures, polarity);
}
