/// External trigger, sync input, sync output and arming signal.
#ifndef TELVO_SRC_FEATURES_TRIGGERFEATURES_H
#define TELVO_SRC_FEATURES_TRIGGERFEATURES_H

#include "AccessVariants.h"
#include "EnumAccess.h"

inline constexpr BooleanAccess kIsExternalTriggerEnabled{&FeatureHandles::extTriggerEnable};
inline constexpr BooleanAccess kEnableExternalTrigger{&FeatureHandles::extTriggerEnable,
                                                      "-- GEN enableExternalTrigger %d",
                                                      "-- GEN enableExternalTrigger Error"};
inline constexpr BooleanAccess kIsSyncInEnabled{
    &FeatureHandles::syncInEnable, "-- GEN isSyncInEnabled %d", "-- GEN isSyncInEnabled Error"};

// The camera spells its entry "raising".
inline constexpr TwoStateEnum kExternalTriggerPolarity{
    .feature = &FeatureHandles::extTriggerPolarity,
    .zero = "falling",
    .one = "raising",
    .readZero = "-- GEN getExternalTriggerPolarity falling %d",
    .readOne = "-- GEN getExternalTriggerPolarity raising %d",
    .readFailed = "-- GEN getExternalTriggerPolarity Error",
    .written = "-- GEN setExternalTriggerPolarity %s",
    .writeFailed = "-- GEN setExternalTriggerPolarity Error"};
inline constexpr TwoStateEnum kSyncInPolarity{.feature = &FeatureHandles::syncInPolarity,
                                              .zero = "falling",
                                              .one = "raising",
                                              .readZero = "-- GEN getSyncInPolarity falling %d",
                                              .readOne = "-- GEN getSyncInPolarity raising %d",
                                              .readFailed = "-- GEN getSyncInPolarity Error",
                                              .written = "-- GEN setSyncInPolarity %s",
                                              .writeFailed = "-- GEN setSyncInPolarity Error"};
inline constexpr TwoStateEnum kSyncOut{.feature = &FeatureHandles::syncOutSelect,
                                       .zero = "ARM",
                                       .one = "SyncOut",
                                       .readZero = "-- GEN getSyncOut ARM %d",
                                       .readOne = "-- GEN getSyncOut SyncOut %d",
                                       .readFailed = "-- GEN getSyncOut Error",
                                       .written = "-- GEN setSyncOut %s",
                                       .writeFailed = "-- GEN setSyncOut Error"};
inline constexpr TwoStateEnum kSyncARMPolarity{.feature = &FeatureHandles::syncARMPolarity,
                                               .zero = "negative",
                                               .one = "positive",
                                               .readZero = "-- GEN getSyncARMPolarity negative %d",
                                               .readOne = "-- GEN getSyncARMPolarity positive %d",
                                               .readFailed = "-- GEN getSyncARMPolarity Error",
                                               .written = "-- GEN setSyncARMPolarity %s",
                                               .writeFailed = "-- GEN setSyncARMPolarity Error"};

Outcome enableSyncIn(CameraSettings& camera, bool enable);

#endif
