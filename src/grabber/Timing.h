#ifndef TELVO_SRC_GRABBER_TIMING_H
#define TELVO_SRC_GRABBER_TIMING_H

#include "Kernel.h"

#include <chrono>
#include <cstdint>

/// Tries of a feature access that cameras are known to refuse at first.
constexpr std::int32_t kFeatureTries = 4;
/// Between two such tries.
constexpr std::chrono::milliseconds kFeatureRetryPause{500};
/// After each access to a link or stream parameter: paces a host that sets several.
constexpr std::chrono::milliseconds kParameterPause{100};

inline void sleepFor(std::chrono::milliseconds duration)
{
    Sleep(static_cast<DWORD>(duration.count()));
}

#endif
