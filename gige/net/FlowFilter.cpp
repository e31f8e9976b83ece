#include "FlowFilter.h"

#include <array>
#include <linux/filter.h>
#include <linux/if_packet.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace gige::net
{

namespace
{

// Offsets in the IP header, which both kinds of sockets find through SKF_NET_OFF, and in the UDP
// header behind it.
constexpr std::uint32_t kVersionAndLength = 0;
constexpr std::uint32_t kTotalLength = 2;
constexpr std::uint32_t kFragment = 6;
constexpr std::uint32_t kProtocol = 9;
constexpr std::uint32_t kSource = 12;
constexpr std::uint32_t kDestination = 16;
constexpr std::uint32_t kDestinationPort = 22;

constexpr std::uint32_t kPlainIpv4 = 0x45;      // a header of 20 bytes
constexpr std::uint32_t kFragmentBits = 0x3FFF; // offset, and more to come
constexpr std::uint32_t kWhole = 0xFFFFFFFF;    // take all of the packet
constexpr std::uint32_t kNothing = 0;

sock_filter load(int size, std::uint32_t offset)
{
    return BPF_STMT(static_cast<std::uint16_t>(BPF_LD | size | BPF_ABS),
                    static_cast<std::uint32_t>(SKF_NET_OFF) + offset);
}

/// @param toEnd  instructions from the next one to the verdict on other packets
sock_filter demand(int comparison, std::uint32_t value, std::uint8_t toEnd)
{
    return BPF_JUMP(static_cast<std::uint16_t>(BPF_JMP | comparison | BPF_K), value, 0, toEnd);
}

/// Demands the opposite.
sock_filter forbid(int comparison, std::uint32_t value, std::uint8_t toEnd)
{
    return BPF_JUMP(static_cast<std::uint16_t>(BPF_JMP | comparison | BPF_K), value, toEnd, 0);
}

} // namespace

bool attachFilter(NativeSocket socket, FlowFilter kind, const Flow& flow, std::size_t longest)
{
    const bool only = kind == FlowFilter::OnlyFlow;
    std::array<sock_filter, 18> program{{
        BPF_STMT(BPF_LD | BPF_B | BPF_ABS, static_cast<std::uint32_t>(SKF_AD_OFF) +
                                               static_cast<std::uint32_t>(SKF_AD_PKTTYPE)),
        demand(BPF_JEQ, PACKET_HOST, 15), // not another station's
        load(BPF_B, kVersionAndLength),
        demand(BPF_JEQ, kPlainIpv4, 13),
        load(BPF_B, kProtocol),
        demand(BPF_JEQ, IPPROTO_UDP, 11),
        load(BPF_W, kSource),
        demand(BPF_JEQ, flow.source.value, 9),
        load(BPF_W, kDestination),
        demand(BPF_JEQ, flow.destination.address.value, 7),
        load(BPF_H, kFragment),
        forbid(BPF_JSET, kFragmentBits, 5),
        load(BPF_H, kDestinationPort),
        demand(BPF_JEQ, flow.destination.port, 3),
        load(BPF_H, kTotalLength),
        forbid(BPF_JGT, static_cast<std::uint32_t>(longest), 1),
        BPF_STMT(BPF_RET | BPF_K, only ? kWhole : kNothing),
        BPF_STMT(BPF_RET | BPF_K, only ? kNothing : kWhole),
    }};
    const sock_fprog filter{.len = static_cast<unsigned short>(program.size()),
                            .filter = program.data()};
    return setsockopt(socket, SOL_SOCKET, SO_ATTACH_FILTER, &filter, sizeof filter) == 0;
}

void detachFilter(NativeSocket socket)
{
    const int unused = 0;
    setsockopt(socket, SOL_SOCKET, SO_DETACH_FILTER, &unused, sizeof unused);
}

} // namespace gige::net
