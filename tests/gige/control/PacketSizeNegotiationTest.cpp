#include "PacketSizeNegotiation.h"

#include "ControlFixture.h"

#include <atomic>
#include <gtest/gtest.h>

namespace gige::control
{
namespace
{

/// A device whose path to the host lets packets up to mPathLimit through. The size that the device
/// was told stands in its SCPS register; a test packet "arrives" when that has the fire bit.
class PacketSizeNegotiationTest : public testing::Test
{
  protected:
    PacketSizeNegotiationTest() { mDevice.setRegister(kScps, 0x000005DC); }

    Result<std::uint32_t> negotiate(std::uint32_t defaultSize = 1440)
    {
        return negotiatePacketSize(
            mChannel, mLimits, defaultSize,
            [this](std::uint32_t udpPayload, std::chrono::milliseconds) {
                const std::uint32_t told = mDevice.registerValue(kScps);
                const std::uint32_t size = told & 0xFFFF;
                EXPECT_EQ(told & 0xC0000000, 0xC0000000) << "fired, not to be fragmented";
                EXPECT_EQ(udpPayload, size - 28) << "the packet less IP and UDP headers";
                mTried.push_back(size);
                return mSendsTestPackets && size <= mPathLimit && ++mArrivals > mLostFirst;
            });
    }

    static constexpr std::uint32_t kScps = 0x0D04;

    FakeDevice mDevice{"127.0.2.4"};
    LinkSettings mSettings;
    std::unique_ptr<ControlChannel> mControl = ControlChannel::open(kHost, {0x7F000204}, mSettings);
    DeviceRegisters mRegisters{*mControl};
    StreamChannel mChannel{mRegisters, 0};
    PacketSizeLimits mLimits{.interfaceMtu = 9000};
    bool mSendsTestPackets = true;
    std::uint32_t mPathLimit = 9000;
    int mLostFirst = 0;
    int mArrivals = 0;
    std::vector<std::uint32_t> mTried;
};

TEST_F(PacketSizeNegotiationTest, TakesTheInterfacesSizeWhenItArrives)
{
    const auto size = negotiate();
    ASSERT_TRUE(size);
    EXPECT_EQ(*size, 9000U);
    EXPECT_EQ(mDevice.registerValue(kScps), 0x40002328U) << "without the fire bit";
    EXPECT_EQ(mTried, (std::vector<std::uint32_t>{576, 9000}));
}

TEST_F(PacketSizeNegotiationTest, FindsTheLargestSizeThatThePathLetsThrough)
{
    mPathLimit = 4321;
    const auto size = negotiate();
    ASSERT_TRUE(size);
    EXPECT_EQ(*size, 4320U);
    EXPECT_EQ(mDevice.registerValue(kScps), 0x400010E0U);
}

TEST_F(PacketSizeNegotiationTest, KeepsToTheDevicesRangeAndIncrement)
{
    mLimits.minimum = 220;
    mLimits.maximum = 8192;
    mLimits.increment = 16;
    mPathLimit = 3000;
    const auto size = negotiate();
    ASSERT_TRUE(size);
    EXPECT_EQ(*size, 220U + 16 * 173); // 2988
    for (const std::uint32_t tried : mTried) {
        EXPECT_EQ((tried - 220) % 16, 0U) << tried;
        EXPECT_GE(tried, 576U);
        EXPECT_LE(tried, 8192U);
    }
}

TEST_F(PacketSizeNegotiationTest, LoopbackIsCappedAtJumboSize)
{
    mLimits = {.interfaceMtu = 65536, .loopback = true};
    mPathLimit = 65535;
    EXPECT_EQ(negotiate().valueOr(0), 9000U);
}

TEST_F(PacketSizeNegotiationTest, AnUnlimitedInterfaceIsBoundByTheSizeField)
{
    mLimits = {.interfaceMtu = 100'000, .maximum = 0xFFFFFFFF};
    mPathLimit = 0xFFFF;
    EXPECT_EQ(negotiate().valueOr(0), 65532U); // 576 + 4 * n
}

TEST_F(PacketSizeNegotiationTest, ALostTestPacketIsAskedForAgain)
{
    mLostFirst = 2;
    EXPECT_EQ(negotiate().valueOr(0), 9000U);
    EXPECT_EQ(mTried, (std::vector<std::uint32_t>{576, 576, 576, 9000}));
}

TEST_F(PacketSizeNegotiationTest, ADeviceWithoutTestPacketsKeepsItsSize)
{
    mSendsTestPackets = false;
    mDevice.setRegister(kScps, 0x200005DC);
    EXPECT_EQ(negotiate().valueOr(0), 1500U);
    EXPECT_EQ(mDevice.registerValue(kScps), 0x200005DCU) << "flags included";
}

TEST_F(PacketSizeNegotiationTest, ADeviceWithoutAnySizeGetsTheDefault)
{
    mSendsTestPackets = false;
    mDevice.setRegister(kScps, 0);
    EXPECT_EQ(negotiate(1440).valueOr(0), 1440U);
    EXPECT_EQ(mDevice.registerValue(kScps) & 0xFFFF, 1440U);
}

TEST_F(PacketSizeNegotiationTest, ReturnsWhatTheDeviceMadeOfTheSize)
{
    mDevice.setScript([this](const FakeCommand& command) {
        if (command.code == kWriteRegisterCommand && (command.datagram.at(12) & 0x80) == 0) {
            mDevice.setRegister(kScps, 8228); // rounds the final value
        }
        return std::vector<FakeAnswer>{{command.ack}};
    });
    EXPECT_EQ(negotiate().valueOr(0), 8228U);
}

TEST_F(PacketSizeNegotiationTest, ASizeThatTheDeviceRefusesCountsAsLost)
{
    mDevice.setScript([](const FakeCommand& command) {
        const bool large = command.code == kWriteRegisterCommand &&
                           command.datagram.at(14) >= 0x10; // 4096 and more
        return std::vector<FakeAnswer>{{large ? errorAck(command, 0x8002) : command.ack}};
    });
    mLimits.maximum = 8192;
    const auto size = negotiate();
    ASSERT_TRUE(size);
    EXPECT_EQ(*size, 4092U);
}

TEST_F(PacketSizeNegotiationTest, EndsWhenTheDeviceNoLongerAnswers)
{
    mSettings.answerTimeout = 10;
    mDevice.setSilent(true);
    EXPECT_EQ(negotiate().status(), Status::Timeout);
    EXPECT_TRUE(mTried.empty());
}

} // namespace
} // namespace gige::control
