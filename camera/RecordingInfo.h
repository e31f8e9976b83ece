#ifndef TELVO_CAMERA_RECORDINGINFO_H
#define TELVO_CAMERA_RECORDINGINFO_H

#include <array>
#include <cstdint>

namespace camera
{

inline constexpr std::size_t kInfoFrameSize = 100; ///< bytes that carry something

/// What the camera tells of its recording.
struct RecordingInfo {
    std::array<std::uint32_t, 16> stopPointers{}; ///< one per sequence, 0: unused; 29 bits
    std::uint32_t width = 16;                     ///< multiple of 16, at most 2048
    std::uint32_t height = 1;                     ///< 1..2048
    bool continuous = false;                      ///< record mode
    std::uint32_t sequences = 1;                  ///< 1, 2, 4, 8 or 16
};

/// Little-endian: 0-31 zero, 32-95 sixteen stop pointers, 96-99 descriptor: bit 1 continuous,
/// bits 8-14 width / 16 - 1, bits 15-25 height - 1, bits 28-30 log2(sequences) - 1,
/// bit 31 set when there is more than one sequence.
[[nodiscard]] std::array<std::uint8_t, kInfoFrameSize> encode(const RecordingInfo& info);

} // namespace camera

#endif
