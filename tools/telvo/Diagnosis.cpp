#include "Diagnosis.h"

#include "CountText.h"

#include "Discovery.h"
#include "Reasons.h"

#include <algorithm>

namespace telvo
{

namespace
{

using Kind = Finding::Kind;
namespace log = gige::log;

/// A frame rate below this share of the camera's own is too low.
constexpr double kGoodShare = 0.8;
/// A cable's bits a second that are left for pictures, of a million.
constexpr std::int64_t kPayloadBits = 950'000;

Finding finding(Kind kind, const log::Reason& reason)
{
    return {kind, std::string(reason.text.view()), std::string(reason.advice.view())};
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
    findings.push_back(finding(Kind::Problem, log::controlledBy(*host)));
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

void addLossPlaces(const LostByTenth& lost, Findings& findings)
{
    const std::int64_t all = log::sumOf(lost);
    if (all >= log::kFewLosses) {
        const log::Reason place = log::lossPlace(lost);
        findings.push_back({Kind::Hint,
                            countText(all, "packet") +
                                " got lost while none was asked for again, " +
                                std::string(place.text.view()),
                            std::string(place.advice.view())});
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

/// Of all cores: a thread that becomes ready has to wait for one.
constexpr double kFullProcessor = 0.95;

std::string textOf(const log::Line& line)
{
    return std::string(line.view());
}

void addProcessor(const StreamProbe& probe, Findings& findings)
{
    const std::string own = textOf(log::receivingTook(probe.load.own));
    const Kind kind = isHarmed(probe) ? Kind::Problem : Kind::Hint;
    const bool isTooSlow = probe.load.own >= log::kFullCore;
    if (!hasLosses(probe) || (!isTooSlow && probe.load.all < kFullProcessor)) {
        findings.push_back({Kind::Good, own});
    } else if (isTooSlow) {
        findings.push_back(
            finding(kind, log::slowProcessor(probe.load.own, probe.packetSize, probe.isRingInUse)));
    } else {
        findings.push_back({kind,
                            "the processor is too busy: " + own + ", all programs together " +
                                textOf(log::percent(probe.load.all)) + " of all cores",
                            "end other programs, or " +
                                textOf(log::lessWork(probe.packetSize, probe.isRingInUse))});
    }
}

void addLosses(const StreamProbe& probe, Findings& findings)
{
    if (probe.framesFailed > 0 || probe.packetsMissing > 0) {
        findings.push_back(finding(
            Kind::Problem, log::incompletePictures(probe.framesFailed, probe.packetsMissing)));
    } else if (probe.packetsResent > 0) {
        findings.push_back(finding(Kind::Hint, log::lostAndCame(probe.packetsResent)));
    }
    if (probe.framesDropped > 0) {
        findings.push_back(finding(Kind::Problem, log::noBuffer(probe.framesDropped)));
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
        return {finding(Kind::Problem, log::noInterface())};
    }
    return {finding(Kind::Problem, log::noAnswer(gige::control::listOf(interfaces).view()))};
}

Findings diagnoseAddress(const gige::control::DiscoveredDevice& device)
{
    const std::string ip = gige::net::toText(device.ip());
    if (device.hasRival) {
        return {finding(Kind::Problem, log::rivalAddresses())};
    }
    if (!device.inSubnet()) {
        return {finding(Kind::Problem, log::notInSubnet(ip, device.nic.name))};
    }
    return {{Kind::Good, ip + " answers on " + device.nic.name}};
}

Findings diagnoseResends(bool cameraResends)
{
    if (cameraResends) {
        return {};
    }
    return {finding(Kind::Hint, log::noResends())};
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
    return {finding(Kind::Hint, log::smallBuffer(granted, asked))};
}

Findings diagnoseStream(const StreamProbe& probe, std::uint32_t mtu)
{
    if (!probe.problem.empty()) {
        return {{Kind::Problem, probe.problem, "'telvo state' shows who has the camera"}};
    }
    if (probe.packets == 0) {
        return {finding(Kind::Problem, log::noPacketOfPictures())};
    }
    Findings findings;
    if (mtu != 0 && probe.packetSize < std::min(mtu, log::kJumboPacket)) {
        findings.push_back(finding(Kind::Hint, log::smallPackets(probe.packetSize, mtu)));
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
