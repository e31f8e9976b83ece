#ifndef TELVO_TOOLS_TELVO_WRITERS_FRAMEHEADER_H
#define TELVO_TOOLS_TELVO_WRITERS_FRAMEHEADER_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace telvo
{

constexpr std::size_t kFrameHeaderSize = 16; // bytes

// Bits of a frame's byte 7. The library's functions give them inverted.
constexpr std::uint8_t kFlagTrigger = 0x01;   // the first frame after a trigger
constexpr std::uint8_t kFlagSyncIn = 0x02;    // exposed on the sync input
constexpr std::uint8_t kFlagRecording = 0x04; // taken while the camera was recording
constexpr std::uint8_t kFlagTrailer = 0x08;   // taken after the trigger of a ring
constexpr std::uint8_t kFlagIrigB = 0x10;     // the time is one of day

/// What a camera writes into a frame's first 16 bytes, little-endian.
struct FrameHeader {
    std::uint64_t time;    // bytes 8 to 14: microseconds since power-on, or a time of day
    std::uint16_t counter; // bytes 4 and 5: the camera's own number; wraps after 65535
    std::uint8_t flags;    // byte 7
    std::uint8_t extra;    // byte 15: 1 marks the last frame of a recorded sequence
    bool operator==(const FrameHeader&) const = default;
};

/// The frame has at least the bytes of its header.
FrameHeader decodeFrameHeader(std::span<const std::uint8_t> frame);

/// "trigger", "sync-in", "recording", "trailer", "irig-b"
std::vector<std::string> flagNames(std::uint8_t flags);

/// Whether its time is one of day.
inline bool isTimeOfDay(const FrameHeader& header)
{
    return (header.flags & kFlagIrigB) != 0;
}

/// A time of day as IRIG-B carries it: "014 09:05:07.000123", the day of the year first.
std::string timeOfDay(std::uint64_t time);

} // namespace telvo

#endif
