/// GVCP datagrams: 8 header bytes, big-endian, then the payload (GvcpPayloads.h).
#ifndef TELVO_GIGE_WIRE_GVCPHEADER_H
#define TELVO_GIGE_WIRE_GVCPHEADER_H

#include "ByteOrder.h"
#include "GvcpStatus.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace gige::wire
{

/// UDP port on which every device listens for commands and resend requests.
constexpr std::uint16_t kGvcpPort = 3956;
constexpr std::size_t kGvcpHeaderSize = 8;
/// Largest payload: 576 bytes of IP datagram less 20 (IP), 8 (UDP) and 8 (GVCP).
constexpr std::size_t kGvcpMaxPayload = 540;
constexpr std::size_t kGvcpMaxDatagram = kGvcpHeaderSize + kGvcpMaxPayload;

/// First byte of a command.
constexpr std::uint8_t kGvcpCommandKey = 0x42;

// Flags, byte 1 of a command.
constexpr std::uint8_t kGvcpAckRequired = 0x01;
constexpr std::uint8_t kGvcpBroadcastAckAllowed = 0x10; // DISCOVERY and FORCEIP
constexpr std::uint8_t kGvcpExtendedIds = 0x10;         // PACKETRESEND: 64-bit block id layout

/// Codes of commands and of their acknowledges (command + 1). Other values occur.
enum class GvcpCommand : std::uint16_t {
    Discovery = 0x0002,
    DiscoveryAck = 0x0003,
    ForceIp = 0x0004,
    ForceIpAck = 0x0005,
    PacketResend = 0x0040, // never acknowledged
    ReadRegister = 0x0080,
    ReadRegisterAck = 0x0081,
    WriteRegister = 0x0082,
    WriteRegisterAck = 0x0083,
    ReadMemory = 0x0084,
    ReadMemoryAck = 0x0085,
    WriteMemory = 0x0086,
    WriteMemoryAck = 0x0087,
    PendingAck = 0x0089, // instead of the acknowledge: more time is needed
};

/// Code of the acknowledge that answers a command.
constexpr GvcpCommand ackOf(GvcpCommand command)
{
    return GvcpCommand{static_cast<std::uint16_t>(static_cast<std::uint16_t>(command) + 1)};
}

/// The request id after this one: 0 is never used.
constexpr std::uint16_t nextRequestId(std::uint16_t id)
{
    return id == 0xFFFF ? std::uint16_t{1} : static_cast<std::uint16_t>(id + 1);
}

/// GVCP command header, 8 bytes.
struct GvcpCommandHeader {
    std::uint8_t flags = 0;                       // @1 (@0 is the key, 0x42)
    GvcpCommand command = GvcpCommand::Discovery; // @2  u16
    std::uint16_t length = 0;                     // @4  u16, bytes after this header
    std::uint16_t requestId = 0;                  // @6  u16, never 0
    bool operator==(const GvcpCommandHeader&) const = default;
};

/// GVCP acknowledge header, 8 bytes.
struct GvcpAckHeader {
    GvcpStatus status = GvcpStatus::Success;         // @0  u16
    GvcpCommand command = GvcpCommand::DiscoveryAck; // @2  u16, acknowledge code
    std::uint16_t length = 0;                        // @4  u16, bytes after this header
    std::uint16_t requestId = 0;                     // @6  u16, id of the command
    bool operator==(const GvcpAckHeader&) const = default;
};

std::array<std::uint8_t, kGvcpHeaderSize> encode(const GvcpCommandHeader& header);
std::array<std::uint8_t, kGvcpHeaderSize> encode(const GvcpAckHeader& header);

/// Nothing for less than 8 bytes or another key. The length field is not checked.
std::optional<GvcpCommandHeader> decodeCommandHeader(ByteView datagram);
/// Nothing for less than 8 bytes or a command. The length field is not checked.
std::optional<GvcpAckHeader> decodeAckHeader(ByteView datagram);

/// A received command; the payload is part of the datagram.
struct GvcpCommandPacket {
    GvcpCommandHeader header{};
    ByteView payload{};
};

/// A received acknowledge; the payload is part of the datagram.
struct GvcpAckPacket {
    GvcpAckHeader header{};
    ByteView payload{};
};

/// As decodeCommandHeader; nothing also when the length field is not exactly what follows.
std::optional<GvcpCommandPacket> decodeCommand(ByteView datagram);
/// As decodeAckHeader; nothing also when less follows than the length field says. Bytes beyond it
/// are ignored. An error acknowledge normally has no payload: look at the status first.
std::optional<GvcpAckPacket> decodeAck(ByteView datagram);

/// A whole command. @param payload  at most kGvcpMaxPayload bytes
Bytes commandDatagram(GvcpCommand command, std::uint8_t flags, std::uint16_t requestId,
                      ByteView payload = {});
/// A whole acknowledge. @param command  acknowledge code
Bytes ackDatagram(GvcpStatus status, GvcpCommand command, std::uint16_t requestId,
                  ByteView payload = {});

} // namespace gige::wire

#endif
