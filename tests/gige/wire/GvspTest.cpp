#include "GvspHeader.h"
#include "GvspLeader.h"
#include "PacketArithmetic.h"
#include "PixelFormat.h"

#include <gtest/gtest.h>

#include <array>

using namespace gige::wire;

namespace
{

Bytes written(const GvspHeader& header)
{
    Bytes bytes(header.size());
    EXPECT_EQ(encode(header, bytes), bytes.size());
    return bytes;
}

TEST(GvspHeader, ReadsAndWritesStandardIds)
{
    const Bytes bytes{0x00, 0x00, 0xFF, 0x79, 0x03, 0x00, 0x00, 0x01};
    const GvspHeader header{.blockId = 0xFF79, .format = GvspFormat::Payload, .packetId = 1};
    EXPECT_EQ(decodeGvspHeader(bytes), header);
    EXPECT_EQ(written(header), bytes);
}

TEST(GvspHeader, ReadsAndWritesExtendedIds)
{
    const Bytes bytes{0x01, 0x00, 0x00, 0x01, 0x82, 0x00, 0x00, 0x00, 0x01, 0x02,
                      0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x0A, 0x0B, 0x0C, 0x0D};
    const GvspHeader header{.status = GvcpStatus::PacketResend,
                            .flags = kGvspResent,
                            .blockId = 0x0102030405060708,
                            .format = GvspFormat::Trailer,
                            .extendedIds = true,
                            .packetId = 0x0A0B0C0D};
    EXPECT_EQ(decodeGvspHeader(bytes), header);
    EXPECT_EQ(written(header), bytes);
}

TEST(GvspHeader, RefusesAPacketShorterThanItsHeader)
{
    const Bytes extended{0, 0, 0, 0, 0x81, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0};
    EXPECT_FALSE(decodeGvspHeader({}));
    EXPECT_FALSE(decodeGvspHeader(Bytes(7)));
    EXPECT_FALSE(decodeGvspHeader(extended));
}

TEST(GvspHeader, ReservedBitsAreNoPartOfTheFormat)
{
    const Bytes bytes{0x00, 0x00, 0x00, 0x01, 0x73, 0x00, 0x00, 0x05};
    EXPECT_EQ(decodeGvspHeader(bytes)->format, GvspFormat::Payload);
    EXPECT_FALSE(decodeGvspHeader(bytes)->extendedIds);
}

TEST(GvspHeader, TellsResentPackets)
{
    EXPECT_FALSE(GvspHeader{}.isResent());
    EXPECT_TRUE(GvspHeader{.status = GvcpStatus::PacketResend}.isResent());
    EXPECT_TRUE((GvspHeader{.flags = kGvspResent, .extendedIds = true}).isResent());
}

TEST(GvspHeader, BlockIdZeroIsATestPacket)
{
    EXPECT_TRUE(isTestPacket(*decodeGvspHeader(Bytes(8))));
    EXPECT_FALSE(isTestPacket(GvspHeader{.blockId = 1}));
}

const Bytes kLeaderBody{0x00, 0x00, 0x00, 0x01, 0x18, 0xE9, 0xB3, 0x4C, 0x48, 0xCC, 0x05, 0x70,
                        0x01, 0x08, 0x00, 0x01, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x02, 0x00,
                        0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};

TEST(ImageLeader, ReadsAndWritesTheStandardsBytes)
{
    const ImageLeader leader{.type = {PayloadKind::Image, false},
                             .timestamp = 0x18E9B34C48CC0570,
                             .image = {.pixelFormat = kPixelMono8, .width = 512, .height = 512}};
    const auto bytes = encode(leader);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.end()), kLeaderBody);
    const auto decoded = decodeLeader(kLeaderBody);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->type, leader.type);
    EXPECT_EQ(decoded->timestamp, leader.timestamp);
    EXPECT_EQ(decoded->image, leader.image);
    EXPECT_EQ(decoded->payloadSize, std::nullopt);
}

TEST(ImageLeader, HasOffsetsAndPaddingBehindTheSize)
{
    Bytes body = kLeaderBody;
    body[0] = 0x12; // field 1 of 2
    body[27] = 3;
    body[31] = 5;
    body[33] = 7;
    body[35] = 9;
    const ImageLayout image{.pixelFormat = kPixelMono8,
                            .width = 512,
                            .height = 512,
                            .offsetX = 3,
                            .offsetY = 5,
                            .paddingX = 7,
                            .paddingY = 9};
    EXPECT_EQ(decodeLeader(body)->image, image);
    const auto written =
        encode(ImageLeader{.fieldInfo = 0x12, .timestamp = 0x18E9B34C48CC0570, .image = image});
    EXPECT_EQ(Bytes(written.begin(), written.end()), body);
    EXPECT_EQ(imageBytes(image), 512U * (512 + 7) + 9);
}

TEST(Leader, ChunkBitIsNoPartOfTheKind)
{
    Bytes body = kLeaderBody;
    body[2] = 0x40;
    EXPECT_EQ(decodeLeader(body)->type, (PayloadType{PayloadKind::Image, true}));
    EXPECT_TRUE(decodeLeader(body)->image);
    EXPECT_EQ(toCode({PayloadKind::Image, true}), 0x4001);
}

TEST(Leader, ReportsKindsThatAreNoImage)
{
    Bytes chunk(12);
    chunk[3] = 0x04;
    chunk[11] = 0x2A;
    const auto leader = decodeLeader(chunk);
    ASSERT_TRUE(leader);
    EXPECT_EQ(leader->type.kind, PayloadKind::Chunk);
    EXPECT_EQ(leader->timestamp, 0x2AU);
    EXPECT_FALSE(leader->image);

    Bytes raw(20);
    raw[3] = 0x02;
    raw[18] = 0x10;
    EXPECT_EQ(decodeLeader(raw)->payloadSize, 0x1000U);

    Bytes unknown(12);
    unknown[2] = 0x3F;
    unknown[3] = 0xFF;
    EXPECT_EQ(static_cast<std::uint16_t>(decodeLeader(unknown)->type.kind), 0x3FFF);
}

TEST(Leader, RefusesABodyTooShortForItsKind)
{
    EXPECT_FALSE(decodeLeader({}));
    EXPECT_FALSE(decodeLeader(Bytes(11)));
    EXPECT_FALSE(decodeLeader(ByteView(kLeaderBody).first(35)));
    Bytes raw(19);
    raw[3] = 0x02;
    EXPECT_FALSE(decodeLeader(raw));
}

TEST(ImageTrailer, WritesTheStandardsBytes)
{
    const Bytes body{0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x02, 0x00};
    const ImageTrailer trailer{.type = {PayloadKind::Image, false}, .height = 512};
    const auto bytes = encode(trailer);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.end()), body);
}

TEST(PacketArithmetic, StandardIdsTake36BytesOfEachPacket)
{
    EXPECT_EQ(dataBytesPerPacket(1400), 1364U);
    EXPECT_EQ(dataBytesPerPacket(1400, true), 1352U);
    EXPECT_EQ(dataBytesPerPacket(36), 0U);
    EXPECT_EQ(dataBytesPerPacket(0), 0U);
}

TEST(PacketArithmetic, AnImageOf512LinesTakes193Packets)
{
    EXPECT_EQ(dataPacketCount(262144, 1364), 193U);
    EXPECT_EQ(dataOffset(193, 1364), 262144U - 256);
    EXPECT_EQ(dataPacketCount(4096, 1364), 4U);
    EXPECT_EQ(dataPacketCount(2728, 1364), 2U);
    EXPECT_EQ(dataPacketCount(0, 1364), 0U);
    EXPECT_EQ(dataOffset(1, 1364), 0U);
}

TEST(PacketArithmetic, StandardBlockIdsWrapFrom65535To1)
{
    EXPECT_EQ(nextBlockId(1, false), 2U);
    EXPECT_EQ(nextBlockId(0xFFFF, false), 1U);
    EXPECT_EQ(nextBlockId(0xFFFF, true), 0x10000U);
}

TEST(PixelFormat, CodeTellsTheBits)
{
    EXPECT_EQ(bitsPerPixel(kPixelMono8), 8U);
    EXPECT_EQ(bitsPerPixel(0x010C0006), 12U); // Mono12Packed
    EXPECT_EQ(lineBytes(kPixelMono8, 1280), 1280U);
    EXPECT_EQ(lineBytes(0x010C0047, 3), 5U); // Mono12p: 36 bits
    EXPECT_EQ(lineBytes(0x01010037, 9), 2U); // Mono1p
    EXPECT_EQ(lineBytes(0x02180014, 4), 12U);
}

} // namespace
