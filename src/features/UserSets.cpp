// The camera's stored settings, and the check that it starts with ours.

#include "CQuorGrabber.h"
#include "LogText.h"
#include "RetriedAccess.h"
#include "Timing.h"

namespace
{

constexpr const char* kUserSet1 = "UserSet1";
constexpr const char* kFactorySettings = "Default";

constexpr std::chrono::milliseconds kDecimationPause{300}; // the camera rebuilds its limits
constexpr std::chrono::milliseconds kSavedPause{100};

/// @param isUserSet1  out: 0 also when the read fails; keeps its value without the feature
std::int32_t readSelection(PvGenEnum* selector, const LogText<const char*>& text,
                           std::int32_t* isUserSet1)
{
    if (selector == nullptr) {
        return kFailure;
    }
    *isUserSet1 = 0;
    PvString entry;
    if (!selector->GetValue(entry).IsOK()) {
        return kFailure;
    }
    text.log(entry.GetAscii());
    *isUserSet1 = entry == PvString(kUserSet1) ? 1 : 0;
    return kSuccess;
}

std::int32_t writeSelection(PvGenEnum* selector, const char* entry)
{
    return selector != nullptr && selector->SetValue(entry).IsOK() ? kSuccess : kFailure;
}

} // namespace

std::int32_t CQuorGrabber::saveUserSet()
{
    PvGenCommand* const command = mFeatures->userSetSave;
    const auto execute = [&] { return command->Execute(); };
    const auto logTaken = [](std::int32_t tryNumber) {
        logLine("-- GEN %d. try: saveUserSet ok", tryNumber);
    };
    if (command != nullptr &&
        retryWithPauses(execute, logTaken,
                        "------- GEN %d. try: saveUserSet Error Nr. %d, description: %s")) {
        return kSuccess;
    }
    logLine("-- GEN saveUserSet Error");
    return kFailure;
}

std::int32_t CQuorGrabber::getUserSetSelection(std::int32_t* isUserSet1)
{
    return readSelection(mFeatures->userSetSelector, "-- getUserSetSelection: %s", isUserSet1);
}

std::int32_t CQuorGrabber::getUserSetDefaultSelection(std::int32_t* isUserSet1)
{
    return readSelection(mFeatures->userSetDefaultSelector, "-- getUserSetDefaultSelection: %s",
                         isUserSet1);
}

std::int32_t CQuorGrabber::setUserSetSelection()
{
    return writeSelection(mFeatures->userSetSelector, kUserSet1);
}

std::int32_t CQuorGrabber::setUserSetDefaultSelection(bool isUserSet1)
{
    return writeSelection(mFeatures->userSetDefaultSelector,
                          isUserSet1 ? kUserSet1 : kFactorySettings);
}

std::int32_t CQuorGrabber::checkUserSetSelection()
{
    std::int32_t isSelected = 0;
    std::int32_t isDefault = 0;
    (void)getUserSetSelection(&isSelected);
    (void)getUserSetDefaultSelection(&isDefault);
    logLine("UserSetSelectionState: %d UserSetDefaultSelectionState: %d", isSelected, isDefault);
    if (isSelected == 1 && isDefault == 1) {
        return kSuccess;
    }
    if (isSelected == 0 && setUserSetDefaultSelection(false) != kSuccess) {
        logLine("Error Setting UserDefaultSelection");
    }
    if (setUserSetSelection() != kSuccess) {
        logLine("Error Setting UserSelection");
    }
    saveFullFrameUserSet();
    if (setUserSetDefaultSelection(true) != kSuccess) {
        logLine("Error Setting UserDefaultSelection");
    }
    // A failure on purpose, however well it went: the host connects once more and finds a camera
    // that starts with these settings.
    return kFailure;
}

void CQuorGrabber::saveFullFrameUserSet()
{
    (void)enableDecimationMode(false);
    sleepFor(kDecimationPause);
    std::int32_t offsetX = 0;
    std::int32_t offsetY = 0;
    std::int32_t width = mGeometry.sensorWidth;
    std::int32_t height = mGeometry.sensorHeight;
    (void)setOffsetX(&offsetX);
    (void)setOffsetY(&offsetY);
    (void)setCurrentWidth(&width);
    (void)setCurrentHeight(&height);
    (void)saveUserSet();
    sleepFor(kSavedPause);
}
