#ifndef TELVO_TOOLS_TELVO_STREAMPROBE_H
#define TELVO_TOOLS_TELVO_STREAMPROBE_H

#include "CameraAddress.h"
#include "LossPlaces.h"
#include "ProcessorLoad.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace telvo
{

/// What a camera's live stream was like for a while: first without resends, which shows what gets
/// lost, then with them, as the stack counts.
struct StreamProbe {
    std::string problem;         // why there was no stream at all; empty: there was one
    std::int64_t packetSize = 0; // bytes, as negotiated
    std::int64_t frameRate = 0;  // as the camera is set
    std::int64_t frameSize = 0;  // bytes
    LostByTenth lost{};          // packets, without resends
    // With resends.
    std::int64_t framesWhole = 0;  // received
    std::int64_t framesFailed = 0; // incomplete
    std::int64_t framesDropped = 0;
    std::int64_t packets = 0;        // received
    std::int64_t packetsMissing = 0; // of the incomplete frames
    std::int64_t packetsResent = 0;
    ProcessorLoad load{};
    bool isRingInUse = false; // packets come by the ring that is shared with the kernel
    std::chrono::duration<double> time{};
};

/// Takes live pictures through the stack and leaves the camera as it was. Only where
/// nobody controls it and it is at rest.
StreamProbe probeStream(const CameraAddress& camera);

} // namespace telvo

#endif
