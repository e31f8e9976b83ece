#include "TriggerFeatures.h"

#include "RetriedAccess.h"

Outcome enableSyncIn(CameraSettings& camera, bool enable)
{
    PvGenBoolean* const feature = camera.link.features->syncInEnable;
    const auto write = [&] { return feature->SetValue(enable); };
    const auto logTaken = [&](std::int32_t tryNumber) {
        logLine("-- GEN %d. try: enableSyncIn %d", tryNumber, enable);
    };
    if (feature != nullptr &&
        retryWithPauses(write, logTaken,
                        "------- GEN %d. try: enableSyncIn Error Nr. %d, description: %s")) {
        return Outcome::Done;
    }
    logLine("-- GEN enableSyncIn Error");
    return Outcome::Failed;
}
