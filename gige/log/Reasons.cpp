#include "Reasons.h"

#include <cmath>
#include <numeric>

namespace gige::log
{

namespace
{

constexpr const char* kFirewall = "a firewall must let UDP from the camera pass to this program";
/// A place has the losses if at least so many of them are there.
constexpr double kMostLosses = 0.7;

/// "1 packet", "12 packets".
Line count(std::int64_t number, const char* noun)
{
    return Line() << number << " " << noun << (number == 1 ? "" : "s");
}

Line programOn(std::string_view host)
{
    return host.empty() ? Line("another program") : Line("a program on ") << host;
}

} // namespace

Reason noInterface()
{
    return {"there is no network interface that is up",
            "plug the cable in and give the interface an address"};
}

Reason noAnswer(std::string_view interfaces)
{
    return {Line("no camera answers on ") << interfaces,
            "is it switched on and plugged in? A firewall must let UDP from port 3956 pass"};
}

Reason rivalAddresses()
{
    return {"two addresses claim the camera's MAC address",
            "give each camera a MAC address of its own"};
}

Reason notInSubnet(std::string_view address, std::string_view interface)
{
    return {Line(address) << " is not in the subnet of " << interface,
            "'telvo force-ip' gives the camera an address there"};
}

Reason controlledBy(std::string_view host)
{
    return {Line("the camera is controlled by ") << programOn(host), "end that program"};
}

Reason heartbeatUnanswered()
{
    return {"the camera does not answer the heartbeat"};
}

Reason linkSilent(std::int64_t milliseconds)
{
    return {Line("the link is lost: the camera has not answered for ") << milliseconds << " ms",
            "is it switched on and plugged in?"};
}

Reason controlTaken(std::string_view host)
{
    return {Line("the link is lost: the camera is controlled by ") << programOn(host) << " now",
            "end that program"};
}

Reason controlEnded()
{
    return {"the link is lost: the camera has taken the control away",
            "was this program stopped for longer than its heartbeat timeout, or the camera "
            "restarted?"};
}

Reason linkClosed()
{
    return {"the link is lost: a command went unanswered",
            "is the camera switched on and plugged in?"};
}

Reason smallPackets(std::int64_t size, std::uint32_t mtu)
{
    return {Line("packets of ") << size << " bytes come through, the interface takes " << mtu,
            "let switch and camera take as large ones (jumbo frames)"};
}

Reason noTestPacket(std::uint32_t size)
{
    return {Line("no test packet came through, packets keep their ") << size << " bytes",
            Line(kFirewall) << " (some cameras send no test packets)"};
}

Reason smallBuffer(std::size_t granted, std::size_t asked)
{
    return {Line("the receive buffer has ")
                << (granted >> 10) << " KiB, " << (asked >> 10) << " were asked for",
            Line("sysctl -w net.core.rmem_max=") << asked};
}

Reason noStream(int error)
{
    return {Line("cannot open a stream: the system gives no socket or thread (error ")
                << error << ")",
            "end other programs that receive"};
}

Reason noPackets()
{
    return {"no packet has come for a second since the camera was started",
            Line(kFirewall) << "; or does the camera wait for a trigger or a sync input?"};
}

Reason noPacketOfPictures()
{
    return {"the camera sends pictures, and no packet of them arrives", kFirewall};
}

std::int64_t sumOf(const LostByTenth& lost)
{
    return std::accumulate(lost.begin(), lost.end(), std::int64_t{0});
}

/// Packets that get lost where a picture begins or ends have a reason there.
Reason lossPlace(const LostByTenth& lost)
{
    const double most = kMostLosses * static_cast<double>(sumOf(lost));
    const std::size_t last = lost.size() - 1;
    if (static_cast<double>(lost[0] + lost[1]) >= most) {
        return {"most of them at the start of a picture",
                "the computer or its network interface wakes too late: switch off the power saving "
                "of interface and CPU"};
    }
    if (static_cast<double>(lost[last] + lost[last - 1]) >= most) {
        return {
            "most of them at the end of a picture",
            "a buffer on the way runs over while a picture comes: a larger packet-delay spreads "
            "the packets, a larger ring ('ethtool -G') or receive buffer takes more of them"};
    }
    return {"spread over the pictures", "look at cable, plugs and switch"};
}

Reason incompletePictures(std::int64_t pictures, std::int64_t packets)
{
    return {count(pictures, "picture") << " came incomplete, " << count(packets, "packet")
                                       << (packets == 1 ? " is" : " are") << " missing",
            "look at cable and switch; a larger packet-delay spreads the packets"};
}

Reason lostAndCame(std::int64_t packets)
{
    return {count(packets, "packet") << " got lost and came when asked for again",
            "leave resends on (--resends; a program of your own has to ask for them); look at "
            "cable and switch"};
}

Reason noBuffer(std::int64_t pictures)
{
    return {count(pictures, "picture") << " found no buffer",
            "the computer is too slow for this rate: end other programs, or lower the frame rate"};
}

Reason longPictures(std::int64_t pictures)
{
    return {count(pictures, "picture") << " did not fit into the buffers",
            "the program has to give buffers of the camera's PayloadSize"};
}

Reason noResends()
{
    return {"the camera sends no packet again",
            "each lost packet costs a picture: '--set packet-delay=N' at live and download spreads "
            "them"};
}

Line percent(double share)
{
    return Line() << std::llround(share * 100) << " %";
}

Line receivingTook(double load)
{
    return Line("receiving took ") << percent(load) << " of a core";
}

Line lessWork(std::int64_t packetSize, bool isRingInUse)
{
    Line advice("lower the frame rate");
    if (packetSize < kJumboPacket) {
        advice << " or let larger packets through (jumbo frames)";
    }
    if (!isRingInUse) {
        advice << "; on Linux the right CAP_NET_RAW makes single packets less work";
    }
    return advice;
}

Reason slowProcessor(double load, std::int64_t packetSize, bool isRingInUse)
{
    return {Line("the processor is too slow for this rate: ") << receivingTook(load),
            lessWork(packetSize, isRingInUse)};
}

Reason ringTaken()
{
    return {"packets come by the ring that is shared with the kernel now"};
}

Reason ringGivenUp()
{
    return {
        "packets come by the socket again, no longer by the ring that is shared with the kernel"};
}

} // namespace gige::log
