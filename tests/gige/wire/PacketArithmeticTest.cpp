#include "PacketArithmetic.h"

#include <gtest/gtest.h>

using namespace gige::wire;

namespace
{

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

} // namespace
