/// Bodies of leader and trailer packets (what follows the GvspHeader), big-endian.
#ifndef TELVO_GIGE_WIRE_GVSPLEADER_H
#define TELVO_GIGE_WIRE_GVSPLEADER_H

#include "ByteOrder.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace gige::wire
{

/// Payload type without the chunk bit. Other values occur.
enum class PayloadKind : std::uint16_t {
    Image = 0x0001,
    Raw = 0x0002,
    File = 0x0003,
    Chunk = 0x0004,
    ExtendedChunk = 0x0005,
    Jpeg = 0x0006,
    Jpeg2000 = 0x0007,
    H264 = 0x0008,
    MultiZone = 0x0009,
    MultiPart = 0x000A,
};

/// Payload type as it stands in leader and trailer.
struct PayloadType {
    PayloadKind kind = PayloadKind::Image;
    bool hasChunks = false; // 0x4000: chunk data follow the payload
    bool operator==(const PayloadType&) const = default;
};

PayloadType toPayloadType(std::uint16_t code);
std::uint16_t toCode(PayloadType type);

/// Size and pixels of an image, from its leader.
struct ImageLayout {
    std::uint32_t pixelFormat = 0; // @12  PixelFormat.h
    std::uint32_t width = 0;       // @16  pixels
    std::uint32_t height = 0;      // @20  lines
    std::uint32_t offsetX = 0;     // @24  pixels
    std::uint32_t offsetY = 0;     // @28  lines
    std::uint16_t paddingX = 0;    // @32  bytes at the end of each line
    std::uint16_t paddingY = 0;    // @34  bytes at the end of the image
    bool operator==(const ImageLayout&) const = default;
};

/// Bytes of the image, each line filled up to a whole byte.
std::uint64_t imageBytes(const ImageLayout& image);

/// Leader of an image, 36 bytes.
struct ImageLeader {
    std::uint8_t fieldInfo = 0;  // @0  interlaced images; else 0
    PayloadType type{};          // @2  Image or ExtendedChunk
    std::uint64_t timestamp = 0; // @4  ticks
    ImageLayout image{};         // @12
    bool operator==(const ImageLeader&) const = default;
};
constexpr std::size_t kImageLeaderSize = 36;

std::array<std::uint8_t, kImageLeaderSize> encode(const ImageLeader& leader);

/// Leader of any payload: what every kind has, and what can be told of this one.
struct GvspLeader {
    PayloadType type{};
    std::uint64_t timestamp = 0;                // @4  ticks
    std::optional<ImageLayout> image{};         // Image and ExtendedChunk
    std::optional<std::uint64_t> payloadSize{}; // Raw, File, Jpeg, Jpeg2000: @12  bytes
    bool operator==(const GvspLeader&) const = default;
};

/// Nothing for a body shorter than its kind asks for.
std::optional<GvspLeader> decodeLeader(ByteView body);

/// Trailer of an image, 8 bytes.
struct ImageTrailer {
    PayloadType type{};       // @2
    std::uint32_t height = 0; // @4  lines really sent; some devices send 0
    bool operator==(const ImageTrailer&) const = default;
};
constexpr std::size_t kImageTrailerSize = 8;

std::array<std::uint8_t, kImageTrailerSize> encode(const ImageTrailer& trailer);

} // namespace gige::wire

#endif
