#include "Discovery.h"

#include "ControlFixture.h"
#include "DeviceAddress.h"
#include "TestClock.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <mutex>
#include <stop_token>
#include <thread>
#include <utility>

namespace gige::control
{
namespace
{

using std::chrono::milliseconds;

constexpr wire::MacAddress kFirstMac{{0x02, 0x54, 0x7F, 0, 2, 11}};
constexpr wire::MacAddress kSecondMac{{0x02, 0x54, 0x7F, 0, 2, 12}};

/// An interface that behaves like one to a network: it is asked by both kinds of broadcast.
net::NetworkInterface broadcastNetwork()
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
    found.reserve(devices.size());
    for (const DiscoveredDevice& device : devices) {
        found.push_back(device.info.mac);
    }
    std::ranges::sort(found);
    return found;
}

std::vector<wire::MacAddress> rivals(std::vector<DiscoveredDevice> devices)
{
    std::erase_if(devices, [](const DiscoveredDevice& device) { return !device.hasRival; });
    return macs(devices);
}

/// The faultless answer, and the same from and for the address 100 higher.
std::vector<FakeAnswer> twoClaims(const FakeCommand& command)
{
    Bytes second = command.ack;
    second.at(8 + 39) = static_cast<std::uint8_t>(second.at(8 + 39) + 100);
    return {{command.ack}, {.datagram = second, .fromOtherAddress = true}};
}

/// Time that passes only when a test says so.
class StoppedClock : public TestClock
{
  public:
    StoppedClock() { setThreads(2); }
};

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
    EXPECT_EQ(one.nic.name, "lo");
    EXPECT_TRUE(one.inSubnet());
}

TEST(Discovery, AsksTwiceAndSendsTheStandardsBytes)
{
    StoppedClock clock;
    FakeDevice device("127.0.2.11");
    device.setScript([&](const FakeCommand& command) {
        clock.advance(milliseconds(200));
        return std::vector<FakeAnswer>{{command.ack}};
    });
    discover({loopback()}, milliseconds(400), nullptr, {}, clock);
    ASSERT_TRUE(device.waitForCount(0x0002, 2));
    const auto asked = device.commands(0x0002);
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0].datagram, (Bytes{0x42, 0x11, 0, 2, 0, 0, 0xFF, 0xFF}));
    EXPECT_EQ(asked[1].datagram, asked[0].datagram);
}

TEST(Discovery, ListensForTheWholeTime)
{
    StoppedClock clock;
    FakeDevice device("127.0.2.11");
    device.setScript([&, first = true](const FakeCommand& command) mutable {
        clock.advance(milliseconds(std::exchange(first, false) ? 1900 : 0));
        return std::vector<FakeAnswer>{{command.ack}};
    });
    const DeviceFound found = [&](const DiscoveredDevice& /*device*/) {
        clock.advance(milliseconds(100));
        return true;
    };
    EXPECT_EQ(macs(discover({loopback()}, milliseconds(2000), found, {}, clock)),
              std::vector{kFirstMac});
}

TEST(Discovery, ReportsEachDeviceOnceAsItAnswers)
{
    StoppedClock clock;
    FakeDevice device("127.0.2.11");
    device.setScript([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{command.ack}, {command.ack}};
    });
    FakeDevice last("127.0.2.12"); // answers the repetition
    last.setScript([asked = 0](const FakeCommand& command) mutable {
        return ++asked < 2 ? std::vector<FakeAnswer>{} : std::vector{FakeAnswer{command.ack}};
    });
    int reports = 0;
    const auto start = clock.now();
    std::int64_t firstReport = 0;
    discover(
        {loopback()}, milliseconds(2000),
        [&](const DiscoveredDevice& found) {
            const auto now = clock.now();
            clock.advance(milliseconds(1000));
            if (found.info.mac == kSecondMac) {
                return true;
            }
            firstReport = ++reports == 1 ? (now - start) / milliseconds(1) : firstReport;
            EXPECT_EQ(found.info.mac, kFirstMac);
            return true;
        },
        {}, clock);
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

// In real time: that nothing comes of the answers shows only when they have had time to.
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
    net::NetworkInterface elsewhere = broadcastNetwork();
    elsewhere.name = "";
    elsewhere.address = {0x7F000105};
    elsewhere.netmask = {0xFFFFFF00}; // 127.0.1.0/24, whose broadcast is 127.0.1.255
    const auto devices =
        discover({elsewhere, loopback()}, milliseconds(20'000),
                 [](const DiscoveredDevice& found) { return found.nic.name != "lo"; });
    ASSERT_EQ(macs(devices), std::vector{kFirstMac});
    EXPECT_EQ(devices[0].nic.name, "lo");
}

TEST(Discovery, ADeviceOfAnotherSubnetIsListedAsSuch)
{
    const FakeDevice device("127.0.2.11");
    net::NetworkInterface narrow = loopback();
    narrow.netmask = {0xFFFFFF00}; // 127.0.0.0/24
    const auto devices = discoverDevices(1, {narrow});
    ASSERT_EQ(devices.size(), 1U);
    EXPECT_FALSE(devices[0].inSubnet());
    EXPECT_EQ(devices[0].ip(), net::Ipv4Address{0x7F00020B});
}

// In real time: that nothing comes of the answer shows only when it has had time to.
TEST(Discovery, AnAnswerInTheNameOfAnotherAddressIsDropped)
{
    FakeDevice device("127.0.2.11");
    device.setReportedAddress(0x7F00020C);
    EXPECT_TRUE(discover({loopback()}, milliseconds(300)).empty());
}

TEST(Discovery, TwoAddressesThatClaimOneMacAreListedAsRivals)
{
    FakeDevice device("127.0.2.11");
    device.setScript([](const FakeCommand& command) { return twoClaims(command); });
    const FakeDevice other("127.0.2.12");
    int reports = 0;
    const auto devices = discover({loopback()}, milliseconds(20'000), [&](const DiscoveredDevice&) {
        return ++reports < 3; // the first, the same with a rival, and the other
    });
    ASSERT_EQ(macs(devices), (std::vector{kFirstMac, kSecondMac}));
    EXPECT_EQ(rivals(devices), std::vector{kFirstMac});
}

/// Sends a device's own discovery answer to whoever asks, under one made-up MAC after the other and
/// as fast as it can, until it ends; ten seconds at most.
class Flood
{
  public:
    explicit Flood(FakeDevice& device)
    {
        struct FirstCommand {
            std::once_flag once{};
            std::promise<FakeCommand> promise{};
        };
        const auto first = std::make_shared<FirstCommand>();
        mThread =
            std::jthread([this, command = first->promise.get_future()](
                             const std::stop_token& stop) mutable { run(stop, command.get()); });
        device.setScript([first](const FakeCommand& command) {
            std::call_once(first->once, [&] { first->promise.set_value(command); });
            return std::vector<FakeAnswer>{};
        });
    }

    /// Acknowledges sent so far.
    [[nodiscard]] std::uint32_t sent() const { return mSent; }
    /// Waits until so many are sent, for as long as the flood lasts.
    void awaitSent(std::uint32_t count) const
    {
        const auto end = std::chrono::steady_clock::now() + kFloodTime;
        while (mSent < count && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(milliseconds(1));
        }
    }

  private:
    static constexpr milliseconds kFloodTime{10'000};

    void run(const std::stop_token& stop, const FakeCommand& command)
    {
        auto socket = net::UdpSocket::open({.address = {0x7F000264}});
        Bytes ack = command.ack;
        std::ranges::copy(Bytes{0x7F, 0, 2, 0x64}, ack.begin() + 8 + 36);
        ack.at(8 + 12) ^= 0xFF; // no device of these tests
        const auto end = std::chrono::steady_clock::now() + kFloodTime;
        while (!stop.stop_requested() && std::chrono::steady_clock::now() < end) {
            const std::uint32_t mac = ++mSent;
            ack.at(8 + 13) = static_cast<std::uint8_t>(mac >> 16);
            ack.at(8 + 14) = static_cast<std::uint8_t>(mac >> 8);
            ack.at(8 + 15) = static_cast<std::uint8_t>(mac);
            socket->send(ack, {.address = kHost, .port = command.senderPort});
        }
    }

    std::atomic<std::uint32_t> mSent{0};
    std::jthread mThread;
};

// In real time: the flood is as fast as the machine.
TEST(Discovery, EndsOnTimeInAFloodOfAnswers)
{
    FakeDevice device("127.0.2.11");
    const Flood flood(device);
    const auto start = std::chrono::steady_clock::now();
    discover({loopback()}, milliseconds(500), [](const DiscoveredDevice&) {
        std::this_thread::sleep_for(milliseconds(10)); // so that more is always waiting
        return true;
    });
    EXPECT_LT(elapsed(start), 5'000) << "the flood goes on";
}

// In real time: the flood is as fast as the machine, and lasts until it was one.
TEST(Discovery, ListsNoMoreThanItsLimitInAFloodOfAnswers)
{
    constexpr std::uint32_t kLimit = 1024;
    std::uint32_t sent = 0;
    for (milliseconds time{300}; sent <= kLimit && time < milliseconds(10'000); time *= 2) {
        FakeDevice device("127.0.2.11");
        const Flood flood(device);
        EXPECT_LE(discover({loopback()}, time).size(), kLimit);
        sent = flood.sent();
    }
    EXPECT_GT(sent, kLimit);
}

TEST(Discovery, HearsAnswersThatAreBroadcast)
{
    FakeDevice device("127.0.2.11");
    device.setScript([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{.datagram = command.ack, .broadcast = true}};
    });
    EXPECT_EQ(macs(discoverDevices(1, {broadcastNetwork()})), std::vector{kFirstMac});
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

// In real time: that the other device's answer is not taken shows only when it has come.
TEST(FindDevice, FindsNothingWithinTheTime)
{
    const FakeDevice device("127.0.2.11");
    EXPECT_FALSE(findDevice(kSecondMac, {loopback()}, milliseconds(150)));
}

TEST(FindDevice, FindsNoneOfTwoAddressesThatClaimTheMac)
{
    FakeDevice device("127.0.2.11");
    device.setScript([](const FakeCommand& command) { return twoClaims(command); });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(findDevice(kFirstMac, {loopback()}, milliseconds(60'000), milliseconds(60'000)));
    EXPECT_LT(elapsed(start), 20'000) << "a conflict does not go away by waiting";
}

TEST(FindDevice, AForeignAnswerInItsNameDoesNotWinOverTheDevice)
{
    FakeDevice device("127.0.2.11");
    device.setScript([](const FakeCommand& command) {
        Bytes spoofed = command.ack;
        spoofed.at(8 + 39) = 99; // names 127.0.2.99, comes from 127.0.2.111
        return std::vector<FakeAnswer>{{.datagram = spoofed, .fromOtherAddress = true},
                                       {command.ack}};
    });
    const auto found = findDevice(kFirstMac, {loopback()}, milliseconds(20'000));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->ip(), net::Ipv4Address{0x7F00020B});
}

// In real time: the flood is as fast as the machine.
TEST(FindDevice, FindsTheDeviceInAFloodOfOthers)
{
    FakeDevice flooding("127.0.2.11");
    const Flood flood(flooding);
    FakeDevice device("127.0.2.12");
    // Late, when any list is full; and more than once, since the system drops what comes while the
    // flood has filled the socket's buffer.
    device.setScript([&flood](const FakeCommand& command) {
        flood.awaitSent(1025);
        return std::vector<FakeAnswer>(5, {.datagram = command.ack, .delay = milliseconds(200)});
    });
    const auto found = findDevice(kSecondMac, {loopback()}, milliseconds(20'000));
    EXPECT_GT(flood.sent(), 1024U);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->ip(), net::Ipv4Address{0x7F00020C});
}

// In real time: a question that is not asked takes no time of anybody's clock.
TEST(FindDevice, LeavesTheNetworkAloneWhenLoopbackAnswers)
{
    const FakeDevice device("127.0.2.11");
    // On a busy machine an answer may be too late for that, but not each time.
    for (int i = 0; i < 50; ++i) {
        const std::size_t before = device.count(0x0002);
        ASSERT_TRUE(findDevice(kFirstMac, {broadcastNetwork(), loopback()}, milliseconds(2000)));
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
    ASSERT_TRUE(findDevice(kFirstMac, {broadcastNetwork(), loopback()}, milliseconds(60'000)));
    EXPECT_LT(elapsed(start), 20'000) << "not only with the repetition";
}

TEST(LocateDevice, NeedsNoTrafficWhereOneInterfaceLeadsThere)
{
    const FakeDevice device("127.0.2.11");
    const auto address = locateDevice({0x7F00020B}, {unusable(), loopback()});
    ASSERT_TRUE(address);
    EXPECT_EQ(address->ip, net::Ipv4Address{0x7F00020B});
    EXPECT_EQ(address->nic.name, "lo");
    EXPECT_TRUE(device.commands().empty());
}

TEST(LocateDevice, TakesTheInterfaceThatTheDeviceAnswersOn)
{
    const FakeDevice device("127.0.2.11");
    net::NetworkInterface deaf = unusable();
    deaf.netmask = {0};
    const auto address = locateDevice({0x7F00020B}, {deaf, loopback()});
    ASSERT_TRUE(address);
    EXPECT_EQ(address->nic.name, "lo");
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
