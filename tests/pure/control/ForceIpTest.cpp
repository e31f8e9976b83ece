#include "ForceIp.h"

#include "ControlFixture.h"

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

TEST(ForceIp, SendsTheStandardsBytes)
{
    const FakeDevice device("127.0.2.21");
    EXPECT_TRUE(forceIp(kRequest, {loopback()}).ok());
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
    EXPECT_TRUE(forceIp(kRequest, {loopback()}, milliseconds(60'000)).ok());
    EXPECT_LT(elapsed(start), 20'000);
    EXPECT_TRUE(device.waitForCount(kForceIpCommand, 1));
}

TEST(ForceIp, WaitsUntilTheDeviceAnswersUnderTheAddress)
{
    FakeDevice device("127.0.2.21");
    device.setReportedAddress(0xC0A80105);
    device.setScript([&device, looks = 0](const FakeCommand& command) mutable {
        if (command.code == kDiscoveryCommand && ++looks == 3) {
            device.setReportedAddress(0x7F000215);
        }
        return std::vector<FakeAnswer>{{command.ack}};
    });
    EXPECT_TRUE(forceIp(kRequest, {loopback()}, milliseconds(60'000)).ok());
    EXPECT_GE(device.count(kDiscoveryCommand), 4U);
}

TEST(ForceIp, ADeviceThatStaysElsewhereIsATimeout)
{
    FakeDevice device("127.0.2.21");
    device.setReportedAddress(0xC0A80105);
    EXPECT_EQ(forceIp(kRequest, {loopback()}, milliseconds(200)).status, ControlStatus::Timeout);
}

TEST(ForceIp, AnAbsentDeviceIsATimeout)
{
    EXPECT_EQ(forceIp(kRequest, {loopback()}, milliseconds(100)).status, ControlStatus::Timeout);
}

TEST(ForceIp, ARefusalIsAResult)
{
    FakeDevice device("127.0.2.21");
    device.setReportedAddress(0xC0A80105);
    device.setScript([](const FakeCommand& command) {
        const bool force = command.code == kForceIpCommand;
        return std::vector<FakeAnswer>{{force ? errorAck(command, 0x8006) : command.ack}};
    });
    EXPECT_TRUE(forceIp(kRequest, {loopback()}, milliseconds(60'000))
                    .refused(wire::GvcpStatus::AccessDenied));
}

} // namespace
} // namespace gige::control
