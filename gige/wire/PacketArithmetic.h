/// How a block is cut into packets. Packet 0 is the leader, 1..N are data, N + 1 is the trailer;
/// all data packets but the last are full.
#ifndef TELVO_GIGE_WIRE_PACKETARITHMETIC_H
#define TELVO_GIGE_WIRE_PACKETARITHMETIC_H

#include "GvspHeader.h"

#include <cstddef>
#include <cstdint>

namespace gige::wire
{

/// What an IP datagram carries besides the UDP payload: 20 bytes of IP, 8 of UDP.
constexpr std::size_t kIpUdpHeaderSize = 28;

/// Image bytes in a full data packet. @param packetSize  bytes of the IP datagram (SCPS)
/// @return 0 for a packet size that holds no data
constexpr std::size_t dataBytesPerPacket(std::size_t packetSize, bool extendedIds = false)
{
    const std::size_t overhead =
        kIpUdpHeaderSize + (extendedIds ? kGvspExtendedHeaderSize : kGvspHeaderSize);
    return packetSize > overhead ? packetSize - overhead : 0;
}

/// N, the number of data packets. @param dataBytes  per full packet
/// @return 0 for packets that hold no data
constexpr std::uint64_t dataPacketCount(std::uint64_t blockBytes, std::size_t dataBytes)
{
    return dataBytes == 0 ? 0 : blockBytes / dataBytes + (blockBytes % dataBytes != 0 ? 1 : 0);
}

/// Where data packet `packetId` (1..N) lies in the block.
constexpr std::uint64_t dataOffset(std::uint32_t packetId, std::size_t dataBytes)
{
    return std::uint64_t{packetId - 1} * dataBytes;
}

/// The block id after this one: 0 is never used for an image, and standard ids wrap 65535 to 1.
constexpr std::uint64_t nextBlockId(std::uint64_t id, bool extendedIds)
{
    return !extendedIds && id == 0xFFFF ? 1 : id + 1;
}

/// Test packet: block id 0 and packet id 0; only its length counts.
constexpr bool isTestPacket(const GvspHeader& header)
{
    return header.blockId == 0;
}

} // namespace gige::wire

#endif
