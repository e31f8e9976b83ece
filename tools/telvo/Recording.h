#ifndef TELVO_TOOLS_TELVO_RECORDING_H
#define TELVO_TOOLS_TELVO_RECORDING_H

#include "CameraSession.h"

#include <cstddef>
#include <cstdint>

namespace telvo
{

/// A recorded sequence in the camera's memory.
struct Recording {
    std::uint32_t width;  // pixels
    std::uint32_t height; // pixels
    std::uint32_t frames;

    std::size_t frameSize() const { return std::size_t{width} * height; } // bytes
};

/// The recording in the camera's memory; the camera is set to its picture size, in which it is
/// read. Throws Failure if there is none, or not this sequence.
Recording findRecording(const CameraSession& camera, std::uint32_t sequence);

} // namespace telvo

#endif
