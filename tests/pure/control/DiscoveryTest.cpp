#include "Discovery.h"

#include "ControlFixture.h"
#include "DeviceAddress.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <thread>

namespace gige::control
{
namespace
{

using std::chrono::milliseconds;

constexpr wire::MacAddress kFirstMac{{0x02, 0x54, 0x7F, 0, 2, 11}};
constexpr wire::MacAddress kSecondMac{{0x02, 0x54, 0x7F, 0, 2, 12}};

/// An interface that behaves like one to a network: it is asked by both kinds of broadcast.
net::NetworkInterface network()
{
    net::NetworkInterface interface = loopback();
    interface.isLoopback = false;
    return interface;
}

/// One that no socket can be bound to.
net::NetworkInterface unusable()
{
    return {.name = "gone", .address = {0xC0000201}, .netmask = {0xFFFFFF00}, .isUp = true};
}

std::vector<wire::MacAddress> macs(const std::vector<DiscoveredDevice>& devices)
{
    std::vector<wire::MacAddress> found;
    for (const DiscoveredDevice& device : devices) {
        found.push_back(device.info.mac);
    }
    std::ranges::sort(found);
    return found;
}

/// What has been found when so many devices have answered.
std::vector<DiscoveredDevice> discoverDevices(int count,
                                              const std::vector<net::NetworkInterface>& interfaces)
{
    return discover(interfaces, milliseconds(20'000),
                    [count](const DiscoveredDevice&) mutable { return --count > 0; });
}

TEST(Discovery, FindsAllDevicesAndWhatTheySayOfThemselves)
{
    const FakeDevice first("127.0.2.11");
    const FakeDevice second("127.0.2.12");
    const auto devices = discoverDevices(2, {loopback()});
    ASSERT_EQ(macs(devices), (std::vector{kFirstMac, kSecondMac}));
    const DiscoveredDevice& one = devices[devices[0].info.mac == kFirstMac ? 0 : 1];
    EXPECT_EQ(one.ip(), net::Ipv4Address{0x7F00020B});
    EXPECT_EQ(one.info.model, "Fake Camera");
    EXPECT_EQ(one.info.serialNumber, "SN-1");
    EXPECT_EQ(one.info.userDefinedName, "test");
    EXPECT_EQ(one.interface.name, "lo");
    EXPECT_TRUE(one.inSubnet());
}

TEST(Discovery, AsksTwiceAndSendsTheStandardsBytes)
{
    const FakeDevice device("127.0.2.11");
    discover({loopback()}, milliseconds(400));
    ASSERT_TRUE(device.waitForCount(0x0002, 2));
    const auto asked = device.commands(0x0002);
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0].datagram, (Bytes{0x42, 0x11, 0, 2, 0, 0, 0xFF, 0xFF}));
    EXPECT_EQ(asked[1].datagram, asked[0].datagram);
}

TEST(Discovery, ListensForTheWholeTime)
{
    FakeDevice device("127.0.2.11");
    device.setScript([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{.datagram = command.ack, .delay = milliseconds(250)}};
    });
    EXPECT_EQ(macs(discover({loopback()}, milliseconds(2000))), std::vector{kFirstMac});
}

TEST(Discovery, ReportsEachDeviceOnceAsItAnswers)
{
    FakeDevice device("127.0.2.11");
    device.setScript([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{command.ack}, {command.ack}};
    });
    int reports = 0;
    const auto start = std::chrono::steady_clock::now();
    std::int64_t firstReport = 0;
    discover({loopback()}, milliseconds(2000), [&](const DiscoveredDevice& found) {
        firstReport = ++reports == 1 ? elapsed(start) : firstReport;
        EXPECT_EQ(found.info.mac, kFirstMac);
        return true;
    });
    EXPECT_EQ(reports, 1);
    EXPECT_LT(firstReport, 1000) << "long before the end";
}

TEST(Discovery, EndsWhenTheListenerHasEnough)
{
    const FakeDevice device("127.0.2.11");
    const auto start = std::chrono::steady_clock::now();
    discover({loopback()}, milliseconds(60'000), [](const DiscoveredDevice&) { return false; });
    EXPECT_LT(elapsed(start), 20'000);
}

TEST(Discovery, EndsEarlyWhenStopped)
{
    const FakeDevice device("127.0.2.11");
    std::stop_source stop;
    const DeviceFound stopAtFirst = [&](const DiscoveredDevice& /*device*/) {
        stop.request_stop();
        return true;
    };
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(discover({loopback()}, milliseconds(60'000), stopAtFirst, stop.get_token()).size(),
              1U);
    EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(30'000));
}

TEST(Discovery, IgnoresAnswersThatAreNone)
{
    FakeDevice device("127.0.2.11");
    device.setScript([](const FakeCommand& command) {
        Bytes truncated(command.ack.begin(), command.ack.begin() + 100); // length field says 248
        Bytes tooShort(command.ack.begin(), command.ack.begin() + 8 + 36);
        tooShort.at(5) = 36; // ends before the address
        return std::vector<FakeAnswer>{{truncated},
                                       {tooShort},
                                       {withRequestId(command.ack, 7)},
                                       {Bytes(3, 0)},
                                       {Bytes(300, 0xFF)},
                                       {withCode(command.ack, 0x0081)},
                                       {errorAck(command, 0x8001)}};
    });
    EXPECT_TRUE(discover({loopback()}, milliseconds(500)).empty());
}

TEST(Discovery, AShortAnswerThatHoldsTheAddressIsTaken)
{
    FakeDevice device("127.0.2.11");
    device.setScript([](const FakeCommand& command) {
        Bytes brief(command.ack.begin(), command.ack.begin() + 8 + 40);
        brief.at(5) = 40;
        return std::vector<FakeAnswer>{{brief}};
    });
    const auto devices = discoverDevices(1, {loopback()});
    ASSERT_EQ(macs(devices), std::vector{kFirstMac});
    EXPECT_EQ(devices[0].ip(), net::Ipv4Address{0x7F00020B});
    EXPECT_EQ(devices[0].info.model, "");
}

TEST(Discovery, AnInterfaceThatFailsDoesNotStopTheOthers)
{
    const FakeDevice device("127.0.2.11");
    EXPECT_EQ(macs(discoverDevices(1, {unusable(), loopback()})), std::vector{kFirstMac});
}

TEST(Discovery, WithoutInterfacesThereAreNoDevices)
{
    EXPECT_TRUE(discover({}, milliseconds(10)).empty());
}

TEST(Discovery, ADeviceHeardOnSeveralInterfacesIsListedWithTheOneOfItsSubnet)
{
    FakeDevice device("127.0.2.11");
    net::NetworkInterface elsewhere = network();
    elsewhere.name = "";
    elsewhere.address = {0x7F000105};
    elsewhere.netmask = {0xFFFFFF00}; // 127.0.1.0/24, whose broadcast is 127.0.1.255
    const auto devices =
        discover({elsewhere, loopback()}, milliseconds(20'000),
                 [](const DiscoveredDevice& found) { return found.interface.name != "lo"; });
    ASSERT_EQ(macs(devices), std::vector{kFirstMac});
    EXPECT_EQ(devices[0].interface.name, "lo");
}

TEST(Discovery, ADeviceOfAnotherSubnetIsListedAsSuch)
{
    FakeDevice device("127.0.2.11");
    device.setReportedAddress(0xC0A80105);
    const auto devices = discoverDevices(1, {loopback()});
    ASSERT_EQ(devices.size(), 1U);
    EXPECT_FALSE(devices[0].inSubnet());
    EXPECT_EQ(devices[0].ip(), net::Ipv4Address{0xC0A80105});
}

TEST(Discovery, HearsAnswersThatAreBroadcast)
{
    FakeDevice device("127.0.2.11");
    device.setScript([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{.datagram = command.ack, .broadcast = true}};
    });
    EXPECT_EQ(macs(discoverDevices(1, {network()})), std::vector{kFirstMac});
}

TEST(FindDevice, ReturnsWithTheFirstAnswer)
{
    const FakeDevice first("127.0.2.11");
    const FakeDevice second("127.0.2.12");
    const auto start = std::chrono::steady_clock::now();
    const auto found = findDevice(kSecondMac, {loopback()}, milliseconds(60'000));
    EXPECT_LT(elapsed(start), 20'000);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->ip(), net::Ipv4Address{0x7F00020C});
    EXPECT_TRUE(first.waitForCount(0x0002, 1));
    EXPECT_EQ(first.count(0x0002), 1U) << "not asked again";
}

TEST(FindDevice, FindsNothingWithinTheTime)
{
    const FakeDevice device("127.0.2.11");
    EXPECT_FALSE(findDevice(kSecondMac, {loopback()}, milliseconds(150)));
}

TEST(FindDevice, LeavesTheNetworkAloneWhenLoopbackAnswers)
{
    const FakeDevice device("127.0.2.11");
    // On a busy machine an answer may be too late for that, but not each time.
    for (int i = 0; i < 50; ++i) {
        const std::size_t before = device.count(0x0002);
        ASSERT_TRUE(findDevice(kFirstMac, {network(), loopback()}, milliseconds(2000)));
        std::this_thread::sleep_for(milliseconds(50)); // a second question would arrive now
        if (device.count(0x0002) == before + 1) {
            return;
        }
    }
    FAIL() << "asked on the other interface, too, each time";
}

TEST(FindDevice, AsksTheNetworkWhenLoopbackIsSilent)
{
    FakeDevice device("127.0.2.11");
    device.setScript([asked = 0](const FakeCommand& command) mutable {
        return ++asked < 2 ? std::vector<FakeAnswer>{} : std::vector{FakeAnswer{command.ack}};
    });
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(findDevice(kFirstMac, {network(), loopback()}, milliseconds(60'000)));
    EXPECT_LT(elapsed(start), 20'000) << "not only with the repetition";
}

TEST(LocateDevice, NeedsNoTrafficWhereOneInterfaceLeadsThere)
{
    const FakeDevice device("127.0.2.11");
    const auto address = locateDevice({0x7F00020B}, {unusable(), loopback()});
    ASSERT_TRUE(address);
    EXPECT_EQ(address->ip, net::Ipv4Address{0x7F00020B});
    EXPECT_EQ(address->interface.name, "lo");
    EXPECT_TRUE(device.commands().empty());
}

TEST(LocateDevice, TakesTheInterfaceThatTheDeviceAnswersOn)
{
    const FakeDevice device("127.0.2.11");
    net::NetworkInterface deaf = unusable();
    deaf.netmask = {0};
    const auto address = locateDevice({0x7F00020B}, {deaf, loopback()});
    ASSERT_TRUE(address);
    EXPECT_EQ(address->interface.name, "lo");
    EXPECT_FALSE(locateDevice({0x7F0002FA}, {deaf, loopback()})) << "nobody is there";
}

TEST(UsableInterfaces, IncludeLoopbackAndAreUp)
{
    const auto interfaces = usableInterfaces();
    EXPECT_TRUE(std::ranges::any_of(interfaces, &net::NetworkInterface::isLoopback));
    EXPECT_TRUE(std::ranges::all_of(interfaces, &net::NetworkInterface::isUp));
}

} // namespace
} // namespace gige::control
