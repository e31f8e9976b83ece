#ifndef TELVO_TOOLS_TELVO_RECORDING_H
#define TELVO_TOOLS_TELVO_RECORDING_H

#include "CameraSession.h"

#include <cstddef>
#include <cstdint>

namespace telvo
{

/// What the camera says of the recording in its memory.
struct RecordingInfo {
    std::uint32_t width;  // pixels
    std::uint32_t height; // pixels
    bool isRing;          // recorded over and over until a trigger or a stop; else until full
    std::uint32_t sequences;

    std::size_t frameSize() const { return std::size_t{width} * height; } // bytes
};

/// A recorded sequence in the camera's memory.
struct Recording {
    RecordingInfo info;
    std::uint32_t sequence;
    std::uint32_t frames;
};

/// Throws Failure if there is no recording.
RecordingInfo readRecordingInfo(const CameraSession& camera);

/// Selects the sequence, whose frames are then read. Throws Failure if there is none of the number.
Recording selectSequence(const CameraSession& camera, const RecordingInfo& info,
                         std::uint32_t sequence);

} // namespace telvo

#endif
