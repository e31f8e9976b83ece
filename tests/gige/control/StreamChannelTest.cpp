#include "StreamChannel.h"

#include "ControlFixture.h"

#include <gtest/gtest.h>

namespace gige::control
{
namespace
{

class StreamChannelTest : public testing::Test
{
  protected:
    StreamChannelTest()
    {
        for (const std::uint32_t offset : {0x00U, 0x04U, 0x08U, 0x18U, 0x1CU}) {
            mDevice.setRegister(0x0D40 + offset, 0); // channel 1
        }
    }

    FakeDevice mDevice{"127.0.2.3"};
    LinkSettings mSettings;
    std::unique_ptr<ControlChannel> mControl = ControlChannel::open(kHost, {0x7F000203}, mSettings);
    DeviceRegisters mRegisters{*mControl};
    StreamChannel mChannel{mRegisters, 1};
};

TEST_F(StreamChannelTest, OpensWithTheAddressBeforeThePort)
{
    ASSERT_EQ(mChannel.setDestination({0x7F000001}, 50000), Status::Ok);
    EXPECT_EQ(mDevice.registerValue(0x0D58), 0x7F000001U);
    EXPECT_EQ(mDevice.registerValue(0x0D40), 50000U);
    const auto sent = mDevice.commands(kWriteRegisterCommand);
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[0].firstWord, 0x0D58U);
    EXPECT_EQ(sent[1].firstWord, 0x0D40U);
}

TEST_F(StreamChannelTest, ClosesWithPortZero)
{
    mDevice.setRegister(0x0D40, 50000);
    ASSERT_EQ(mChannel.resetDestination(), Status::Ok);
    EXPECT_EQ(mDevice.registerValue(0x0D40), 0U);
}

TEST_F(StreamChannelTest, ARefusedAddressLeavesTheChannelClosed)
{
    mDevice.removeRegister(0x0D58);
    EXPECT_NE(mChannel.setDestination({0x7F000001}, 50000), Status::Ok);
    EXPECT_EQ(mDevice.registerValue(0x0D40), 0U);
}

TEST_F(StreamChannelTest, TellsThePortThatTheDeviceSendsFrom)
{
    mDevice.setRegister(0x0D5C, 0xABCD1234);
    const auto port = mChannel.sourcePort();
    ASSERT_TRUE(port);
    EXPECT_EQ(*port, 0x1234);
}

TEST_F(StreamChannelTest, ThePacketSizeIsTheLowHalfOfItsRegister)
{
    mDevice.setRegister(0x0D44, 0x600005DC);
    const auto size = mChannel.packetSize();
    ASSERT_TRUE(size);
    EXPECT_EQ(*size, 1500U);
}

TEST_F(StreamChannelTest, SettingTheSizeKeepsTheFlagsButNeverFires)
{
    mDevice.setRegister(0x0D44, 0xE00005DC);
    ASSERT_EQ(mChannel.setPacketSize(9000), Status::Ok);
    EXPECT_EQ(mDevice.registerValue(0x0D44), 0x60002328U);
}

TEST_F(StreamChannelTest, ATestPacketIsFiredUnfragmented)
{
    mDevice.setRegister(0x0D44, 0x200005DC);
    ASSERT_EQ(mChannel.fireTestPacket(1400), Status::Ok);
    EXPECT_EQ(mDevice.registerValue(0x0D44), 0xE0000578U);
}

TEST_F(StreamChannelTest, RefusesSizesThatTheRegisterCannotHold)
{
    EXPECT_EQ(mChannel.setPacketSize(0), Status::InvalidParameter);
    EXPECT_EQ(mChannel.setPacketSize(70000), Status::InvalidParameter);
    EXPECT_TRUE(mDevice.commands().empty());
}

} // namespace
} // namespace gige::control
