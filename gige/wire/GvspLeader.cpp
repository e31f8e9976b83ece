#include "GvspLeader.h"

#include "PixelFormat.h"

namespace gige::wire
{

namespace
{

constexpr std::uint16_t kChunkBit = 0x4000;
constexpr std::uint16_t kKindMask = 0x3FFF;
constexpr std::size_t kShortestLeader = 12; // up to the timestamp
constexpr std::size_t kSizedLeader = 20;    // with the payload size

ImageLayout decodeImageLayout(ByteView body)
{
    return {.pixelFormat = getU32(&body[12]),
            .width = getU32(&body[16]),
            .height = getU32(&body[20]),
            .offsetX = getU32(&body[24]),
            .offsetY = getU32(&body[28]),
            .paddingX = getU16(&body[32]),
            .paddingY = getU16(&body[34])};
}

bool hasImageLayout(PayloadKind kind)
{
    return kind == PayloadKind::Image || kind == PayloadKind::ExtendedChunk;
}

bool hasPayloadSize(PayloadKind kind)
{
    return kind == PayloadKind::Raw || kind == PayloadKind::File || kind == PayloadKind::Jpeg ||
           kind == PayloadKind::Jpeg2000;
}

} // namespace

PayloadType toPayloadType(std::uint16_t code)
{
    return {.kind = PayloadKind{static_cast<std::uint16_t>(code & kKindMask)},
            .hasChunks = (code & kChunkBit) != 0};
}

std::uint16_t toCode(PayloadType type)
{
    const auto kind = static_cast<std::uint16_t>(type.kind);
    return static_cast<std::uint16_t>(type.hasChunks ? kind | kChunkBit : kind);
}

std::uint64_t imageBytes(const ImageLayout& image)
{
    return image.height * (lineBytes(image.pixelFormat, image.width) + image.paddingX) +
           image.paddingY;
}

std::array<std::uint8_t, kImageLeaderSize> encode(const ImageLeader& leader)
{
    std::array<std::uint8_t, kImageLeaderSize> bytes{leader.fieldInfo};
    putU16(&bytes[2], toCode(leader.type));
    putU64(&bytes[4], leader.timestamp);
    putU32(&bytes[12], leader.image.pixelFormat);
    putU32(&bytes[16], leader.image.width);
    putU32(&bytes[20], leader.image.height);
    putU32(&bytes[24], leader.image.offsetX);
    putU32(&bytes[28], leader.image.offsetY);
    putU16(&bytes[32], leader.image.paddingX);
    putU16(&bytes[34], leader.image.paddingY);
    return bytes;
}

std::optional<GvspLeader> decodeLeader(ByteView body)
{
    if (body.size() < kShortestLeader) {
        return std::nullopt;
    }
    GvspLeader leader{.type = toPayloadType(getU16(&body[2])), .timestamp = getU64(&body[4])};
    if (hasImageLayout(leader.type.kind)) {
        if (body.size() < kImageLeaderSize) {
            return std::nullopt;
        }
        leader.image = decodeImageLayout(body);
    }
    if (hasPayloadSize(leader.type.kind)) {
        if (body.size() < kSizedLeader) {
            return std::nullopt;
        }
        leader.payloadSize = getU64(&body[12]);
    }
    return leader;
}

std::array<std::uint8_t, kImageTrailerSize> encode(const ImageTrailer& trailer)
{
    std::array<std::uint8_t, kImageTrailerSize> bytes{};
    putU16(&bytes[2], toCode(trailer.type));
    putU32(&bytes[4], trailer.height);
    return bytes;
}

} // namespace gige::wire
