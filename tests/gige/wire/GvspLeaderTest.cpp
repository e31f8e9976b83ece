#include "GvspLeader.h"
#include "PixelFormat.h"

#include <gtest/gtest.h>

using namespace gige::wire;

namespace
{

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

} // namespace
