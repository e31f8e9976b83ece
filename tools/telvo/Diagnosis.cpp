#include "Diagnosis.h"

#include "CountText.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace telvo
{

namespace
{

using Kind = Finding::Kind;

/// A frame rate below this share of the camera's own is too low.
constexpr double kGoodShare = 0.8;
/// A cable's bits a second that are left for pictures, of a million.
constexpr std::int64_t kPayloadBits = 950'000;

std::string listOf(const Interfaces& interfaces)
{
    std::string text;
    for (const gige::net::NetworkInterface& each : interfaces) {
        text +=
            (text.empty() ? "" : ", ") + each.name + " (" + gige::net::toText(each.address) + ')';
    }
    return text;
}

std::string number(std::int64_t value)
{
    return std::to_string(value);
}

void addControl(const CameraLook& look, Findings& findings)
{
    const auto host = look.controllingHost();
    if (!host) {
        findings.push_back({Kind::Good, "nobody controls the camera"});
        return;
    }
    findings.push_back({Kind::Problem,
                        "the camera is controlled by " +
                            (host->empty() ? "another program" : "a program on " + *host),
                        "end that program"});
}

void addState(const CameraLook& look, Findings& findings)
{
    const std::string state = look.text("CameraState").value_or("unknown");
    if (state == "Recording") {
        findings.push_back({Kind::Problem, "the camera records", "'telvo stop' ends that"});
    } else if (state == "FlashWrite") {
        findings.push_back({Kind::Problem, "the camera copies a recording to its flash card",
                            "wait, or end it with 'telvo flash stop'"});
    } else {
        findings.push_back({Kind::Good, "the camera is at rest"});
    }
}

void addWaiting(const CameraLook& look, Findings& findings)
{
    if (look.flag("SyncInEnable").value_or(false)) {
        findings.push_back({Kind::Hint, "pictures are exposed by the sync input only",
                            "give it its signal, or 'telvo set sync-in=off'"});
    }
    if (look.flag("ExtTriggerEnable").value_or(false)) {
        findings.push_back({Kind::Hint, "recordings wait for the trigger input",
                            "give it its pulse, or 'telvo set external-trigger=off'"});
    }
}

void addDataRate(const CameraLook& look, std::int64_t linkSpeed, Findings& findings)
{
    const std::int64_t bits = 8 * look.integer("PayloadSize").value_or(0) *
                              look.integer("AcquisitionFrameRateRaw").value_or(0);
    const std::int64_t megabits = bits / 1'000'000;
    if (linkSpeed > 0 && bits > linkSpeed * kPayloadBits) {
        findings.push_back({Kind::Hint,
                            "live pictures make " + number(megabits) +
                                " Mbit/s, the camera's link "
                                "has " +
                                number(linkSpeed),
                            "expect fewer live pictures, or lower the frame rate or the size; "
                            "recordings are not concerned"});
    } else {
        findings.push_back({Kind::Good, "live pictures make " + number(megabits) + " Mbit/s"});
    }
}

/// A place has the losses if at least so many of them are there.
constexpr double kMostLosses = 0.7;
constexpr std::int64_t kFewLosses = 5; // tell nothing of a place

struct LossText {
    const char* place;
    const char* advice;
};

/// Packets that get lost where a picture begins or ends have a reason there.
LossText whereIn(const LostByTenth& lost, std::int64_t all)
{
    const double most = kMostLosses * static_cast<double>(all);
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

void addLossPlaces(const LostByTenth& lost, Findings& findings)
{
    const std::int64_t all = std::accumulate(lost.begin(), lost.end(), std::int64_t{0});
    if (all >= kFewLosses) {
        const LossText text = whereIn(lost, all);
        findings.push_back(
            {Kind::Hint,
             countText(all, "packet") + " got lost while none was asked for again, " + text.place,
             text.advice});
    }
}

/// Pictures that are not as the camera sent them.
bool isHarmed(const StreamProbe& probe)
{
    return probe.framesFailed > 0 || probe.framesDropped > 0 || probe.packetsMissing > 0;
}

bool hasLosses(const StreamProbe& probe)
{
    return isHarmed(probe) || probe.packetsResent > 0 ||
           std::ranges::any_of(probe.lost, [](std::int64_t packets) { return packets > 0; });
}

/// Receiving is the work of one thread, to which the system leaves little more than this of a core.
constexpr double kFullCore = 0.9;
/// Of all cores: a thread that becomes ready has to wait for one.
constexpr double kFullProcessor = 0.95;
constexpr std::int64_t kJumboPacket = 9000; // bytes

std::string percent(double share)
{
    return number(std::llround(share * 100)) + " %";
}

std::string lessWork(const StreamProbe& probe)
{
    std::string advice = "lower the frame rate";
    if (probe.packetSize < kJumboPacket) {
        advice += " or let larger packets through (jumbo frames)";
    }
    if (!probe.isRingInUse) {
        advice += "; on Linux the right CAP_NET_RAW makes single packets less work";
    }
    return advice;
}

void addProcessor(const StreamProbe& probe, Findings& findings)
{
    const std::string own = "receiving took " + percent(probe.load.own) + " of a core";
    const Kind kind = isHarmed(probe) ? Kind::Problem : Kind::Hint;
    const bool isTooSlow = probe.load.own >= kFullCore;
    if (!hasLosses(probe) || (!isTooSlow && probe.load.all < kFullProcessor)) {
        findings.push_back({Kind::Good, own});
    } else if (isTooSlow) {
        findings.push_back(
            {kind, "the processor is too slow for this rate: " + own, lessWork(probe)});
    } else {
        findings.push_back({kind,
                            "the processor is too busy: " + own + ", all programs together " +
                                percent(probe.load.all) + " of all cores",
                            "end other programs, or " + lessWork(probe)});
    }
}

void addLosses(const StreamProbe& probe, Findings& findings)
{
    if (probe.framesFailed > 0 || probe.packetsMissing > 0) {
        findings.push_back({Kind::Problem,
                            countText(probe.framesFailed, "picture") + " came incomplete, " +
                                countText(probe.packetsMissing, "packet") +
                                (probe.packetsMissing == 1 ? " is" : " are") + " missing",
                            "look at cable and switch; a larger packet-delay spreads the packets"});
    } else if (probe.packetsResent > 0) {
        findings.push_back(
            {Kind::Hint,
             countText(probe.packetsResent, "packet") + " got lost and came when asked for again",
             "leave resends on (--resends; a program of your own has to ask for them); look at "
             "cable and switch"});
    }
    if (probe.framesDropped > 0) {
        findings.push_back({Kind::Problem,
                            countText(probe.framesDropped, "picture") + " found no buffer",
                            "the computer is too slow for this rate: end other programs, or lower "
                            "the frame rate"});
    }
}

void addRate(const StreamProbe& probe, Findings& findings)
{
    const double rate = static_cast<double>(probe.framesWhole) / probe.time.count();
    const std::string text = number(probe.framesWhole) + " whole pictures in " +
                             number(static_cast<std::int64_t>(probe.time.count() * 1000)) + " ms";
    if (rate < kGoodShare * static_cast<double>(probe.frameRate)) {
        findings.push_back(
            {Kind::Hint, text + ", the camera is set to " + number(probe.frameRate) + " a second",
             "the camera leaves out what its link or packet-delay does not carry"});
    } else {
        findings.push_back({Kind::Good, text});
    }
}

} // namespace

Findings diagnoseSilence(const Interfaces& interfaces)
{
    if (interfaces.empty()) {
        return {{Kind::Problem, "there is no network interface that is up",
                 "plug the cable in and give the interface an address"}};
    }
    return {{Kind::Problem, "no camera answers on " + listOf(interfaces),
             "is it switched on and plugged in? A firewall must let UDP from port 3956 pass"}};
}

Findings diagnoseAddress(const gige::control::DiscoveredDevice& device)
{
    const std::string ip = gige::net::toText(device.ip());
    if (device.hasRival) {
        return {{Kind::Problem, "two addresses claim the camera's MAC address",
                 "give each camera a MAC address of its own"}};
    }
    if (!device.inSubnet()) {
        return {{Kind::Problem, ip + " is not in the subnet of " + device.nic.name,
                 "'telvo force-ip' gives the camera an address there"}};
    }
    return {{Kind::Good, ip + " answers on " + device.nic.name}};
}

Findings diagnoseResends(bool cameraResends)
{
    if (cameraResends) {
        return {};
    }
    return {
        {Kind::Hint, "the camera sends no packet again",
         "each lost packet costs a picture: '--set packet-delay=N' at live and download spreads "
         "them"}};
}

Findings diagnoseCamera(const CameraLook& look, std::int64_t linkSpeed)
{
    Findings findings;
    addControl(look, findings);
    addState(look, findings);
    addWaiting(look, findings);
    addDataRate(look, linkSpeed, findings);
    const Findings resends = diagnoseResends(look.resendsPackets());
    findings.insert(findings.end(), resends.begin(), resends.end());
    return findings;
}

Findings diagnoseBuffer(std::size_t granted, std::size_t asked)
{
    if (granted >= asked) {
        return {{Kind::Good, "the receive buffer is as large as asked for"}};
    }
    return {{Kind::Hint,
             "the receive buffer has " + number(static_cast<std::int64_t>(granted >> 10)) +
                 " KiB, " + number(static_cast<std::int64_t>(asked >> 10)) + " were asked for",
             "sysctl -w net.core.rmem_max=" + number(static_cast<std::int64_t>(asked))}};
}

Findings diagnoseStream(const StreamProbe& probe, std::uint32_t mtu)
{
    if (!probe.problem.empty()) {
        return {{Kind::Problem, probe.problem, "'telvo state' shows who has the camera"}};
    }
    if (probe.packets == 0) {
        return {{Kind::Problem, "the camera sends pictures, and no packet of them arrives",
                 "a firewall must let UDP from the camera pass to this program"}};
    }
    Findings findings;
    if (mtu != 0 && probe.packetSize < std::min<std::int64_t>(mtu, kJumboPacket)) {
        findings.push_back({Kind::Hint,
                            "packets of " + number(probe.packetSize) +
                                " bytes come through, the "
                                "interface takes " +
                                number(mtu),
                            "let switch and camera take as large ones (jumbo frames)"});
    } else {
        findings.push_back(
            {Kind::Good, "packets of " + number(probe.packetSize) + " bytes come through"});
    }
    addProcessor(probe, findings);
    addLossPlaces(probe.lost, findings);
    addLosses(probe, findings);
    addRate(probe, findings);
    return findings;
}

} // namespace telvo
