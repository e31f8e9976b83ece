/// How stream errors are answered by pacing the camera, and the limits of what is received at once.
#ifndef TELVO_ACQUISITION_LINKLIMITS_H
#define TELVO_ACQUISITION_LINKLIMITS_H

#include <algorithm>
#include <cstdint>

constexpr std::int32_t kInterPacketDelayStep = 200; // "GevSCPD", in the camera's unit
constexpr std::int32_t kMaxInterPacketDelay = 5000;
constexpr std::int32_t kMaxDataRate = 15; // "InternalDataRate"

constexpr std::uint32_t kPipelineMemory = 16'777'216; // bytes of frames in a pipeline

/// Result of a worker thread's initialisation whose pipeline refuses the number of its buffers.
constexpr std::int32_t kBufferCountRefused = -2;

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

/// Buffers of a pipeline: as many as its memory holds, 0 for a frame beyond it.
/// @param frameSize  bytes, not 0
constexpr std::uint32_t pipelineBufferCount(std::uint32_t frameSize, std::uint32_t limit)
{
    return std::min(kPipelineMemory / frameSize, limit);
}

#endif
