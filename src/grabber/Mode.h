#ifndef TELVO_SRC_GRABBER_MODE_H
#define TELVO_SRC_GRABBER_MODE_H

#include <cstdint>

/// What a grabber is doing. Hosts see the numbers in log lines.
enum class Mode : std::int32_t { Record = 0, Live = 1, BlockTransfer = 2, Idle = 3, Playback = 4 };

/// Values of the camera's "CameraState".
enum class CameraState : std::int32_t {
    Unknown = -1,
    Idle = 0,
    Live = 1,
    Recording = 2,
    FlashWrite = 3
};

#endif
