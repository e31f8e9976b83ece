/// Header of a stream packet: 8 bytes with standard ids, 20 with extended ids, big-endian. Inline
/// and without allocation, since every packet of the image path passes here.
#ifndef TELVO_GIGE_WIRE_GVSPHEADER_H
#define TELVO_GIGE_WIRE_GVSPHEADER_H

#include "ByteOrder.h"
#include "GvcpStatus.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace gige::wire
{

constexpr std::size_t kGvspHeaderSize = 8;
constexpr std::size_t kGvspExtendedHeaderSize = 20;

/// Low four bits of byte 4. Other values occur.
enum class GvspFormat : std::uint8_t {
    Leader = 1,
    Trailer = 2,
    Payload = 3,
    AllIn = 4,
    H264 = 5,
    MultiZone = 6,
    MultiPart = 7,
    GenDc = 8,
};

// Flags of a header with extended ids.
constexpr std::uint16_t kGvspResent = 0x0001;
constexpr std::uint16_t kGvspPreviousBlockDropped = 0x0002;
constexpr std::uint16_t kGvspResendRangeError = 0x0004;

constexpr std::uint8_t kGvspExtendedIdFlag = 0x80; // byte 4

struct GvspHeader {
    GvcpStatus status = GvcpStatus::Success; // @0   u16
    std::uint16_t flags = 0;                 // @2   u16, extended ids only
    std::uint64_t blockId = 0;               // @2   u16; extended: @8  u64; 0: test packet
    GvspFormat format = GvspFormat::Payload; // @4   low four bits
    bool extendedIds = false;                // @4   0x80
    std::uint32_t packetId = 0;              // @5   u24; extended: @16  u32; 0: the leader
    bool operator==(const GvspHeader&) const = default;

    constexpr std::size_t size() const
    {
        return extendedIds ? kGvspExtendedHeaderSize : kGvspHeaderSize;
    }
    /// Sent again on request, data valid.
    constexpr bool isResent() const
    {
        return status == GvcpStatus::PacketResend || (flags & kGvspResent) != 0;
    }
};

/// Writes header.size() bytes to the front of `packet`, which must be that long. @return the size
inline std::size_t encode(const GvspHeader& header, ByteSpan packet)
{
    assert(packet.size() >= header.size());
    std::uint8_t* const at = packet.data();
    const auto format = static_cast<std::uint8_t>(header.format);
    putU16(at, static_cast<std::uint16_t>(header.status));
    if (!header.extendedIds) {
        putU16(at + 2, static_cast<std::uint16_t>(header.blockId));
        at[4] = format;
        putU24(at + 5, header.packetId);
        return kGvspHeaderSize;
    }
    putU16(at + 2, header.flags);
    at[4] = static_cast<std::uint8_t>(kGvspExtendedIdFlag | format);
    putU24(at + 5, 0);
    putU64(at + 8, header.blockId);
    putU32(at + 16, header.packetId);
    return kGvspExtendedHeaderSize;
}

/// Nothing for a packet shorter than its header. What follows header.size() bytes is the body.
inline std::optional<GvspHeader> decodeGvspHeader(ByteView packet)
{
    if (packet.size() < kGvspHeaderSize) {
        return std::nullopt;
    }
    const std::uint8_t* const at = packet.data();
    GvspHeader header{.status = GvcpStatus{getU16(at)},
                      .format = GvspFormat{static_cast<std::uint8_t>(at[4] & 0x0F)},
                      .extendedIds = (at[4] & kGvspExtendedIdFlag) != 0};
    if (!header.extendedIds) {
        header.blockId = getU16(at + 2);
        header.packetId = getU24(at + 5);
        return header;
    }
    if (packet.size() < kGvspExtendedHeaderSize) {
        return std::nullopt;
    }
    header.flags = getU16(at + 2);
    header.blockId = getU64(at + 8);
    header.packetId = getU32(at + 16);
    return header;
}

} // namespace gige::wire

#endif
