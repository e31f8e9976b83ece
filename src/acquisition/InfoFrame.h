/// The camera's description of its recording: size, mode, sequences and where each one stopped.
#ifndef TELVO_SRC_ACQUISITION_INFOFRAME_H
#define TELVO_SRC_ACQUISITION_INFOFRAME_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

constexpr std::size_t kInfoFrameSize = 100; // bytes that are read; the camera sends a whole frame
constexpr std::size_t kMaxSequences = 16;

/**
 * Decoded from little-endian bytes: @32 sixteen 32-bit stop pointers, of which the low 29 bits
 * count; @96 the descriptor word:
 *   bit 1       record mode
 *   bits 8-14   width in units of 16 pixels, minus one
 *   bits 15-25  height minus one
 *   bits 28-30  sequence code, valid when bits 1 and 31 are set: 0 to 3 for 2, 4, 8, 16 sequences
 */
struct InfoFrame {
    std::uint32_t width;      // 16..2048 pixels
    std::uint32_t height;     // 1..2048 lines
    std::uint32_t recordMode; // 0 or 1
    std::uint32_t sequences;  // 1, 2, 4, 8 or 16
    std::array<std::uint32_t, kMaxSequences> stopPointers;
    bool operator==(const InfoFrame&) const = default;
};

/// @return nothing for fewer than 100 bytes
std::optional<InfoFrame> decodeInfoFrame(std::span<const std::uint8_t> frame);

/// The number of sequences to report to the host: 0 when a sequence beyond the used ones has a stop
/// pointer, since such a description cannot be trusted.
std::uint32_t plausibleSequences(const InfoFrame& info);

#endif
