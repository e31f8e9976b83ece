#include "AccessMode.h"

#include "TestTree.h"

namespace gige::genapi
{
namespace
{

constexpr auto kNi = AccessMode::NotImplemented;
constexpr auto kNa = AccessMode::NotAvailable;
constexpr auto kWo = AccessMode::WriteOnly;
constexpr auto kRo = AccessMode::ReadOnly;
constexpr auto kRw = AccessMode::ReadWrite;

TEST(AccessModes, IntersectToWhatBothAllow)
{
    for (const AccessMode mode : {kNi, kNa, kWo, kRo, kRw}) {
        EXPECT_EQ(intersect(kRw, mode), mode);
        EXPECT_EQ(intersect(mode, kRw), mode);
        EXPECT_EQ(intersect(mode, mode), mode);
        EXPECT_EQ(intersect(kNi, mode), kNi);
    }
    EXPECT_EQ(intersect(kRo, kWo), kNa);
    EXPECT_EQ(intersect(kWo, kRo), kNa);
    EXPECT_EQ(intersect(kNa, kRo), kNa);
}

TEST(AccessModes, LoseWritingWhenLocked)
{
    EXPECT_EQ(lock(kRw), kRo);
    EXPECT_EQ(lock(kWo), kNa);
    EXPECT_EQ(lock(kRo), kRo);
    EXPECT_EQ(lock(kNa), kNa);
    EXPECT_EQ(lock(kNi), kNi);
}

const std::string kConditions = R"(
<Integer Name="On"><Value>1</Value></Integer>
<Integer Name="Off"><Value>0</Value></Integer>
<Float Name="Half"><Value>0.5</Value></Float>
<Boolean Name="No"><Value>false</Value></Boolean>
<Enumeration Name="Zero"><EnumEntry Name="A"><Value>0</Value></EnumEntry><Value>0</Value></Enumeration>
<String Name="Text"><Value>x</Value></String>
)";

/// The mode of an integer "X" with these elements besides a constant value.
Result<AccessMode> modeWith(const std::string& elements,
                            const std::string& value = "<Value>1</Value>")
{
    TestTree tree(
        kConditions + "<Integer Name=\"X\">" + elements + value + "</Integer>" +
        "<IntReg Name=\"RoReg\"><Address>0x100</Address><Length>4</Length></IntReg>"
        "<IntReg Name=\"WoReg\"><Address>0x100</Address><Length>4</Length>"
        "<AccessMode>WO</AccessMode></IntReg>"
        "<Integer Name=\"Gone\"><pIsAvailable>Off</pIsAvailable><Value>1</Value></Integer>"
        "<Integer Name=\"Never\"><pIsImplemented>Off</pIsImplemented><Value>1</Value></Integer>");
    return tree.integer("X").accessMode();
}

TEST(AccessMode, OfAConstantIsReadWrite)
{
    EXPECT_EQ(*modeWith(""), kRw);
}

TEST(AccessMode, FollowsTheConditions)
{
    EXPECT_EQ(*modeWith("<pIsImplemented>Off</pIsImplemented><pIsAvailable>Off</pIsAvailable>"),
              kNi);
    EXPECT_EQ(*modeWith("<pIsImplemented>On</pIsImplemented><pIsAvailable>Off</pIsAvailable>"),
              kNa);
    EXPECT_EQ(*modeWith("<pIsAvailable>Half</pIsAvailable>"), kRw);
    EXPECT_EQ(*modeWith("<pIsAvailable>No</pIsAvailable>"), kNa);
    EXPECT_EQ(*modeWith("<pIsAvailable>Zero</pIsAvailable>"), kNa);
    EXPECT_EQ(*modeWith("<pIsLocked>On</pIsLocked>"), kRo);
    EXPECT_EQ(*modeWith("<pIsLocked>Off</pIsLocked>"), kRw);
}

TEST(AccessMode, CountsAMissingConditionAsNotMet)
{
    EXPECT_EQ(*modeWith("<pIsAvailable>Gone</pIsAvailable>"), kNa);
    EXPECT_EQ(*modeWith("<pIsImplemented>Never</pIsImplemented>"), kNi);
    EXPECT_EQ(*modeWith("<pIsLocked>Gone</pIsLocked>"), kRw);
    EXPECT_EQ(modeWith("<pIsAvailable>Text</pIsAvailable>").status(), Status::WrongKind);
}

TEST(AccessMode, IsNarrowedByTheImposedOne)
{
    EXPECT_EQ(*modeWith("<ImposedAccessMode>RO</ImposedAccessMode>"), kRo);
    EXPECT_EQ(*modeWith("<ImposedAccessMode>WO</ImposedAccessMode>"), kWo);
    EXPECT_EQ(*modeWith("<ImposedAccessMode>WO</ImposedAccessMode><pIsLocked>On</pIsLocked>"), kNa);
    EXPECT_EQ(*modeWith("<ImposedAccessMode>WO</ImposedAccessMode>", "<pValue>RoReg</pValue>"),
              kNa);
}

TEST(AccessMode, IsThatOfTheTarget)
{
    EXPECT_EQ(*modeWith("", "<pValue>RoReg</pValue>"), kRo);
    EXPECT_EQ(*modeWith("", "<pValue>WoReg</pValue>"), kWo);
    EXPECT_EQ(*modeWith("", "<pValue>Gone</pValue>"), kNa);
    EXPECT_EQ(*modeWith("", "<pValue>Never</pValue>"), kNi);
}

TEST(AccessMode, IsThatOfTheSelectedTarget)
{
    const std::string indexed = "<pValueIndexed Index=\"0\">RoReg</pValueIndexed>"
                                "<pValueIndexed Index=\"1\">WoReg</pValueIndexed>";
    EXPECT_EQ(*modeWith("", "<pIndex>Off</pIndex>" + indexed), kRo);
    EXPECT_EQ(*modeWith("", "<pIndex>On</pIndex>" + indexed), kWo);
}

TEST(AccessMode, RefusesLocallyWithANamedError)
{
    TestTree tree(kConditions + R"(
        <IntReg Name="Ro"><Address>0x100</Address><Length>4</Length></IntReg>
        <IntReg Name="Wo"><Address>0x100</Address><Length>4</Length><AccessMode>WO</AccessMode></IntReg>
        <IntReg Name="Na"><pIsAvailable>Off</pIsAvailable><Address>0x100</Address><Length>4</Length></IntReg>
        <IntReg Name="Ni"><pIsImplemented>Off</pIsImplemented><Address>0x100</Address><Length>4</Length></IntReg>
        <SwissKnife Name="Formula"><Formula>1</Formula></SwissKnife>)");
    EXPECT_EQ(tree.integer("Ro").setValue(1), Status::ReadOnly);
    EXPECT_EQ(tree.valueStatus("Wo"), Status::WriteOnly);
    EXPECT_EQ(tree.valueStatus("Na"), Status::NotAvailable);
    EXPECT_EQ(tree.integer("Na").setValue(1), Status::NotAvailable);
    EXPECT_EQ(tree.valueStatus("Ni"), Status::NotImplemented);
    EXPECT_EQ(tree.integer("Ni").setValue(1), Status::NotImplemented);
    EXPECT_EQ(tree.real("Formula").setValue(1), Status::ReadOnly);
    EXPECT_TRUE(tree.port.takeAccesses().empty());
}

TEST(AccessMode, OfChunkAndEventRegistersIsNotAvailable)
{
    TestTree tree(R"(
        <Port Name="Chunk"><ChunkID>4711</ChunkID></Port><Port Name="Event"><EventID>9001</EventID></Port>
        <IntReg Name="InChunk"><Address>0</Address><Length>4</Length><pPort>Chunk</pPort></IntReg>
        <IntReg Name="InEvent"><Address>0</Address><Length>4</Length><pPort>Event</pPort></IntReg>)");
    EXPECT_EQ(tree.valueStatus("InChunk"), Status::NotAvailable);
    EXPECT_EQ(tree.valueStatus("InEvent"), Status::NotAvailable);
    EXPECT_TRUE(tree.port.takeAccesses().empty());
}

TEST(AccessMode, AsksTheDeviceOnlyForWhatItNeeds)
{
    TestTree tree(R"(<IntReg Name="Flag"><Address>0x100</Address><Length>4</Length></IntReg>
        <Integer Name="X"><pIsAvailable>Flag</pIsAvailable><Value>3</Value></Integer>)");
    EXPECT_EQ(*tree.integer("X").accessMode(), kNa);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4"}));
    tree.map->invalidate();
    tree.port.failWith(Status::PortTimeout);
    EXPECT_EQ(tree.integer("X").accessMode().status(), Status::PortTimeout);
    EXPECT_EQ(tree.integer("X").setValue(1), Status::PortTimeout);
}

} // namespace
} // namespace gige::genapi
