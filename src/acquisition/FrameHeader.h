/// The header that the camera writes over the first 16 bytes of every recorded and live frame.
#ifndef TELVO_SRC_ACQUISITION_FRAMEHEADER_H
#define TELVO_SRC_ACQUISITION_FRAMEHEADER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

constexpr std::size_t kFrameHeaderSize = 16; // bytes

/// Little-endian on the wire; bytes 0..3 and 6 carry nothing for the host.
struct FrameHeader {
    std::uint16_t counter; // @4   counts the frames of a recording, wraps after 65535
    std::uint8_t flags;    // @7   delivered inverted: every bit is the complement of the camera's
    std::uint64_t value;   // @8   56 bits, zero-extended
    std::uint8_t extra;    // @15
    bool operator==(const FrameHeader&) const = default;
};

/// @param frame  the frame from its first byte on
/// @return nothing for fewer than 16 bytes
std::optional<FrameHeader> decodeFrameHeader(std::span<const std::uint8_t> frame);

/// A frame that the host reads, and what its header says.
struct HeadedFrame {
    const std::uint8_t* data;
    FrameHeader header;
};

/// @return nothing for a frame without a whole header
std::optional<HeadedFrame> headedFrame(std::span<const std::uint8_t> frame);

#endif
