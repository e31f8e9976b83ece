#include "RawHost.h"
#include "VirtualCamera.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>

namespace camera
{
namespace
{

using namespace std::chrono_literals;

// GVCP status codes.
constexpr std::uint16_t kInvalidParameter = 0x8002;
constexpr std::uint16_t kInvalidAddress = 0x8003;
constexpr std::uint16_t kWriteProtect = 0x8004;
constexpr std::uint16_t kBadAlignment = 0x8005;
constexpr std::uint16_t kAccessDenied = 0x8006;

/// A running camera and a host that speaks to it.
struct Station {
    explicit Station(CameraOptions options) : camera(std::move(options))
    {
        const auto error = camera.start();
        EXPECT_FALSE(error) << *error;
    }
    explicit Station(const std::string& address) : Station(CameraOptions{.address = address}) {}

    VirtualCamera camera;
    RawHost host{camera.options().address};
};

std::uint32_t word(const Datagram& bytes, std::size_t at)
{
    return (std::uint32_t{bytes[at]} << 24) | (std::uint32_t{bytes[at + 1]} << 16) |
           (std::uint32_t{bytes[at + 2]} << 8) | bytes[at + 3];
}

std::string textAt(const Datagram& bytes, std::size_t at)
{
    return reinterpret_cast<const char*>(&bytes[at]);
}

TEST(CameraControl, AnswersDiscoveryWithItsIdentity)
{
    Station setup("127.0.4.1");
    const Datagram answer = setup.host.ask(fromHex("42 01 0002 0000 FFFF"));
    ASSERT_EQ(answer.size(), 256U);
    EXPECT_EQ(toHex({answer.begin(), answer.begin() + 8}), "0000000300F8FFFF");
    EXPECT_EQ(word(answer, 8), 0x00010002U);  // version 1.2
    EXPECT_EQ(word(answer, 12), 0x80000001U); // big-endian, UTF-8
    EXPECT_EQ(toHex({answer.begin() + 18, answer.begin() + 24}), "025445000401");
    EXPECT_EQ(word(answer, 8 + 36), 0x7F000401U);
    EXPECT_EQ(textAt(answer, 8 + 72), "Telvo");
    EXPECT_EQ(textAt(answer, 8 + 104), "TOVI1");
    EXPECT_EQ(textAt(answer, 8 + 216), "VC000401");
    EXPECT_EQ(textAt(answer, 8 + 232), "virtual camera");
}

TEST(CameraControl, IsFoundByBroadcast)
{
    Station setup("127.0.4.2");
    ASSERT_TRUE(setup.camera.hearsBroadcasts());
    auto socket = gige::net::UdpSocket::open({{0x7F000001}, 0}, {.broadcast = true});
    ASSERT_TRUE(socket);
    socket->send(fromHex("42 01 0002 0000 1234"), {{0x7FFFFFFF}, 3956});
    // Other cameras of this machine may answer, too.
    std::array<std::uint8_t, 600> buffer{};
    while (true) {
        const auto received = socket->receive(buffer, 3s);
        ASSERT_EQ(received.status, gige::net::ReceiveStatus::Data);
        if (received.source == setup.host.camera()) {
            EXPECT_EQ(received.size, 256U);
            break;
        }
    }
}

using Answers = std::multiset<std::string>; // addresses

/// Who answers DISCOVERY: all that is heard until each of `wanted` has answered, and a while on.
Answers answering(gige::net::UdpSocket& host, const gige::net::Endpoint& destination,
                  const Answers& wanted)
{
    EXPECT_TRUE(host.send(fromHex("42 01 0002 0000 1234"), destination));
    Answers found;
    std::array<std::uint8_t, 600> buffer{};
    while (true) {
        const bool complete = std::ranges::includes(found, wanted);
        const auto received = host.receive(buffer, complete ? 200ms : 10s);
        if (received.status != gige::net::ReceiveStatus::Data) {
            return found;
        }
        EXPECT_EQ(received.size, 256U);
        found.insert(toText(received.source.address));
    }
}

TEST(CameraControl, AllOfOneMachineAreFoundByEitherBroadcast)
{
    const Station first("127.0.4.24");
    const Station second("127.0.4.25");
    const Station third("127.0.4.26");
    auto host = gige::net::UdpSocket::open({{0x7F000001}, 0}, {.broadcast = true});
    ASSERT_TRUE(host);
    const Answers all{"127.0.4.24", "127.0.4.25", "127.0.4.26"};
    for (const std::uint32_t broadcast : {0x7FFFFFFFU, 0xFFFFFFFFU}) {
        const Answers found = answering(*host, {{broadcast}, 3956}, all);
        for (const std::string& address : all) { // other cameras of this machine may answer, too
            EXPECT_EQ(found.count(address), 1U) << address << std::hex << ' ' << broadcast;
        }
    }
    const Answers one{"127.0.4.25"};
    EXPECT_EQ(answering(*host, {{0x7F000419}, 3956}, one), one)
        << "what goes to one is not heard by another";
}

TEST(CameraControl, SaysThatItsAddressIsTaken)
{
    Station setup("127.0.4.3");
    VirtualCamera second({.address = "127.0.4.3"});
    EXPECT_EQ(second.start(), "address 127.0.4.3 is taken by another camera");
}

TEST(CameraControl, RefusesAddressesThatAreNone)
{
    VirtualCamera badAddress({.address = "localhost"});
    EXPECT_EQ(badAddress.start(), "'localhost' is not an IPv4 address");
    for (const char* address : {"0.0.0.0", "127.255.255.255", "255.255.255.255", "239.0.0.1"}) {
        VirtualCamera ofMany({.address = address});
        EXPECT_EQ(ofMany.start(),
                  "'" + std::string(address) + "' is not the address of one device");
    }
    VirtualCamera badMac({.address = "127.0.4.4", .mac = "02:54"});
    EXPECT_EQ(badMac.start(), "'02:54' is not a MAC address");
}

TEST(CameraControl, ReadsSeveralRegistersAtOnce)
{
    Station setup("127.0.4.5");
    const Datagram answer = setup.host.ask(fromHex("42 01 0080 0008 0004 00000A00 00000938"));
    EXPECT_EQ(toHex(answer), "000000810008000400000000"
                             "00000BB8");
}

TEST(CameraControl, AReadThatFailsKeepsTheValuesBefore)
{
    Station setup("127.0.4.6");
    const Datagram answer =
        setup.host.ask(fromHex("42 01 0080 000C 0005 00000938 0000B000 00000A00"));
    EXPECT_EQ(toHex(answer), "800300810004000500000BB8");
}

TEST(CameraControl, WritesSeveralRegistersUpToTheFirstFailure)
{
    Station setup("127.0.4.7");
    setup.host.takeControl();
    const Datagram answer = setup.host.ask(
        fromHex("42 01 0082 0018 0777 00000938 000007D0 00000000 00000001 00000938 00000BB8"));
    EXPECT_EQ(toHex(answer), "8004008300040777"
                             "00000001");
    EXPECT_EQ(setup.host.readRegister(0x0938), 2000U);
}

TEST(CameraControl, GivesEachErrorItsStatus)
{
    Station setup("127.0.4.8");
    RawHost& host = setup.host;
    EXPECT_EQ(host.write(FeatureId::Width, 640), kAccessDenied); // no privilege yet
    host.takeControl();
    EXPECT_EQ(host.readRegister(0x0002), std::nullopt);
    EXPECT_EQ(host.lastStatus(), kBadAlignment);
    EXPECT_EQ(host.readRegister(0x0000A000), std::nullopt);
    EXPECT_EQ(host.lastStatus(), kInvalidAddress);
    EXPECT_EQ(host.writeRegister(0x0024, 1), kWriteProtect);
    EXPECT_EQ(host.write(FeatureId::SensorWidth, 640), kWriteProtect);
    EXPECT_EQ(host.write(FeatureId::Width, 650), kInvalidParameter); // not a multiple of 16
    EXPECT_EQ(host.write(FeatureId::Width, 1296), kInvalidParameter);
    EXPECT_EQ(host.write(FeatureId::RecordMode, 2), kInvalidParameter);
    EXPECT_EQ(host.readRegister(registerOf(featureOf(FeatureId::RecordStart))), std::nullopt);
    EXPECT_EQ(host.lastStatus(), kAccessDenied); // write only
    EXPECT_TRUE(host.readMemory(0x0200, 511).empty());
    EXPECT_EQ(host.lastStatus(), kBadAlignment);
    // A command that the camera does not know: NOT_IMPLEMENTED.
    EXPECT_EQ(toHex(host.ask(fromHex("42 01 0100 0000 0AAA"))), "8001010100000AAA");
}

TEST(CameraControl, IgnoresWhatIsNoCommand)
{
    Station setup("127.0.4.9");
    setup.host.send(fromHex("41 01 0080 0004 0001 00000000")); // another key
    setup.host.send(fromHex("42 01 0080"));                    // cut short
    setup.host.send(fromHex("42 01 0080 0008 0002 00000000")); // length does not fit
    setup.host.send(fromHex("42 01 0080 0004 0000 00000000")); // id 0
    setup.host.send({});
    EXPECT_EQ(toHex(setup.host.ask(fromHex("42 01 0080 0004 0003 00000000"))),
              "000000810004000300010002");
}

TEST(CameraControl, DoesNotExecuteARepeatedCommandTwice)
{
    Station setup("127.0.4.10");
    setup.host.takeControl();
    const Datagram write = fromHex("42 01 0082 0008 0BBB 00000938 000007D0");
    const Datagram answer = setup.host.ask(write);
    EXPECT_EQ(setup.host.ask(write), answer);
    EXPECT_EQ(setup.camera.log().valuesWritten(FeatureId::GevHeartbeatTimeout),
              std::vector<std::uint32_t>{2000});
    EXPECT_EQ(setup.camera.log().counters().repeats, 1U);
}

TEST(CameraControl, ServesOneOwner)
{
    Station setup("127.0.4.11");
    RawHost other("127.0.4.11");
    EXPECT_EQ(setup.host.writeRegister(0x0A00, 1), 0U);
    EXPECT_EQ(other.writeRegister(0x0A00, 2), kAccessDenied);
    EXPECT_EQ(other.readRegister(0x0938), std::nullopt);
    EXPECT_EQ(other.lastStatus(), kAccessDenied);
    EXPECT_EQ(other.readRegister(0x0A00), 1U);
    EXPECT_EQ(other.ask(fromHex("42 01 0002 0000 0001")).size(), 256U);
    EXPECT_EQ(setup.host.writeRegister(0x0A00, 0), 0U);
    EXPECT_EQ(other.writeRegister(0x0A00, 2), 0U);
}

TEST(CameraControl, LetsGoOfASilentHost)
{
    Station setup("127.0.4.12");
    setup.host.openStream();
    setup.host.writeRegister(0x0938, 500);
    RawHost other("127.0.4.12");
    std::this_thread::sleep_for(200ms);
    EXPECT_EQ(other.readRegister(0x0A00), 2U);
    const auto limit = std::chrono::steady_clock::now() + 10s;
    while (other.readRegister(0x0A00) != 0U && std::chrono::steady_clock::now() < limit) {
        std::this_thread::sleep_for(50ms);
    }
    EXPECT_EQ(other.readRegister(0x0A00), 0U);
    EXPECT_EQ(other.readRegister(0x0D00), 0U);
    EXPECT_EQ(other.readRegister(0x0A14), 0U);
}

TEST(CameraControl, DeliversItsDescription)
{
    for (const DescriptionForm form : {DescriptionForm::Xml, DescriptionForm::DeflatedZip}) {
        Station setup(CameraOptions{.address = "127.0.4.13", .description = form});
        const std::string url = textAt(setup.host.readMemory(0x0200, 512), 0);
        const bool isXml = form == DescriptionForm::Xml;
        const std::string start = isXml ? "Local:telvo-camera.xml;" : "Local:telvo-camera.zip;";
        ASSERT_EQ(url.substr(0, start.size()), start);
        const std::size_t semicolon = url.find(';', start.size());
        const auto address =
            static_cast<std::uint32_t>(std::stoul(url.substr(start.size()), nullptr, 16));
        const auto length =
            static_cast<std::uint32_t>(std::stoul(url.substr(semicolon + 1), nullptr, 16));
        const Datagram first = setup.host.readMemory(address, 4);
        EXPECT_EQ(toHex(first), isXml ? "3C3F786D" : "504B0304");
        const Datagram last = setup.host.readMemory(address + (length - 1) / 4 * 4, 4);
        EXPECT_EQ(last.size(), 4U);
        EXPECT_TRUE(setup.host.readMemory(address + (length + 3) / 4 * 4, 4).empty());
    }
}

TEST(CameraControl, LimitsFollowOtherFeatures)
{
    Station setup("127.0.4.14");
    RawHost& host = setup.host;
    host.takeControl();
    const auto maximum = [&host](FeatureId id) { return host.readRegister(maximumRegisterOf(id)); };
    EXPECT_EQ(maximum(FeatureId::Width), 1280U);
    EXPECT_EQ(maximum(FeatureId::OffsetX), 0U);
    EXPECT_EQ(host.write(FeatureId::OffsetX, 16), kInvalidParameter);
    EXPECT_EQ(host.write(FeatureId::Width, 640), 0U);
    EXPECT_EQ(host.write(FeatureId::OffsetX, 160), 0U);
    EXPECT_EQ(maximum(FeatureId::Width), 1120U);
    EXPECT_EQ(maximum(FeatureId::OffsetX), 640U);
    EXPECT_EQ(host.read(FeatureId::PayloadSize), 640U * 1024);
    EXPECT_EQ(maximum(FeatureId::AcquisitionFrameRateRaw), 2136U);
    EXPECT_EQ(host.write(FeatureId::AcquisitionFrameRateRaw, 2000), 0U);
    EXPECT_EQ(host.read(FeatureId::ExposureTimeRaw), 499U); // was 1000, longer than a period
    EXPECT_EQ(host.write(FeatureId::DecimationXY, 1), 0U);
    EXPECT_EQ(host.read(FeatureId::WidthMax), 640U);
    EXPECT_EQ(host.read(FeatureId::OffsetX), 0U);
    EXPECT_EQ(host.read(FeatureId::Height), 512U);
}

TEST(CameraControl, SensorsOfOddSizeHaveWholeStepsOfWidth)
{
    Station setup(CameraOptions{.address = "127.0.4.15", .model = "ORVALE6 Fenrow Lite"});
    EXPECT_EQ(setup.host.read(FeatureId::SensorWidth), 708U);
    EXPECT_EQ(setup.host.read(FeatureId::WidthMax), 704U);
    EXPECT_EQ(setup.host.read(FeatureId::Width), 704U);
    EXPECT_EQ(setup.host.read(FeatureId::Height), 528U);
}

TEST(CameraControl, KeepsItsUserName)
{
    Station setup("127.0.4.16");
    setup.host.takeControl();
    Datagram name(16);
    std::string("left").copy(reinterpret_cast<char*>(name.data()), 4);
    EXPECT_EQ(setup.host.writeMemory(0x00E8, name), 0U);
    EXPECT_EQ(textAt(setup.host.readMemory(0x00E8, 16), 0), "left");
}

TEST(CameraControl, TellsItsStreamDestinationAsText)
{
    Station setup("127.0.4.17");
    setup.host.openStream();
    EXPECT_EQ(textAt(setup.host.readMemory(kDestinationText, 16), 0), "127.0.0.1");
}

TEST(CameraControl, ClampsAndRoundsThePacketSize)
{
    Station setup("127.0.4.18");
    setup.host.takeControl();
    setup.host.writeRegister(0x0D04, 1443);
    EXPECT_EQ(setup.host.readRegister(0x0D04), 1440U);
    setup.host.writeRegister(0x0D04, 0x40000000 | 60000);
    EXPECT_EQ(setup.host.readRegister(0x0D04), 0x40000000U | 9000U);
    setup.host.writeRegister(0x0D04, 0);
    EXPECT_EQ(setup.host.readRegister(0x0D04), 576U);
}

TEST(CameraControl, UserSetsKeepAndGiveBackTheSettings)
{
    Station setup("127.0.4.19");
    RawHost& host = setup.host;
    host.takeControl();
    EXPECT_EQ(host.execute(FeatureId::UserSetSave), kAccessDenied); // "Default" is the factory's
    host.write(FeatureId::UserSetSelector, 1);
    EXPECT_EQ(host.execute(FeatureId::UserSetLoad), kAccessDenied); // never saved
    host.write(FeatureId::Width, 320);
    host.write(FeatureId::GainRaw, 5);
    EXPECT_EQ(host.execute(FeatureId::UserSetSave), 0U);
    host.write(FeatureId::UserSetSelector, 0);
    EXPECT_EQ(host.execute(FeatureId::UserSetLoad), 0U);
    EXPECT_EQ(host.read(FeatureId::Width), 1280U);
    EXPECT_EQ(host.read(FeatureId::GainRaw), 0U);
    host.write(FeatureId::UserSetSelector, 1);
    EXPECT_EQ(host.execute(FeatureId::UserSetLoad), 0U);
    EXPECT_EQ(host.read(FeatureId::Width), 320U);
    EXPECT_EQ(host.read(FeatureId::GainRaw), 5U);
}

TEST(CameraControl, StartsFromItsStateFile)
{
    const std::string path = testing::TempDir() + "CameraControlStartsFromItsStateFile";
    const CameraOptions options{.address = "127.0.4.20", .stateFile = path};
    {
        Station setup(options);
        setup.host.takeControl();
        setup.host.write(FeatureId::Height, 100);
        setup.host.write(FeatureId::UserSetSelector, 1);
        setup.host.execute(FeatureId::UserSetSave);
        setup.host.write(FeatureId::UserSetDefaultSelector, 1);
        setup.host.write(FeatureId::Data02, 0xCAFE);
        setup.host.write(FeatureId::GainRaw, 7); // not saved
    }
    Station setup(options);
    EXPECT_EQ(setup.host.read(FeatureId::Height), 100U);
    EXPECT_EQ(setup.host.read(FeatureId::UserSetSelector), 1U);
    EXPECT_EQ(setup.host.read(FeatureId::Data02), 0xCAFEU);
    EXPECT_EQ(setup.host.read(FeatureId::GainRaw), 0U);
    std::filesystem::remove(path);
}

TEST(CameraControl, TakesNoValuesFromItsStateFileThatItsFeaturesCannotHave)
{
    const std::string path = testing::TempDir() + "CameraControlTakesNoValuesFromItsStateFile";
    std::ofstream(path) << "UserSetDefaultSelector=1\nUserSet1.Width=0\nUserSet1.Height=-2\n"
                           "UserSet1.PixelFormat=5\nUserSet1.OffsetX=16\n";
    Station setup(CameraOptions{.address = "127.0.4.27", .stateFile = path});
    std::filesystem::remove(path);
    EXPECT_EQ(setup.host.read(FeatureId::Width), 1280U);
    EXPECT_EQ(setup.host.read(FeatureId::Height), 1024U);
    EXPECT_EQ(setup.host.read(FeatureId::PixelFormat), 0x01080001U);
    EXPECT_EQ(setup.host.read(FeatureId::UserSetSelector), 1U);
}

TEST(CameraControl, FreshUserSetsAreTheFactorysUnlessPrepared)
{
    Station fresh("127.0.4.21");
    EXPECT_EQ(fresh.host.read(FeatureId::UserSetSelector), 0U);
    EXPECT_EQ(fresh.host.read(FeatureId::UserSetDefaultSelector), 0U);
    Station prepared(CameraOptions{.address = "127.0.4.22", .userSetsPrepared = true});
    EXPECT_EQ(prepared.host.read(FeatureId::UserSetSelector), 1U);
    EXPECT_EQ(prepared.host.read(FeatureId::UserSetDefaultSelector), 1U);
}

TEST(CameraControl, HardwareThatIsNotThereIsNotAvailable)
{
    Station setup(
        CameraOptions{.address = "127.0.4.23", .multisequence = false, .flashCard = false});
    setup.host.takeControl();
    EXPECT_EQ(setup.host.readRegister(availabilityRegisterOf(FeatureId::FlashCardWrite)), 0U);
    EXPECT_EQ(setup.host.readRegister(availabilityRegisterOf(FeatureId::IRIGBEnable)), 1U);
    EXPECT_EQ(setup.host.execute(FeatureId::FlashCardWrite), kAccessDenied);
    EXPECT_EQ(setup.host.read(FeatureId::MultisequenceAvailable), 0U);
    EXPECT_EQ(setup.host.readRegister(maximumRegisterOf(FeatureId::StreamSequenceSelector)), 0U);
}

TEST(CameraControl, ConfirmsItsOwnAddressOnly)
{
    Station setup("127.0.4.24");
    const std::string zeros(24, '0');
    const std::string head = "42 01 0004 0038 0001 0000 025445000418" + zeros;
    const std::string tail = zeros + "FFFFFF00" + zeros + "00000000";
    EXPECT_EQ(toHex(setup.host.ask(fromHex(head + "7F000418" + tail))), "0000000500000001");
    EXPECT_TRUE(setup.host.ask(fromHex(head + "7F000499" + tail), 200ms).empty());
}

} // namespace
} // namespace camera
