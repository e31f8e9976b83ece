#include "GvspHeader.h"
#include "PacketArithmetic.h"

#include <gtest/gtest.h>

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

} // namespace
