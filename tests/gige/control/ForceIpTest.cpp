#include "ForceIp.h"

#include "ControlFixture.h"
#include "TestClock.h"

#include <gtest/gtest.h>

namespace gige::control
{
namespace
{

using std::chrono::milliseconds;

constexpr wire::ForceIp kRequest{.mac = {{0x02, 0x54, 0x7F, 0, 2, 21}},
                                 .address = 0x7F000215,
                                 .subnetMask = 0xFFFFFF00,
                                 .gateway = 0x7F000201};

/// The discovery answer of a device that is still at 127.0.2.121.
std::vector<FakeAnswer> elsewhere(const FakeCommand& command)
{
    Bytes ack = command.ack;
    if (!ack.empty()) {
        ack.at(8 + 39) = 121;
    }
    return {{.datagram = ack, .fromOtherAddress = true}};
}

TEST(ForceIp, SendsTheStandardsBytes)
{
    const FakeDevice device("127.0.2.21");
    EXPECT_EQ(forceIp(kRequest, {loopback()}), Status::Ok);
    ASSERT_TRUE(device.waitForCount(kForceIpCommand, 1));
    Bytes expected(64, 0);
    const Bytes header{0x42, 0x11, 0, 4, 0, 56};
    std::ranges::copy(header, expected.begin());
    std::ranges::copy(Bytes{0x02, 0x54, 0x7F, 0, 2, 21}, expected.begin() + 8 + 2);
    std::ranges::copy(Bytes{0x7F, 0, 2, 21}, expected.begin() + 8 + 20);
    std::ranges::copy(Bytes{0xFF, 0xFF, 0xFF, 0}, expected.begin() + 8 + 36);
    std::ranges::copy(Bytes{0x7F, 0, 2, 1}, expected.begin() + 8 + 52);
    Bytes sent = device.commands(kForceIpCommand).at(0).datagram;
    sent.at(6) = sent.at(7) = 0; // the request id is free
    EXPECT_EQ(sent, expected);
}

TEST(ForceIp, ADeviceThatHasTheAddressAlreadyIsOkAndIsToldAllTheSame)
{
    const FakeDevice device("127.0.2.21"); // ignores the command, as loopback devices do
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(forceIp(kRequest, {loopback()}, milliseconds(60'000)), Status::Ok);
    EXPECT_LT(elapsed(start), 20'000);
    EXPECT_TRUE(device.waitForCount(kForceIpCommand, 1));
}

TEST(ForceIp, WaitsUntilTheDeviceAnswersUnderTheAddress)
{
    FakeDevice device("127.0.2.21");
    device.setScript([looks = 0](const FakeCommand& command) mutable {
        return command.code == kDiscoveryCommand && ++looks < 4
                   ? elsewhere(command)
                   : std::vector<FakeAnswer>{{command.ack}};
    });
    EXPECT_EQ(forceIp(kRequest, {loopback()}, milliseconds(60'000)), Status::Ok);
    EXPECT_GE(device.count(kDiscoveryCommand), 4U);
}

// In real time: the device has to have answered.
TEST(ForceIp, ADeviceThatStaysElsewhereIsATimeout)
{
    FakeDevice device("127.0.2.21");
    device.setScript(elsewhere);
    EXPECT_EQ(forceIp(kRequest, {loopback()}, milliseconds(200)), Status::Timeout);
}

TEST(ForceIp, AnAbsentDeviceIsATimeout)
{
    TestClock clock;
    const auto start = clock.now();
    EXPECT_EQ(forceIp(kRequest, {loopback()}, milliseconds(100), clock), Status::Timeout);
    EXPECT_LT((clock.now() - start) / milliseconds(1), 4'000)
        << "a second of discovery, and the time given";
}

TEST(ForceIp, ARefusalIsAResult)
{
    FakeDevice device("127.0.2.21");
    device.setScript([](const FakeCommand& command) {
        return command.code == kForceIpCommand
                   ? std::vector<FakeAnswer>{{.datagram = errorAck(command, 0x8006),
                                              .fromOtherAddress = true}}
                   : elsewhere(command);
    });
    EXPECT_EQ(forceIp(kRequest, {loopback()}, milliseconds(60'000)),
              deviceError(wire::GvcpStatus::AccessDenied));
}

// In real time: that nothing comes of the refusal shows only when it has had time to.
TEST(ForceIp, AForeignRefusalIsNone)
{
    FakeDevice device("127.0.2.21");
    device.setScript([](const FakeCommand& command) {
        return command.code == kForceIpCommand
                   ? std::vector<FakeAnswer>{{.datagram = errorAck(command, 0x8006)}}
                   : elsewhere(command);
    });
    EXPECT_EQ(forceIp(kRequest, {loopback()}, milliseconds(300)), Status::Timeout);
}

} // namespace
} // namespace gige::control
