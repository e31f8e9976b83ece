/// How fast the camera may send, and how stream errors slow it down.
#ifndef TELVO_SRC_LINK_LINKPACING_H
#define TELVO_SRC_LINK_LINKPACING_H

#include "CameraLink.h"
#include "Outcome.h"

#include <cstdint>

constexpr std::int32_t kInterPacketDelayStep = 200; // "GevSCPD", in the camera's unit
constexpr std::int32_t kMaxInterPacketDelay = 5000;
constexpr std::int32_t kMaxDataRate = 15; // "InternalDataRate"

/// Writes "GevSCPD" and pauses 100 ms. Any thread.
Outcome setInterPacketDelay(const CameraLink& link, std::int32_t value);
/// Writes "InternalDataRate", clamped to 0..15. Any thread.
Outcome setOutputDatarate(const CameraLink& link, std::int32_t value);
/// The value becomes 0 when it cannot be read.
Reading<std::int32_t> getOutputDatarate(const CameraLink& link);

/// The next delay after a stream error: one step up, or `fallback` beyond the limit. The delay may
/// be any number, since hosts choose where it begins.
constexpr std::int32_t raisedInterPacketDelay(std::int32_t delay, std::int32_t fallback)
{
    return delay > kMaxInterPacketDelay - kInterPacketDelayStep ? fallback
                                                                : delay + kInterPacketDelayStep;
}

/// The next data rate after a stream error, likewise.
constexpr std::int32_t raisedDataRate(std::int32_t rate, std::int32_t fallback)
{
    return rate >= kMaxDataRate ? fallback : rate + 1;
}

#endif
