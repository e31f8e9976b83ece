#include "Diagnosis.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;
using Kind = Finding::Kind;
using testing::HasSubstr;

const gige::net::NetworkInterface kNetwork{.name = "eth7",
                                           .address = {0x0A000005},
                                           .netmask = {0xFFFFFF00},
                                           .mtu = 1500,
                                           .isLoopback = false,
                                           .isUp = true};

gige::control::DiscoveredDevice deviceAt(std::uint32_t address)
{
    gige::control::DiscoveredDevice device{.info = {}, .nic = kNetwork};
    device.info.address = address;
    return device;
}

/// A stream as it should be: a second of 100 pictures.
StreamProbe goodStream()
{
    StreamProbe probe;
    probe.packetSize = 1500;
    probe.frameRate = 100;
    probe.framesWhole = 100;
    probe.packets = 10'000;
    probe.time = std::chrono::seconds(1);
    return probe;
}

StreamProbe streamWith(std::int64_t StreamProbe::*figure, std::int64_t value)
{
    StreamProbe probe = goodStream();
    probe.*figure = value;
    return probe;
}

StreamProbe streamLosing(const LostByTenth& lost)
{
    StreamProbe probe = goodStream();
    probe.lost = lost;
    return probe;
}

/// A stream that loses packets at this load.
StreamProbe streamAt(ProcessorLoad load)
{
    StreamProbe probe = streamWith(&StreamProbe::packetsResent, 4);
    probe.load = load;
    return probe;
}

StreamProbe streamFailing(const std::string& problem)
{
    StreamProbe probe;
    probe.problem = problem;
    return probe;
}

struct Diagnosed {
    const char* name;
    Findings findings;
    Kind kind;
    const char* text;
    const char* advice; // what to do
};

class Diagnosis : public testing::TestWithParam<Diagnosed>
{
};

TEST_P(Diagnosis, NamesTheReasonAndWhatToDo)
{
    const Diagnosed& expected = GetParam();
    for (const Finding& finding : expected.findings) {
        if (finding.kind != Kind::Good) {
            EXPECT_EQ(finding.kind, expected.kind);
            EXPECT_THAT(finding.text, HasSubstr(expected.text));
            EXPECT_THAT(finding.advice, HasSubstr(expected.advice));
            return;
        }
    }
    FAIL() << "nothing found";
}

gige::control::DiscoveredDevice withRival()
{
    gige::control::DiscoveredDevice device = deviceAt(0x0A000007);
    device.hasRival = true;
    return device;
}

const Diagnosed kDiagnoses[] = {
    {"NoInterface", diagnoseSilence({}), Kind::Problem, "no network interface that is up",
     "plug the cable in"},
    {"NoAnswer", diagnoseSilence({kNetwork}), Kind::Problem, "no camera answers on eth7 (10.0.0.5)",
     "firewall"},
    {"OtherSubnet", diagnoseAddress(deviceAt(0x0A000107)), Kind::Problem,
     "10.0.1.7 is not in the subnet of eth7", "'telvo force-ip'"},
    {"TwoOfOneMac", diagnoseAddress(withRival()), Kind::Problem, "two addresses claim",
     "a MAC address of its own"},
    {"SmallBuffer", diagnoseBuffer(212'992, 33'554'432), Kind::Hint,
     "the receive buffer has 208 KiB, 32768 were asked for",
     "sysctl -w net.core.rmem_max=33554432"},
    {"NoResends", diagnoseResends(false), Kind::Hint, "sends no packet again", "packet-delay"},
    {"NoStream", diagnoseStream(streamFailing("cannot connect: X"), 1500), Kind::Problem,
     "cannot connect: X", "'telvo state'"},
    {"NoPackets", diagnoseStream(streamWith(&StreamProbe::packets, 0), 1500), Kind::Problem,
     "no packet of them arrives", "firewall"},
    {"SmallPackets", diagnoseStream(goodStream(), 9000), Kind::Hint,
     "packets of 1500 bytes come through, the interface takes 9000", "jumbo frames"},
    {"LostAtTheStart", diagnoseStream(streamLosing({80, 5, 1, 1, 1, 1, 1, 1, 1, 1}), 1500),
     Kind::Hint, "93 packets got lost while none was asked for again, most of them at the start",
     "power saving"},
    {"LostAtTheEnd", diagnoseStream(streamLosing({1, 1, 1, 1, 1, 1, 1, 1, 25, 60}), 1500),
     Kind::Hint, "most of them at the end", "packet-delay"},
    {"LostAnywhere", diagnoseStream(streamLosing({9, 9, 9, 9, 9, 9, 9, 9, 9, 9}), 1500), Kind::Hint,
     "spread over the pictures", "cable"},
    {"LostForGood", diagnoseStream(streamWith(&StreamProbe::packetsMissing, 3), 1500),
     Kind::Problem, "3 packets are missing", "cable and switch"},
    {"LostAndResent", diagnoseStream(streamWith(&StreamProbe::packetsResent, 4), 1500), Kind::Hint,
     "4 packets got lost and came when asked for again", "leave resends on"},
    {"SlowComputer", diagnoseStream(streamWith(&StreamProbe::framesDropped, 5), 1500),
     Kind::Problem, "5 pictures found no buffer", "the computer is too slow"},
    {"SlowProcessor", diagnoseStream(streamAt({.own = 0.97, .all = 0.6}), 1500), Kind::Hint,
     "the processor is too slow for this rate: receiving took 97 % of a core",
     "lower the frame rate or let larger packets through (jumbo frames); on Linux the right "
     "CAP_NET_RAW makes single packets less work"},
    {"BusyProcessor", diagnoseStream(streamAt({.own = 0.3, .all = 0.984}), 1500), Kind::Hint,
     "the processor is too busy: receiving took 30 % of a core, all programs together 98 % of all "
     "cores",
     "end other programs, or lower the frame rate"},
    {"ProcessorWithTimeLeft", diagnoseStream(streamAt({.own = 0.8, .all = 0.9}), 1500), Kind::Hint,
     "4 packets got lost", "look at cable and switch"},
    {"FewPictures", diagnoseStream(streamWith(&StreamProbe::framesWhole, 20), 1500), Kind::Hint,
     "20 whole pictures in 1000 ms, the camera is set to 100 a second", "packet-delay"},
};

INSTANTIATE_TEST_SUITE_P(Of, Diagnosis, testing::ValuesIn(kDiagnoses),
                         [](const auto& each) { return each.param.name; });

TEST(DiagnosisOfWhatIsGood, FindsNothing)
{
    for (const Findings& findings :
         {diagnoseAddress(deviceAt(0x0A000007)), diagnoseBuffer(100, 100), diagnoseResends(true),
          diagnoseStream(goodStream(), 1500), diagnoseStream(streamLosing({1, 1, 1, 1}), 1500)}) {
        for (const Finding& finding : findings) {
            EXPECT_EQ(finding.kind, Kind::Good) << finding.text;
        }
    }
}

TEST(DiagnosisOfTheProcessor, SaysNothingAgainstAFullOneThatLosesNothing)
{
    StreamProbe probe = goodStream();
    probe.load = {.own = 0.99, .all = 1};
    const Findings findings = diagnoseStream(probe, 1500);
    EXPECT_THAT(findings, testing::Contains(testing::AllOf(
                              testing::Field(&Finding::kind, Kind::Good),
                              testing::Field(&Finding::text, "receiving took 99 % of a core"))));
    EXPECT_THAT(findings, testing::Each(testing::Field(&Finding::kind, Kind::Good)));
}

TEST(DiagnosisOfTheProcessor, AdvisesNoLessWorkThanIsPossible)
{
    StreamProbe probe = streamAt({.own = 0.9, .all = 0.6});
    probe.packetSize = 9000;
    probe.isRingInUse = true;
    EXPECT_THAT(diagnoseStream(probe, 9000),
                testing::Contains(testing::Field(&Finding::advice, "lower the frame rate")));
}

TEST(DiagnosisOfTheProcessor, CountsWhatWasLostWithoutResends)
{
    StreamProbe probe = streamLosing({0, 0, 1});
    probe.load.own = 1;
    EXPECT_THAT(diagnoseStream(probe, 1500),
                testing::Contains(testing::AllOf(
                    testing::Field(&Finding::kind, Kind::Hint),
                    testing::Field(&Finding::text, HasSubstr("too slow for this rate")))));
}

TEST(DiagnosisOfTheProcessor, IsAProblemWhereItCostsPictures)
{
    for (const auto figure : {&StreamProbe::framesFailed, &StreamProbe::framesDropped}) {
        StreamProbe probe = streamWith(figure, 1);
        probe.load.own = 1;
        EXPECT_THAT(diagnoseStream(probe, 1500),
                    testing::Contains(testing::AllOf(
                        testing::Field(&Finding::kind, Kind::Problem),
                        testing::Field(&Finding::text, HasSubstr("too slow for this rate")))));
    }
}

} // namespace
