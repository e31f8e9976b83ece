#include "TestTree.h"

namespace gige::genapi
{
namespace
{

constexpr const char* kLimitsInRegisters = R"(
<Integer Name="N"><pValue>Value</pValue><pMin>Min</pMin><pMax>Max</pMax><pInc>Inc</pInc></Integer>
<Integer Name="Outer"><pValue>N</pValue><Max>30</Max></Integer>
<IntSwissKnife Name="Room"><pVariable Name="N.Max">N</pVariable><Formula>N.Max - 1</Formula></IntSwissKnife>
<IntReg Name="Value"><Address>0x100</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable></IntReg>
<IntReg Name="Min"><Address>0x104</Address><Length>4</Length><pPort>Device</pPort><Cachable>NoCache</Cachable></IntReg>
<IntReg Name="Max"><Address>0x108</Address><Length>4</Length><pPort>Device</pPort><Cachable>NoCache</Cachable></IntReg>
<IntReg Name="Inc"><Address>0x10C</Address><Length>4</Length><pPort>Device</pPort><Cachable>NoCache</Cachable></IntReg>)";

TEST(Limits, AreReadOneByOne)
{
    TestTree tree(kLimitsInRegisters, "0A000000020000002800000004000000");
    EXPECT_EQ(*tree.integer("N").minimum(), 2);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 104+4"}));
    EXPECT_EQ(*tree.integer("N").maximum(), 40);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 108+4"}));
    EXPECT_EQ(*tree.integer("N").increment(), 4);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 10c+4"}));
}

TEST(Limits, ThatTheNodeHasItselfNeedNoneOfTheOnesBelow)
{
    TestTree tree(kLimitsInRegisters, "0A000000020000002800000004000000");
    EXPECT_EQ(*tree.integer("Outer").maximum(), 30);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{}));
    EXPECT_EQ(*tree.integer("Outer").minimum(), 2);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 104+4"}));
}

TEST(Limits, AreReadOneByOneByFormulas)
{
    TestTree tree(kLimitsInRegisters, "0A000000020000002800000004000000");
    EXPECT_EQ(tree.value("Room"), 39);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 108+4"}));
}

TEST(Limits, AreAllLookedAtByAWrite)
{
    TestTree tree(kLimitsInRegisters, "0A000000020000002800000004000000");
    EXPECT_EQ(tree.integer("N").setValue(6), Status::Ok);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 104+4", "R 108+4", "R 10c+4", "W 100+4"}));
}

TEST(Limits, FailAlone)
{
    TestTree tree(kLimitsInRegisters, "0A00000002000000"); // the device has no more registers
    EXPECT_EQ(*tree.integer("N").minimum(), 2);
    EXPECT_EQ(tree.integer("N").maximum().status(), Status::PortBadAddress);
    EXPECT_EQ(tree.integer("N").increment().status(), Status::PortBadAddress);
}

} // namespace
} // namespace gige::genapi
