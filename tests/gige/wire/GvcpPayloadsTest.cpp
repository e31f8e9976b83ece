#include "GvcpPayloads.h"

#include <gtest/gtest.h>

#include <array>

using namespace gige::wire;

namespace
{

TEST(ReadRegister, ReadsAndWritesTwoAddresses)
{
    const Bytes payload{0x00, 0x00, 0x0A, 0x00, 0x00, 0x00, 0x09, 0x38};
    const ReadRegister command{{0x0A00, 0x0938}};
    EXPECT_EQ(encode(command), payload);
    EXPECT_EQ(decodeReadRegister(payload), command);
    EXPECT_EQ(commandDatagram(GvcpCommand::ReadRegister, kGvcpAckRequired, 4, payload),
              (Bytes{0x42, 0x01, 0x00, 0x80, 0x00, 0x08, 0x00, 0x04, //
                     0x00, 0x00, 0x0A, 0x00, 0x00, 0x00, 0x09, 0x38}));
}

TEST(ReadRegister, RefusesNoneHalfAndTooManyAddresses)
{
    EXPECT_FALSE(decodeReadRegister({}));
    EXPECT_FALSE(decodeReadRegister(Bytes{0, 0, 0x0A}));
    EXPECT_FALSE(decodeReadRegister(Bytes(6)));
    EXPECT_EQ(decodeReadRegister(Bytes(540))->addresses.size(), 135U);
    EXPECT_FALSE(decodeReadRegister(Bytes(544)));
}

TEST(ReadRegisterAck, WritesTwoValues)
{
    const Bytes payload{0, 0, 0, 2, 0, 0, 0x0B, 0xB8};
    const ReadRegisterAck ack{{2, 3000}};
    EXPECT_EQ(encode(ack), payload);
}

TEST(WriteRegister, ReadsAndWritesAddressAndValue)
{
    const Bytes payload{0x00, 0x00, 0x0A, 0x00, 0x00, 0x00, 0x00, 0x02};
    const WriteRegister command{{{0x0A00, 2}}};
    EXPECT_EQ(encode(command), payload);
    EXPECT_EQ(decodeWriteRegister(payload), command);
}

TEST(WriteRegister, RefusesNoneHalfAndTooManyWrites)
{
    EXPECT_FALSE(decodeWriteRegister({}));
    EXPECT_FALSE(decodeWriteRegister(Bytes(12)));
    EXPECT_EQ(decodeWriteRegister(Bytes(536))->writes.size(), 67U);
    EXPECT_FALSE(decodeWriteRegister(Bytes(544)));
}

TEST(WriteAck, WritesTheIndex)
{
    EXPECT_EQ(encode(WriteAck{1}), (std::array<std::uint8_t, 4>{0, 0, 0, 1}));
}

TEST(ReadMemory, ReadsAndWritesAddressAndCount)
{
    const Bytes payload{0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x02, 0x00};
    const ReadMemory command{0x200, 512};
    EXPECT_EQ(encode(command), payload);
    EXPECT_EQ(decodeReadMemory(payload), command);
}

TEST(ReadMemory, RefusesAnotherLength)
{
    EXPECT_FALSE(decodeReadMemory(Bytes(7)));
    EXPECT_FALSE(decodeReadMemory(Bytes(9)));
}

TEST(MemoryBlock, ReadsAndWritesAddressAndData)
{
    const Bytes data{1, 2, 3, 4};
    const Bytes payload{0x00, 0x00, 0xA0, 0x10, 1, 2, 3, 4};
    EXPECT_EQ(encode(MemoryBlock{0xA010, data}), payload);
    const auto block = decodeMemoryBlock(payload);
    ASSERT_TRUE(block);
    EXPECT_EQ(block->address, 0xA010U);
    EXPECT_EQ(Bytes(block->data.begin(), block->data.end()), data);
}

TEST(MemoryBlock, RefusesNoDataAndTooMuch)
{
    EXPECT_FALSE(decodeMemoryBlock({}));
    EXPECT_FALSE(decodeMemoryBlock(Bytes(4)));
    EXPECT_EQ(decodeMemoryBlock(Bytes(540))->data.size(), 536U);
    EXPECT_FALSE(decodeMemoryBlock(Bytes(541)));
}

TEST(PendingAck, ReadsAndWritesMilliseconds)
{
    using std::chrono::milliseconds;
    EXPECT_EQ(encode(PendingAck{milliseconds(1500)}),
              (std::array<std::uint8_t, 4>{0, 0, 0x05, 0xDC}));
    EXPECT_EQ(decodePendingAck(Bytes{0, 0, 0x05, 0xDC}), PendingAck{milliseconds(1500)});
    EXPECT_FALSE(decodePendingAck(Bytes{0, 0, 5}));
}

TEST(PendingAck, LimitsTheTimeToSixteenBits)
{
    using std::chrono::milliseconds;
    EXPECT_EQ(encode(PendingAck{milliseconds(70000)}),
              (std::array<std::uint8_t, 4>{0, 0, 0xFF, 0xFF}));
    EXPECT_EQ(encode(PendingAck{milliseconds(-1)}), (std::array<std::uint8_t, 4>{0, 0, 0, 0}));
}

TEST(PacketResend, WritesThe16BitLayout)
{
    const PacketResend command{.channel = 0, .blockId = 0x1234, .firstPacket = 5, .lastPacket = 9};
    std::array<std::uint8_t, kMaxPacketResendDatagram> datagram{};
    ASSERT_EQ(encodeDatagram(command, 2, datagram), 20U);
    const Bytes bytes{0x42, 0x00, 0x00, 0x40, 0x00, 0x0C, 0x00, 0x02, 0x00, 0x00,
                      0x12, 0x34, 0x00, 0x00, 0x00, 0x05, 0x00, 0x00, 0x00, 0x09};
    EXPECT_EQ(Bytes(datagram.begin(), datagram.begin() + 20), bytes);
    EXPECT_EQ(decodePacketResend(0, ByteView(bytes).subspan(8)), command);
}

TEST(PacketResend, WritesThe64BitLayout)
{
    const PacketResend command{.extendedIds = true,
                               .channel = 0,
                               .blockId = 0x1122334455667788,
                               .firstPacket = 5,
                               .lastPacket = 9};
    std::array<std::uint8_t, kMaxPacketResendDatagram> datagram{};
    ASSERT_EQ(encodeDatagram(command, 3, datagram), 28U);
    const Bytes bytes{0x42, 0x10, 0x00, 0x40, 0x00, 0x14, 0x00, 0x03, 0x00, 0x00,
                      0x00, 0x00, 0x00, 0x00, 0x00, 0x05, 0x00, 0x00, 0x00, 0x09,
                      0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88};
    EXPECT_EQ(Bytes(datagram.begin(), datagram.end()), bytes);
    EXPECT_EQ(decodePacketResend(0x10, ByteView(bytes).subspan(8)), command);
}

TEST(PacketResend, KeepsPacketIdsTo24BitsInThe16BitLayout)
{
    const PacketResend command{.blockId = 1, .firstPacket = 0x01000002, .lastPacket = 0xFFFFFFFF};
    std::array<std::uint8_t, kMaxPacketResendDatagram> datagram{};
    encodeDatagram(command, 1, datagram);
    const auto decoded = decodePacketResend(0, ByteView(datagram).subspan(8, 12));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->firstPacket, 2U);
    EXPECT_EQ(decoded->lastPacket, kResendToEnd);
}

TEST(PacketResend, RefusesALengthThatIsNotItsLayouts)
{
    EXPECT_FALSE(decodePacketResend(0, Bytes(11)));
    EXPECT_FALSE(decodePacketResend(0, Bytes(20)));
    EXPECT_FALSE(decodePacketResend(kGvcpExtendedIds, Bytes(12)));
    EXPECT_FALSE(decodePacketResend(kGvcpExtendedIds, {}));
}

TEST(ForceIp, HasItsFieldsAtTheStandardsOffsets)
{
    const ForceIp command{.mac = {{0x02, 0x54, 0x45, 0x00, 0x00, 0x21}},
                          .address = 0x7F000015,
                          .subnetMask = 0xFF000000,
                          .gateway = 0x7F000001};
    Bytes payload(56);
    payload[2] = 0x02;
    payload[3] = 0x54;
    payload[4] = 0x45;
    payload[7] = 0x21;
    payload[20] = 0x7F;
    payload[23] = 0x15;
    payload[36] = 0xFF;
    payload[52] = 0x7F;
    payload[55] = 0x01;
    EXPECT_EQ(encode(command), payload);
    EXPECT_EQ(decodeForceIp(payload), command);
}

TEST(ForceIp, RefusesAnotherLength)
{
    EXPECT_FALSE(decodeForceIp(Bytes(55)));
    EXPECT_FALSE(decodeForceIp(Bytes(57)));
}

} // namespace
