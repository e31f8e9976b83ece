#ifndef TELVO_CAMERA_FRAMESTAMP_H
#define TELVO_CAMERA_FRAMESTAMP_H

#include <array>
#include <chrono>
#include <cstdint>
#include <span>

namespace camera
{

inline constexpr std::size_t kFrameHeaderSize = 16;

/// Bits of the header's flag byte as it lies in the frame; the host sees them inverted.
inline constexpr std::uint8_t kFlagTrigger = 0x01;   ///< the trigger came before this frame
inline constexpr std::uint8_t kFlagSyncIn = 0x02;    ///< exposed on the sync input
inline constexpr std::uint8_t kFlagRecording = 0x04; ///< taken while the camera was recording
inline constexpr std::uint8_t kFlagTrailer = 0x08;   ///< taken after the trigger
inline constexpr std::uint8_t kFlagIrigB = 0x10;     ///< the time is an IRIG-B time

/// What distinguishes one frame from all others; with the view it determines every byte.
struct FrameStamp {
    std::uint32_t sequence = 0; ///< 0..15
    std::uint32_t number = 0;   ///< counts the frames of the acquisition or sequence from 0
    std::uint64_t time = 0;     ///< 56 bits: microseconds since power-on, or irigTime()
    std::uint8_t flags = 0;     ///< kFlag... bits
    bool last = false;          ///< the last frame of a recorded sequence
    bool operator==(const FrameStamp&) const = default;
};

/// The first 16 bytes of every frame, little-endian:
/// 0-3 frame number, 4-5 frame counter (the number's low 16 bits), 6 sequence, 7 flags,
/// 8-14 time, 15 last-frame mark (0 or 1).
[[nodiscard]] std::array<std::uint8_t, kFrameHeaderSize> encode(const FrameStamp& stamp);

/// A time of day as the IRIG-B code carries it, packed into 56 bits: 0-19 microsecond,
/// 20-25 second, 26-31 minute, 32-36 hour, 37-45 day of the year from 1.
[[nodiscard]] std::uint64_t irigTime(std::chrono::sys_time<std::chrono::microseconds> time);

} // namespace camera

#endif
