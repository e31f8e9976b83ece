#include "GvcpHeader.h"

#include <gtest/gtest.h>

#include <array>

using namespace gige::wire;

namespace
{

TEST(GvcpCommandHeader, ReadsAndWritesTheStandardsBytes)
{
    const std::array<std::uint8_t, 8> bytes{0x42, 0x01, 0x00, 0x80, 0x00, 0x04, 0x12, 0x34};
    const GvcpCommandHeader header{kGvcpAckRequired, GvcpCommand::ReadRegister, 4, 0x1234};
    EXPECT_EQ(decodeCommandHeader(bytes), header);
    EXPECT_EQ(encode(header), bytes);
}

TEST(GvcpCommandHeader, RefusesAnotherKeyAndShortDatagrams)
{
    EXPECT_FALSE(decodeCommandHeader({}));
    EXPECT_FALSE(decodeCommandHeader(Bytes{0x42, 0x01, 0x00, 0x80, 0x00, 0x00, 0x12}));
    EXPECT_FALSE(decodeCommandHeader(Bytes{0x43, 0x01, 0x00, 0x80, 0x00, 0x00, 0x12, 0x34}));
}

TEST(GvcpAckHeader, ReadsAndWritesAnErrorAcknowledge)
{
    const std::array<std::uint8_t, 8> bytes{0x80, 0x03, 0x00, 0x85, 0x00, 0x00, 0xFF, 0x15};
    const GvcpAckHeader header{GvcpStatus::InvalidAddress, GvcpCommand::ReadMemoryAck, 0, 0xFF15};
    EXPECT_EQ(decodeAckHeader(bytes), header);
    EXPECT_EQ(encode(header), bytes);
}

TEST(GvcpAckHeader, DoesNotTakeACommandForAnAcknowledge)
{
    EXPECT_FALSE(decodeAckHeader(Bytes{0x42, 0x01, 0x00, 0x80, 0x00, 0x00, 0x12, 0x34}));
    EXPECT_FALSE(decodeAckHeader(Bytes{0x00, 0x00, 0x00, 0x81, 0x00, 0x00, 0x12}));
}

TEST(GvcpCommand, DiscoveryHasNoPayload)
{
    const Bytes bytes{0x42, 0x01, 0x00, 0x02, 0x00, 0x00, 0xFF, 0xFF};
    EXPECT_EQ(commandDatagram(GvcpCommand::Discovery, kGvcpAckRequired, 0xFFFF), bytes);
    const auto packet = decodeCommand(bytes);
    ASSERT_TRUE(packet);
    EXPECT_EQ(packet->header.command, GvcpCommand::Discovery);
    EXPECT_TRUE(packet->payload.empty());
}

TEST(GvcpCommand, IsDroppedWhenItsLengthDoesNotFit)
{
    const Bytes tooShort{0x42, 0x01, 0x00, 0x80, 0x00, 0x08, 0x00, 0x04, 0, 0, 0x0A, 0};
    const Bytes tooLong{0x42, 0x01, 0x00, 0x80, 0x00, 0x00, 0x00, 0x04, 0, 0, 0x0A, 0};
    EXPECT_FALSE(decodeCommand(tooShort));
    EXPECT_FALSE(decodeCommand(tooLong));
}

TEST(GvcpAck, CarriesItsPayloadAndIgnoresWhatFollows)
{
    const Bytes bytes{0, 0, 0x00, 0x89, 0x00, 0x04, 0x00, 0x07, 0, 0, 0x05, 0xDC, 0xEE};
    const auto packet = decodeAck(bytes);
    ASSERT_TRUE(packet);
    EXPECT_EQ(packet->header, (GvcpAckHeader{GvcpStatus::Success, GvcpCommand::PendingAck, 4, 7}));
    EXPECT_EQ(Bytes(packet->payload.begin(), packet->payload.end()), (Bytes{0, 0, 0x05, 0xDC}));
    EXPECT_FALSE(decodeAck(ByteView(bytes).first(11)));
}

TEST(GvcpAck, IsWrittenWithStatusCodeAndId)
{
    EXPECT_EQ(
        ackDatagram(GvcpStatus::Success, GvcpCommand::WriteRegisterAck, 0xFF36, Bytes{0, 0, 0, 1}),
        (Bytes{0, 0, 0x00, 0x83, 0x00, 0x04, 0xFF, 0x36, 0, 0, 0, 1}));
}

TEST(GvcpCommand, AcknowledgeCodeIsOneMore)
{
    EXPECT_EQ(ackOf(GvcpCommand::WriteMemory), GvcpCommand::WriteMemoryAck);
    EXPECT_EQ(static_cast<std::uint16_t>(ackOf(GvcpCommand{0x0100})), 0x0101);
}

TEST(GvcpRequestId, WrapsFrom65535To1)
{
    EXPECT_EQ(nextRequestId(1), 2);
    EXPECT_EQ(nextRequestId(0xFFFF), 1);
}

TEST(GvcpStatus, TextCarriesNameAndNumber)
{
    EXPECT_EQ(statusText(GvcpStatus::AccessDenied), "ACCESS_DENIED (0x8006)");
    EXPECT_EQ(statusText(GvcpStatus::PacketAndPreviousRemoved),
              "PACKET_AND_PREV_REMOVED_FROM_MEMORY (0x8011)");
    EXPECT_EQ(statusText(GvcpStatus{0xC123}), "UNKNOWN_STATUS (0xC123)");
}

TEST(GvcpStatus, TopBitTellsErrors)
{
    EXPECT_FALSE(isError(GvcpStatus::Success));
    EXPECT_FALSE(isError(GvcpStatus::PacketResend));
    EXPECT_TRUE(isError(GvcpStatus::NotImplemented));
    EXPECT_TRUE(isError(GvcpStatus{0xC001}));
}

struct NamedStatus {
    std::uint16_t code;
    const char* name;
};

TEST(GvcpStatus, EveryCodeHasItsName)
{
    constexpr std::array<NamedStatus, 26> kNames{{
        {0x0000, "SUCCESS"},
        {0x0100, "PACKET_RESEND"},
        {0x8001, "NOT_IMPLEMENTED"},
        {0x8002, "INVALID_PARAMETER"},
        {0x8003, "INVALID_ADDRESS"},
        {0x8004, "WRITE_PROTECT"},
        {0x8005, "BAD_ALIGNMENT"},
        {0x8006, "ACCESS_DENIED"},
        {0x8007, "BUSY"},
        {0x8008, "LOCAL_PROBLEM"},
        {0x8009, "MSG_MISMATCH"},
        {0x800A, "INVALID_PROTOCOL"},
        {0x800B, "NO_MSG"},
        {0x800C, "PACKET_UNAVAILABLE"},
        {0x800D, "DATA_OVERRUN"},
        {0x800E, "INVALID_HEADER"},
        {0x800F, "WRONG_CONFIG"},
        {0x8010, "PACKET_NOT_YET_AVAILABLE"},
        {0x8011, "PACKET_AND_PREV_REMOVED_FROM_MEMORY"},
        {0x8012, "PACKET_REMOVED_FROM_MEMORY"},
        {0x8013, "NO_REF_TIME"},
        {0x8014, "PACKET_TEMPORARILY_UNAVAILABLE"},
        {0x8015, "OVERFLOW"},
        {0x8016, "ACTION_LATE"},
        {0x8017, "LEADER_TRAILER_OVERFLOW"},
        {0x8FFF, "ERROR"},
    }};
    for (const auto& [code, name] : kNames) {
        EXPECT_EQ(statusName(GvcpStatus{code}), name) << std::hex << code;
    }
}

} // namespace
