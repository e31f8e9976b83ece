#ifndef TELVO_SRC_LINK_TRANSFERSETTINGS_H
#define TELVO_SRC_LINK_TRANSFERSETTINGS_H

#include <atomic>
#include <cstdint>

/// How images are requested and paced. Written by the host's thread, read by the worker threads as
/// well.
struct TransferSettings {
    /// Values of "GevSCPD", in the camera's unit.
    std::atomic<std::int32_t> defaultInterPacketDelay = 0;
    std::atomic<std::int32_t> outputInterPacketDelay = 0;
    /// Value of "InternalDataRate", 0 to 15.
    std::atomic<std::int32_t> outputDataRate = 0;
    /// 1: recorded frames are requested over the serial line, else through features.
    std::atomic<std::int32_t> requestMode = 0;
    /// The delay last sent while single frames or playback are read.
    std::atomic<std::int32_t> currentInterPacketDelay = 0;
};

#endif
