#include "GvcpPayloads.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace gige::wire
{

namespace
{

constexpr std::size_t kResendSize = 12;
constexpr std::size_t kResendSizeExtended = 20;
constexpr std::uint32_t kPacketIdMask = 0xFFFFFF; // of 16-bit ids

Bytes encodeWords(const std::vector<std::uint32_t>& words)
{
    assert(words.size() <= kMaxReadRegisters);
    Bytes bytes(words.size() * 4);
    for (std::size_t i = 0; i < words.size(); ++i) {
        putU32(&bytes[4 * i], words[i]);
    }
    return bytes;
}

std::optional<std::vector<std::uint32_t>> decodeWords(ByteView payload)
{
    if (payload.size() % 4 != 0 || payload.size() > kGvcpMaxPayload) {
        return std::nullopt;
    }
    std::vector<std::uint32_t> words(payload.size() / 4);
    for (std::size_t i = 0; i < words.size(); ++i) {
        words[i] = getU32(&payload[4 * i]);
    }
    return words;
}

} // namespace

Bytes encode(const ForceIp& command)
{
    Bytes bytes(kForceIpSize);
    std::copy(command.mac.bytes.begin(), command.mac.bytes.end(), bytes.begin() + 2);
    putU32(&bytes[20], command.address);
    putU32(&bytes[36], command.subnetMask);
    putU32(&bytes[52], command.gateway);
    return bytes;
}

std::optional<ForceIp> decodeForceIp(ByteView payload)
{
    if (payload.size() != kForceIpSize) {
        return std::nullopt;
    }
    ForceIp command{.address = getU32(&payload[20]),
                    .subnetMask = getU32(&payload[36]),
                    .gateway = getU32(&payload[52])};
    std::copy_n(payload.begin() + 2, command.mac.bytes.size(), command.mac.bytes.begin());
    return command;
}

std::size_t encodeDatagram(const PacketResend& command, std::uint16_t requestId,
                           std::span<std::uint8_t, kMaxPacketResendDatagram> datagram)
{
    const bool extended = command.extendedIds;
    const std::size_t size = extended ? kResendSizeExtended : kResendSize;
    const auto header =
        encode(GvcpCommandHeader{.flags = extended ? kGvcpExtendedIds : std::uint8_t{0},
                                 .command = GvcpCommand::PacketResend,
                                 .length = static_cast<std::uint16_t>(size),
                                 .requestId = requestId});
    std::copy(header.begin(), header.end(), datagram.begin());
    std::uint8_t* const payload = &datagram[kGvcpHeaderSize];
    const std::uint32_t mask = extended ? 0xFFFFFFFF : kPacketIdMask;
    putU16(payload, command.channel);
    putU16(payload + 2, extended ? std::uint16_t{0} : static_cast<std::uint16_t>(command.blockId));
    putU32(payload + 4, command.firstPacket & mask);
    putU32(payload + 8, command.lastPacket & mask);
    if (extended) {
        putU64(payload + 12, command.blockId);
    }
    return kGvcpHeaderSize + size;
}

std::optional<PacketResend> decodePacketResend(std::uint8_t flags, ByteView payload)
{
    const bool extended = (flags & kGvcpExtendedIds) != 0;
    if (payload.size() != (extended ? kResendSizeExtended : kResendSize)) {
        return std::nullopt;
    }
    const std::uint32_t mask = extended ? 0xFFFFFFFF : kPacketIdMask;
    return PacketResend{.extendedIds = extended,
                        .channel = getU16(payload.data()),
                        .blockId = extended ? getU64(&payload[12]) : getU16(&payload[2]),
                        .firstPacket = getU32(&payload[4]) & mask,
                        .lastPacket = getU32(&payload[8]) & mask};
}

Bytes encode(const ReadRegister& command)
{
    return encodeWords(command.addresses);
}

std::optional<ReadRegister> decodeReadRegister(ByteView payload)
{
    auto addresses = decodeWords(payload);
    if (!addresses || addresses->empty()) {
        return std::nullopt;
    }
    return ReadRegister{std::move(*addresses)};
}

Bytes encode(const ReadRegisterAck& ack)
{
    return encodeWords(ack.values);
}

Bytes encode(const WriteRegister& command)
{
    assert(command.writes.size() <= kMaxWriteRegisters);
    Bytes bytes(command.writes.size() * 8);
    for (std::size_t i = 0; i < command.writes.size(); ++i) {
        putU32(&bytes[8 * i], command.writes[i].address);
        putU32(&bytes[8 * i + 4], command.writes[i].value);
    }
    return bytes;
}

std::optional<WriteRegister> decodeWriteRegister(ByteView payload)
{
    if (payload.empty() || payload.size() % 8 != 0 || payload.size() > kMaxWriteRegisters * 8) {
        return std::nullopt;
    }
    WriteRegister command;
    command.writes.reserve(payload.size() / 8);
    for (std::size_t at = 0; at < payload.size(); at += 8) {
        command.writes.push_back({getU32(&payload[at]), getU32(&payload[at + 4])});
    }
    return command;
}

Bytes encode(const ReadMemory& command)
{
    Bytes bytes(8);
    putU32(bytes.data(), command.address);
    putU16(&bytes[6], command.count);
    return bytes;
}

std::optional<ReadMemory> decodeReadMemory(ByteView payload)
{
    if (payload.size() != 8) {
        return std::nullopt;
    }
    return ReadMemory{.address = getU32(payload.data()), .count = getU16(&payload[6])};
}

Bytes encode(const MemoryBlock& block)
{
    assert(block.data.size() <= kMaxMemoryBytes);
    Bytes bytes(4 + block.data.size());
    putU32(bytes.data(), block.address);
    std::ranges::copy(block.data, bytes.begin() + 4);
    return bytes;
}

std::optional<MemoryBlock> decodeMemoryBlock(ByteView payload)
{
    if (payload.size() <= 4 || payload.size() > kGvcpMaxPayload) {
        return std::nullopt;
    }
    return MemoryBlock{.address = getU32(payload.data()), .data = payload.subspan(4)};
}

std::array<std::uint8_t, 4> encode(const WriteAck& ack)
{
    std::array<std::uint8_t, 4> bytes{};
    putU16(&bytes[2], ack.index);
    return bytes;
}

std::array<std::uint8_t, 4> encode(const PendingAck& ack)
{
    std::array<std::uint8_t, 4> bytes{};
    const auto time =
        std::clamp<std::chrono::milliseconds::rep>(ack.timeToCompletion.count(), 0, 0xFFFF);
    putU16(&bytes[2], static_cast<std::uint16_t>(time));
    return bytes;
}

std::optional<PendingAck> decodePendingAck(ByteView payload)
{
    if (payload.size() < 4) {
        return std::nullopt;
    }
    return PendingAck{std::chrono::milliseconds(getU16(&payload[2]))};
}

} // namespace gige::wire
