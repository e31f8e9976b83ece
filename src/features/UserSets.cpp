#include "UserSets.h"

#include "CaptureFeatures.h"
#include "ImageGeometry.h"
#include "RetriedAccess.h"

#include <chrono>

namespace
{

constexpr const char* kUserSet1 = "UserSet1";
constexpr const char* kFactorySettings = "Default";

constexpr std::chrono::milliseconds kDecimationPause{300}; // the camera rebuilds its limits
constexpr std::chrono::milliseconds kSavedPause{100};

/// @return whether the camera says that user set 1 is selected
bool isUserSet1(PvGenEnum* selector, const LogText<const char*>& text)
{
    PvString entry;
    if (selector == nullptr || !selector->GetValue(entry).IsOK()) {
        return false;
    }
    text.log(entry.GetAscii());
    return entry == PvString(kUserSet1);
}

bool select(PvGenEnum* selector, const char* entry)
{
    return selector != nullptr && selector->SetValue(entry).IsOK();
}

void saveFullFrameUserSet(CameraSettings& camera)
{
    (void)write(camera, kEnableDecimationMode, false);
    sleepFor(kDecimationPause);
    (void)write(camera, kSetOffsetX, 0);
    (void)write(camera, kSetOffsetY, 0);
    (void)write(camera, kSetWidth, camera.geometry.sensorWidth);
    (void)write(camera, kSetHeight, camera.geometry.sensorHeight);
    (void)saveUserSet(camera);
    sleepFor(kSavedPause);
}

} // namespace

Outcome saveUserSet(CameraSettings& camera)
{
    PvGenCommand* const command = camera.link.features->userSetSave;
    const auto execute = [&] { return command->Execute(); };
    const auto logTaken = [](std::int32_t tryNumber) {
        logLine("-- GEN %d. try: saveUserSet ok", tryNumber);
    };
    if (command != nullptr &&
        retryWithPauses(execute, logTaken,
                        "------- GEN %d. try: saveUserSet Error Nr. %d, description: %s")) {
        return Outcome::Done;
    }
    logLine("-- GEN saveUserSet Error");
    return Outcome::Failed;
}

Outcome checkUserSetSelection(CameraSettings& camera)
{
    PvGenEnum* const selector = camera.link.features->userSetSelector;
    PvGenEnum* const defaultSelector = camera.link.features->userSetDefaultSelector;
    const bool isSelected = isUserSet1(selector, "-- getUserSetSelection: %s");
    const bool isDefault = isUserSet1(defaultSelector, "-- getUserSetDefaultSelection: %s");
    logLine("UserSetSelectionState: %d UserSetDefaultSelectionState: %d", isSelected, isDefault);
    if (isSelected && isDefault) {
        return Outcome::Done;
    }
    if (!isSelected && !select(defaultSelector, kFactorySettings)) {
        logLine("Error Setting UserDefaultSelection");
    }
    if (!select(selector, kUserSet1)) {
        logLine("Error Setting UserSelection");
    }
    saveFullFrameUserSet(camera);
    if (!select(defaultSelector, kUserSet1)) {
        logLine("Error Setting UserDefaultSelection");
    }
    return Outcome::Failed;
}
