/// What the camera says it is doing.
#ifndef TELVO_SRC_ACQUISITION_CAMERASTATE_H
#define TELVO_SRC_ACQUISITION_CAMERASTATE_H

#include "CameraFeatures.h"

#include <cstdint>
#include <optional>

/// Values of the camera's "CameraState".
enum class CameraState : std::int32_t {
    Unknown = -1,
    Idle = 0,
    Live = 1,
    Recording = 2,
    FlashWrite = 3
};

/// Whether the camera has a state to tell.
bool hasCameraState(const CameraFeatures& features);
/// Works before the handles are bound, too.
/// @return nothing when the read fails; Unknown for a name that stands for none of the states
std::optional<CameraState> readCameraState(const CameraFeatures& features);

#endif
