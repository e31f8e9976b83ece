#ifndef TELVO_SRC_ACQUISITION_MODE_H
#define TELVO_SRC_ACQUISITION_MODE_H

#include <cstdint>

/// What a grabber is doing. Hosts see the numbers in log lines.
enum class Mode : std::int32_t { Record = 0, Live = 1, BlockTransfer = 2, Idle = 3, Playback = 4 };

#endif
