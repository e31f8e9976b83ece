/// What follows the header of each GVCP command and acknowledge. Decoders take the payload alone
/// and give nothing for one that is malformed; alignment and addresses are the device's to judge.
#ifndef TELVO_GIGE_WIRE_GVCPPAYLOADS_H
#define TELVO_GIGE_WIRE_GVCPPAYLOADS_H

#include "ByteOrder.h"
#include "GvcpHeader.h"
#include "MacAddress.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace gige::wire
{

/// Most registers in one READREG and one WRITEREG. More than one only if the device's GVCP
/// capability has kCapabilityConcatenation.
constexpr std::size_t kMaxReadRegisters = kGvcpMaxPayload / 4;
constexpr std::size_t kMaxWriteRegisters = kGvcpMaxPayload / 8;
/// Most bytes in one READMEM or WRITEMEM.
constexpr std::size_t kMaxMemoryBytes = kGvcpMaxPayload - 4;

/// FORCEIP, 56 bytes. Addresses are numbers: 127.0.0.1 is 0x7F000001.
struct ForceIp {
    MacAddress mac{};             // @2   of the device meant
    std::uint32_t address = 0;    // @20  0: restart IP configuration
    std::uint32_t subnetMask = 0; // @36
    std::uint32_t gateway = 0;    // @52
    bool operator==(const ForceIp&) const = default;
};
constexpr std::size_t kForceIpSize = 56;

Bytes encode(const ForceIp& command);
std::optional<ForceIp> decodeForceIp(ByteView payload);

/// Last packet id that means "to the end of the block, trailer included", 16-bit and 64-bit layout.
constexpr std::uint32_t kResendToEnd = 0xFFFFFF;
constexpr std::uint32_t kResendToEndExtended = 0xFFFFFFFF;

/// PACKETRESEND, 12 bytes, or 20 with 64-bit block ids. Packet range inclusive.
struct PacketResend {
    bool extendedIds = false;      // 64-bit layout; flag 0x10 of the header
    std::uint16_t channel = 0;     // @0  stream channel index
    std::uint64_t blockId = 0;     // @2  u16; 64-bit layout: @12  u64
    std::uint32_t firstPacket = 0; // @4  24 bits; 64-bit layout: 32
    std::uint32_t lastPacket = 0;  // @8  24 bits; 64-bit layout: 32
    bool operator==(const PacketResend&) const = default;
};
constexpr std::size_t kMaxPacketResendDatagram = kGvcpHeaderSize + 20;

/// Writes the whole command, header included, without allocating. @return bytes written: 20 or 28
std::size_t encodeDatagram(const PacketResend& command, std::uint16_t requestId,
                           std::span<std::uint8_t, kMaxPacketResendDatagram> datagram);
/// @param flags  of the command header: they tell the layout
std::optional<PacketResend> decodePacketResend(std::uint8_t flags, ByteView payload);

/// READREG, n x 4 bytes.
struct ReadRegister {
    std::vector<std::uint32_t> addresses{}; // 1..kMaxReadRegisters
    bool operator==(const ReadRegister&) const = default;
};

Bytes encode(const ReadRegister& command);
std::optional<ReadRegister> decodeReadRegister(ByteView payload);

/// READREG acknowledge, n x 4 bytes: on an error the values before the failing address.
struct ReadRegisterAck {
    std::vector<std::uint32_t> values{};
    bool operator==(const ReadRegisterAck&) const = default;
};

Bytes encode(const ReadRegisterAck& ack);

struct RegisterValue {
    std::uint32_t address = 0;
    std::uint32_t value = 0;
    bool operator==(const RegisterValue&) const = default;
};

/// WRITEREG, n x 8 bytes.
struct WriteRegister {
    std::vector<RegisterValue> writes{}; // 1..kMaxWriteRegisters
    bool operator==(const WriteRegister&) const = default;
};

Bytes encode(const WriteRegister& command);
std::optional<WriteRegister> decodeWriteRegister(ByteView payload);

/// READMEM, 8 bytes.
struct ReadMemory {
    std::uint32_t address = 0; // @0  multiple of 4
    std::uint16_t count = 0;   // @6  multiple of 4, at most kMaxMemoryBytes
    bool operator==(const ReadMemory&) const = default;
};

Bytes encode(const ReadMemory& command);
std::optional<ReadMemory> decodeReadMemory(ByteView payload);

/// WRITEMEM, and READMEM's acknowledge: 4 + n bytes. The data are borrowed.
struct MemoryBlock {
    std::uint32_t address = 0; // @0
    ByteView data{};           // @4  1..kMaxMemoryBytes
};

Bytes encode(const MemoryBlock& block);
std::optional<MemoryBlock> decodeMemoryBlock(ByteView payload);

/// Acknowledge of WRITEREG (index: registers written) and WRITEMEM (bytes written), 4 bytes.
struct WriteAck {
    std::uint16_t index = 0; // @2
    bool operator==(const WriteAck&) const = default;
};

std::array<std::uint8_t, 4> encode(const WriteAck& ack);

/// PENDING_ACK, 4 bytes.
struct PendingAck {
    std::chrono::milliseconds timeToCompletion{0}; // @2  0..65535
    bool operator==(const PendingAck&) const = default;
};

std::array<std::uint8_t, 4> encode(const PendingAck& ack);
std::optional<PendingAck> decodePendingAck(ByteView payload);

} // namespace gige::wire

#endif
