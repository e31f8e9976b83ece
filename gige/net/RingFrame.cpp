#include "RingFrame.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstring>
#include <linux/if_packet.h>
#include <netinet/in.h>

namespace gige::net
{

namespace
{

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kIpHeader = 20;
constexpr std::size_t kUdpHeader = 8;
constexpr std::size_t kLinkRoom = 96;  // link header, alignment, padding of short packets
constexpr std::uint8_t kNotJoined = 0; // VIRTIO_NET_HDR_GSO_NONE
constexpr std::uint8_t kJoinedUdp = 5; // VIRTIO_NET_HDR_GSO_UDP_L4
constexpr std::uint32_t kVouched = TP_STATUS_CSUMNOTREADY | TP_STATUS_CSUM_VALID;

/// struct virtio_net_hdr, whose own header is not C++.
struct JoinedHeader {
    std::uint8_t flags;
    std::uint8_t kind;
    std::uint16_t headerSize;
    std::uint16_t segmentSize;
    std::uint16_t checksumStart;
    std::uint16_t checksumOffset;
};
static_assert(sizeof(JoinedHeader) == 10);

template <typename Header>
Header headerAt(Bytes bytes, std::size_t offset)
{
    Header header{};
    std::memcpy(&header, &bytes[offset], sizeof header);
    return header;
}

std::uint16_t getU16(Bytes bytes, std::size_t offset)
{
    return static_cast<std::uint16_t>(bytes[offset] << 8 | bytes[offset + 1]);
}

std::uint32_t getU32(Bytes bytes, std::size_t offset)
{
    return std::uint32_t{getU16(bytes, offset)} << 16 | getU16(bytes, offset + 2);
}

/// Sum of 16-bit words in this machine's order, which checksums may be computed in as well; an odd
/// byte at the end is followed by a 0.
std::uint64_t sumOf(Bytes bytes)
{
    std::uint64_t sum = 0;
    std::size_t at = 0;
    for (; at + sizeof(std::uint32_t) <= bytes.size(); at += sizeof(std::uint32_t)) {
        sum += headerAt<std::uint32_t>(bytes, at); // two words at once
    }
    std::uint32_t rest = 0;
    std::copy(bytes.begin() + static_cast<std::ptrdiff_t>(at), bytes.end(),
              reinterpret_cast<std::uint8_t*>(&rest));
    return sum + rest;
}

/// Whether a sum that includes the checksum tells that nothing was changed.
bool isRight(std::uint64_t sum)
{
    while (sum > 0xFFFF) {
        sum = (sum & 0xFFFF) + (sum >> 16);
    }
    return sum == 0xFFFF;
}

bool isUdpChecksumRight(Bytes ip, Bytes udp)
{
    const bool isUsed = getU16(udp, 6) != 0;
    const std::uint64_t pseudoHeader = sumOf(ip.subspan(12, 8)) + htons(IPPROTO_UDP) +
                                       htons(static_cast<std::uint16_t>(udp.size()));
    return !isUsed || isRight(pseudoHeader + sumOf(udp));
}

} // namespace

std::size_t frameOverhead()
{
    return sizeof(tpacket2_hdr) + sizeof(sockaddr_ll) + sizeof(JoinedHeader) + kLinkRoom;
}

std::optional<DatagramRun> decodeFrame(Bytes frame)
{
    const auto header = headerAt<tpacket2_hdr>(frame, 0);
    const std::size_t end = std::size_t{header.tp_mac} + header.tp_snaplen;
    if (header.tp_snaplen != header.tp_len || header.tp_net < header.tp_mac ||
        header.tp_mac < sizeof(JoinedHeader) || end > frame.size() || header.tp_net > end) {
        return std::nullopt;
    }
    const auto joined = headerAt<JoinedHeader>(frame, header.tp_mac - sizeof(JoinedHeader));
    if (joined.kind != kNotJoined && joined.kind != kJoinedUdp) {
        return std::nullopt;
    }
    return decodeUdp(frame.subspan(header.tp_net, end - header.tp_net),
                     (header.tp_status & kVouched) != 0,
                     joined.kind == kJoinedUdp ? joined.segmentSize : 0);
}

std::optional<DatagramRun> decodeUdp(Bytes ip, bool isVerified, std::size_t segment)
{
    if (ip.size() < kIpHeader + kUdpHeader || !isRight(sumOf(ip.first(kIpHeader)))) {
        return std::nullopt;
    }
    const std::size_t total = getU16(ip, 2);
    if (total < kIpHeader + kUdpHeader || total > ip.size()) {
        return std::nullopt;
    }
    Bytes udp = ip.subspan(kIpHeader, total - kIpHeader);
    const std::size_t length = getU16(udp, 4);
    if (length < kUdpHeader || length > udp.size()) {
        return std::nullopt;
    }
    udp = udp.first(length);
    if (!isVerified && !isUdpChecksumRight(ip, udp)) {
        return std::nullopt;
    }
    const Bytes payload = udp.subspan(kUdpHeader);
    return DatagramRun{.bytes = payload,
                       .segmentSize = segment == 0 ? payload.size() : segment,
                       .source = {.address = {getU32(ip, 12)}, .port = getU16(udp, 0)}};
}

} // namespace gige::net
