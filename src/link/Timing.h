#ifndef TELVO_SRC_LINK_TIMING_H
#define TELVO_SRC_LINK_TIMING_H

#include "Kernel.h"

#include <chrono>

/// After each access to a link or stream parameter: paces a host that sets several.
constexpr std::chrono::milliseconds kParameterPause{100};

inline void sleepFor(std::chrono::milliseconds duration)
{
    Sleep(static_cast<DWORD>(duration.count()));
}

#endif
