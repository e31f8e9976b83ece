#include "BootstrapRegisters.h"

#include <gtest/gtest.h>

using namespace gige::wire;

namespace
{

TEST(StreamChannelRegisters, AreEach64BytesApart)
{
    constexpr StreamChannelRegisters kFirst(0);
    EXPECT_EQ(kFirst.port(), 0x0D00U);
    EXPECT_EQ(kFirst.packetSize(), 0x0D04U);
    EXPECT_EQ(kFirst.packetDelay(), 0x0D08U);
    EXPECT_EQ(kFirst.destinationAddress(), 0x0D18U);
    EXPECT_EQ(kFirst.sourcePort(), 0x0D1CU);
    EXPECT_EQ(kFirst.capability(), 0x0D20U);
    EXPECT_EQ(kFirst.configuration(), 0x0D24U);
    EXPECT_EQ(StreamChannelRegisters(2).destinationAddress(), 0x0D98U);
}

} // namespace
