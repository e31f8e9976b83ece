#include "DeviceRegisters.h"

#include "ControlFixture.h"

#include <gtest/gtest.h>
#include <numeric>

namespace gige::control
{
namespace
{

class DeviceRegistersTest : public testing::Test
{
  protected:
    DeviceRegistersTest() { mSettings.answerTimeout = 10'000; }

    void readTraits() { ASSERT_EQ(mRegisters.readTraits(), Status::Ok); }

    /// 0, 1, 2, … in this length.
    static Bytes counting(std::size_t length)
    {
        Bytes bytes(length);
        std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
        return bytes;
    }

    FakeDevice mDevice{"127.0.2.2"};
    LinkSettings mSettings;
    std::unique_ptr<ControlChannel> mChannel = ControlChannel::open(kHost, {0x7F000202}, mSettings);
    DeviceRegisters mRegisters{*mChannel};
};

TEST_F(DeviceRegistersTest, ReadsWhatTheDeviceIs)
{
    readTraits();
    EXPECT_EQ(mRegisters.traits().version, 0x00010002U);
    EXPECT_TRUE(mRegisters.traits().bigEndianRegisters);
    EXPECT_EQ(mRegisters.traits().capability, 0xC0000007U);
}

TEST_F(DeviceRegistersTest, AnOldDeviceMayLackItsFirstRegisters)
{
    mDevice.removeRegister(0x0000);
    mDevice.removeRegister(0x0004);
    mDevice.removeRegister(0x0934);
    readTraits();
    EXPECT_EQ(mRegisters.traits().version, 0x00010000U);
    EXPECT_TRUE(mRegisters.traits().bigEndianRegisters);
    EXPECT_EQ(mRegisters.traits().capability, 0U);
}

TEST_F(DeviceRegistersTest, ADeviceThatRefusesToBeReadIsNotTakenForAnOldOne)
{
    mDevice.setScript([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{errorAck(command, 0x8006)}};
    });
    EXPECT_EQ(mRegisters.readTraits(), deviceError(wire::GvcpStatus::AccessDenied));
}

TEST_F(DeviceRegistersTest, ReadsAndWritesARegister)
{
    mDevice.setRegister(0x0D04, 0);
    EXPECT_EQ(mRegisters.writeRegister(0x0D04, 0x40000240), Status::Ok);
    EXPECT_EQ(mDevice.registerValue(0x0D04), 0x40000240U);
    const auto value = mRegisters.readRegister(0x0D04);
    ASSERT_TRUE(value);
    EXPECT_EQ(*value, 0x40000240U);
}

TEST_F(DeviceRegistersTest, AFailedReadIsNoValue)
{
    const auto value = mRegisters.readRegister(0x1234'0000);
    EXPECT_FALSE(value);
    EXPECT_EQ(value.status(), deviceError(wire::GvcpStatus::InvalidAddress));
    EXPECT_EQ(value.valueOr(77), 77U);
}

TEST_F(DeviceRegistersTest, RefusesOddAddressesAndLengthsWithoutSending)
{
    Bytes bytes(6);
    EXPECT_EQ(mRegisters.readRegister(0x0A02).status(), Status::InvalidParameter);
    EXPECT_EQ(mRegisters.writeRegister(0x0A01, 1), Status::InvalidParameter);
    EXPECT_EQ(mRegisters.readMemory(0x0A00, bytes), Status::InvalidParameter);
    EXPECT_EQ(mRegisters.writeMemory(0x0A00, bytes), Status::InvalidParameter);
    bytes.resize(8);
    EXPECT_EQ(mRegisters.readMemory(0x0A02, bytes), Status::InvalidParameter);
    EXPECT_EQ(mRegisters.writeMemory(0x0A02, bytes), Status::InvalidParameter);
    EXPECT_EQ(mRegisters.readMemory(0xFFFFFFFC, bytes), Status::InvalidParameter);
    EXPECT_TRUE(mDevice.commands().empty());
}

TEST_F(DeviceRegistersTest, ReadsManyRegistersInOneCommandWhereTheDeviceCan)
{
    readTraits();
    std::vector<std::uint32_t> addresses;
    std::vector<std::uint32_t> expected;
    for (std::uint32_t i = 0; i < 140; ++i) {
        addresses.push_back(0x2000 + 4 * i);
        expected.push_back(i * 3);
        mDevice.setRegister(addresses.back(), expected.back());
    }
    const std::size_t before = mDevice.count(kReadRegisterCommand);
    const auto values = mRegisters.readRegisters(addresses);
    ASSERT_TRUE(values);
    EXPECT_EQ(*values, expected);
    const auto sent = mDevice.commands(kReadRegisterCommand);
    ASSERT_EQ(sent.size() - before, 2U);
    EXPECT_EQ(sent.at(before).datagram.size(), 548U); // 135 addresses
    EXPECT_EQ(sent.at(before + 1).datagram.size(), 28U);
}

TEST_F(DeviceRegistersTest, ReadsRegistersOneByOneWhereTheDeviceCannotConcatenate)
{
    mDevice.setRegister(0x0934, 0x00000002);
    readTraits();
    const std::size_t before = mDevice.count(kReadRegisterCommand);
    const auto values = mRegisters.readRegisters(std::array<std::uint32_t, 2>{0x0000, 0x0938});
    ASSERT_TRUE(values);
    EXPECT_EQ(*values, (std::vector<std::uint32_t>{0x00010002, 3000}));
    EXPECT_EQ(mDevice.count(kReadRegisterCommand) - before, 2U);
}

TEST_F(DeviceRegistersTest, ReadsMemoryOfAnyLengthInTheLargestPieces)
{
    const Bytes content = counting(536 * 2 + 8);
    mDevice.setMemory(0x10000, content);
    Bytes read(content.size());
    ASSERT_EQ(mRegisters.readMemory(0x10000, read), Status::Ok);
    EXPECT_EQ(read, content);
    const auto sent = mDevice.commands(kReadMemoryCommand);
    ASSERT_EQ(sent.size(), 3U);
    EXPECT_EQ(Bytes(sent[0].datagram.begin() + 8, sent[0].datagram.end()),
              (Bytes{0, 1, 0, 0, 0, 0, 0x02, 0x18})); // 536 bytes
    EXPECT_EQ(Bytes(sent[2].datagram.begin() + 8, sent[2].datagram.end()),
              (Bytes{0, 1, 0x04, 0x30, 0, 0, 0, 8}));
}

TEST_F(DeviceRegistersTest, ReadingNothingAsksNothing)
{
    EXPECT_EQ(mRegisters.readMemory(0x10000, {}), Status::Ok);
    EXPECT_EQ(mRegisters.writeMemory(0x10000, {}), Status::Ok);
    EXPECT_TRUE(mDevice.commands().empty());
}

TEST_F(DeviceRegistersTest, AnErrorInALaterPieceIsTheResult)
{
    mDevice.setMemory(0x10000, counting(536)); // and no more
    Bytes read(1000);
    EXPECT_EQ(mRegisters.readMemory(0x10000, read), deviceError(wire::GvcpStatus::InvalidAddress));
}

TEST_F(DeviceRegistersTest, MemoryOfAnotherAddressOrTooLittleIsDropped)
{
    mDevice.setMemory(0x10000, {1, 2, 3, 4, 5, 6, 7, 8});
    mDevice.setScript([](const FakeCommand& command) {
        Bytes elsewhere = command.ack;
        elsewhere.at(8) = 0x77;
        Bytes truncated(command.ack.begin(), command.ack.end() - 4);
        truncated.at(5) = 8;
        return std::vector<FakeAnswer>{{elsewhere}, {truncated}, {command.ack}};
    });
    Bytes read(8);
    ASSERT_EQ(mRegisters.readMemory(0x10000, read), Status::Ok);
    EXPECT_EQ(read, (Bytes{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(mDevice.count(kReadMemoryCommand), 1U);
}

TEST_F(DeviceRegistersTest, WritesMemoryOfAnyLengthInTheLargestPieces)
{
    readTraits();
    const Bytes content = counting(1000);
    ASSERT_EQ(mRegisters.writeMemory(0x20000, content), Status::Ok);
    EXPECT_EQ(mDevice.memory(0x20000, content.size()), content);
    const auto sent = mDevice.commands(kWriteMemoryCommand);
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[0].datagram.size(), 8U + 4U + 536U);
    EXPECT_EQ(sent[1].datagram.size(), 8U + 4U + 464U);
    EXPECT_EQ(sent[1].firstWord, 0x20000U + 536U);
}

TEST_F(DeviceRegistersTest, WhateverAWriteAnswerCarriesIsIgnored)
{
    readTraits();
    mDevice.setScript([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{errorAck(command, 0)}}; // success without a payload
    });
    EXPECT_EQ(mRegisters.writeMemory(0x20000, Bytes(8)), Status::Ok);
    EXPECT_EQ(mRegisters.writeRegister(0x0A00, 2), Status::Ok);
}

TEST_F(DeviceRegistersTest, WithoutWriteMemoryBytesGoOutAsRegisters)
{
    mDevice.setRegister(0x0934, 0x00000001);
    mDevice.setRegister(0x20000, 0);
    mDevice.setRegister(0x20004, 0);
    readTraits();
    ASSERT_EQ(mRegisters.writeMemory(0x20000, Bytes{1, 2, 3, 4, 5, 6, 7, 8}), Status::Ok);
    EXPECT_EQ(mDevice.count(kWriteMemoryCommand), 0U);
    EXPECT_EQ(mDevice.registerValue(0x20000), 0x01020304U);
    EXPECT_EQ(mDevice.registerValue(0x20004), 0x05060708U);
}

TEST_F(DeviceRegistersTest, RegistersOfALittleEndianDeviceTakeTheBytesReversed)
{
    mDevice.setRegister(0x0004, 0x00000001);
    mDevice.setRegister(0x0934, 0x00000001);
    mDevice.setRegister(0x20000, 0);
    readTraits();
    ASSERT_EQ(mRegisters.writeMemory(0x20000, Bytes{1, 2, 3, 4}), Status::Ok);
    EXPECT_EQ(mDevice.registerValue(0x20000), 0x04030201U);
}

TEST_F(DeviceRegistersTest, AWriteMemoryThatTurnsOutToBeMissingIsTriedOnlyOnce)
{
    readTraits();
    mDevice.setRegister(0x20000, 0);
    mDevice.setScript([](const FakeCommand& command) {
        const bool known = command.code != kWriteMemoryCommand;
        return std::vector<FakeAnswer>{{known ? command.ack : errorAck(command, 0x8001)}};
    });
    EXPECT_EQ(mRegisters.writeMemory(0x20000, Bytes{1, 2, 3, 4}), Status::Ok);
    EXPECT_EQ(mRegisters.writeMemory(0x20000, Bytes{5, 6, 7, 8}), Status::Ok);
    EXPECT_EQ(mDevice.registerValue(0x20000), 0x05060708U);
    EXPECT_EQ(mDevice.count(kWriteMemoryCommand), 1U);
}

TEST_F(DeviceRegistersTest, ReadsATextUpToItsNul)
{
    Bytes url(512, 0);
    const std::string text = "Local:camera.xml;A000;3e67";
    std::ranges::copy(text, url.begin());
    mDevice.setMemory(0x0200, url);
    const auto read = mRegisters.readString(0x0200, 512);
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, text);
    EXPECT_EQ(mDevice.count(kReadMemoryCommand), 1U);
}

TEST_F(DeviceRegistersTest, ATextMayFillItsFieldWithoutANul)
{
    mDevice.setMemory(0x0048, Bytes(32, 'x'));
    const auto read = mRegisters.readString(0x0048, 32);
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, std::string(32, 'x'));
    const auto part = mRegisters.readString(0x0048, 5);
    ASSERT_TRUE(part);
    EXPECT_EQ(*part, "xxxxx");
}

} // namespace
} // namespace gige::control
