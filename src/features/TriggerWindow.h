/// The rectangle of the image whose content can release a trigger ("IB…").
#ifndef TELVO_SRC_FEATURES_TRIGGERWINDOW_H
#define TELVO_SRC_FEATURES_TRIGGERWINDOW_H

#include "AccessVariants.h"

#include <cstdint>
#include <optional>

inline constexpr BooleanAccess kEnableFrameTrigger{"IBEnable"};
inline constexpr BooleanAccess kIsFrameTriggerEnabled{"IBEnable", "-- GEN isFrameTriggerEnabled %d",
                                                      "-- GEN isFrameTriggerEnabled Error"};
inline constexpr BooleanAccess kEnableTriggerWindow{"IBWindowVisible"};
inline constexpr BooleanAccess kIsImageVantoAvailable{.feature = "ImageVANTOAvailable",
                                                      .failedRead = FailedRead::ShowsZero};

struct TriggerWindow {
    std::int32_t top; // pixels, as the next three
    std::int32_t left;
    std::int32_t width;
    std::int32_t height;
    std::int32_t releaseCondition; // "IBReleaseCondition"
    std::int32_t threshold;        // "IBThreshold"
};

/// What could be read of a trigger window, in this order up to the first read that failed.
struct TriggerWindowParts {
    std::optional<std::int32_t> width;
    std::optional<std::int32_t> height;
    std::optional<std::int32_t> left;
    std::optional<std::int32_t> top;
    std::optional<std::int32_t> threshold;
    std::optional<std::int32_t> releaseCondition;
};

Outcome setFrameTrigger(CameraSettings& camera, const TriggerWindow& window);
TriggerWindowParts getFrameTrigger(CameraSettings& camera);
Outcome updateTriggerValues(CameraSettings& camera, std::int32_t releaseCondition,
                            std::int32_t threshold);

#endif
