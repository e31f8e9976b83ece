#include "GvcpHeader.h"

#include <algorithm>
#include <cassert>

namespace gige::wire
{

namespace
{

template <typename Header>
Bytes datagram(Header header, ByteView payload)
{
    assert(payload.size() <= kGvcpMaxPayload);
    header.length = static_cast<std::uint16_t>(payload.size());
    const auto head = encode(header);
    Bytes bytes(head.size() + payload.size());
    std::ranges::copy(payload, std::ranges::copy(head, bytes.begin()).out);
    return bytes;
}

} // namespace

std::array<std::uint8_t, kGvcpHeaderSize> encode(const GvcpCommandHeader& header)
{
    std::array<std::uint8_t, kGvcpHeaderSize> bytes{kGvcpCommandKey, header.flags};
    putU16(&bytes[2], static_cast<std::uint16_t>(header.command));
    putU16(&bytes[4], header.length);
    putU16(&bytes[6], header.requestId);
    return bytes;
}

std::array<std::uint8_t, kGvcpHeaderSize> encode(const GvcpAckHeader& header)
{
    std::array<std::uint8_t, kGvcpHeaderSize> bytes{};
    putU16(&bytes[0], static_cast<std::uint16_t>(header.status));
    putU16(&bytes[2], static_cast<std::uint16_t>(header.command));
    putU16(&bytes[4], header.length);
    putU16(&bytes[6], header.requestId);
    return bytes;
}

std::optional<GvcpCommandHeader> decodeCommandHeader(ByteView datagram)
{
    if (datagram.size() < kGvcpHeaderSize || datagram[0] != kGvcpCommandKey) {
        return std::nullopt;
    }
    return GvcpCommandHeader{.flags = datagram[1],
                             .command = GvcpCommand{getU16(&datagram[2])},
                             .length = getU16(&datagram[4]),
                             .requestId = getU16(&datagram[6])};
}

std::optional<GvcpAckHeader> decodeAckHeader(ByteView datagram)
{
    if (datagram.size() < kGvcpHeaderSize || datagram[0] == kGvcpCommandKey) {
        return std::nullopt;
    }
    return GvcpAckHeader{.status = GvcpStatus{getU16(&datagram[0])},
                         .command = GvcpCommand{getU16(&datagram[2])},
                         .length = getU16(&datagram[4]),
                         .requestId = getU16(&datagram[6])};
}

std::optional<GvcpCommandPacket> decodeCommand(ByteView datagram)
{
    const auto header = decodeCommandHeader(datagram);
    if (!header || header->length != datagram.size() - kGvcpHeaderSize) {
        return std::nullopt;
    }
    return GvcpCommandPacket{*header, datagram.subspan(kGvcpHeaderSize)};
}

std::optional<GvcpAckPacket> decodeAck(ByteView datagram)
{
    const auto header = decodeAckHeader(datagram);
    if (!header || header->length > datagram.size() - kGvcpHeaderSize) {
        return std::nullopt;
    }
    return GvcpAckPacket{*header, datagram.subspan(kGvcpHeaderSize, header->length)};
}

Bytes commandDatagram(GvcpCommand command, std::uint8_t flags, std::uint16_t requestId,
                      ByteView payload)
{
    return datagram(GvcpCommandHeader{.flags = flags, .command = command, .requestId = requestId},
                    payload);
}

Bytes ackDatagram(GvcpStatus status, GvcpCommand command, std::uint16_t requestId, ByteView payload)
{
    return datagram(GvcpAckHeader{.status = status, .command = command, .requestId = requestId},
                    payload);
}

} // namespace gige::wire
