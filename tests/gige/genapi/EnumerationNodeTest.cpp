#include "TestTree.h"

namespace gige::genapi
{
namespace
{

constexpr const char* kMode = R"(
<Integer Name="Extra"><Value>0</Value></Integer>
<IntReg Name="Reg"><Address>0x100</Address><Length>4</Length><AccessMode>RW</AccessMode></IntReg>
<Enumeration Name="Mode">
  <EnumEntry Name="Off"><Value>0</Value></EnumEntry>
  <EnumEntry Name="Entry1"><Value>0x10</Value><Symbolic>Fast</Symbolic><NumericValue>2.5</NumericValue>
    <DisplayName>Fast mode</DisplayName><ToolTip>as fast as it can</ToolTip><IsSelfClearing>Yes</IsSelfClearing></EnumEntry>
  <EnumEntry Name="Secret"><pIsImplemented>Extra</pIsImplemented><Value>2</Value></EnumEntry>
  <EnumEntry Name="Broken"/><EnumEntry><Value>3</Value></EnumEntry>
  <pValue>Reg</pValue></Enumeration>)";

TEST(Enumeration, KnowsItsEntries)
{
    TestTree tree(kMode);
    auto& mode = tree.get<EnumerationNode>("Mode");
    ASSERT_EQ(mode.entries().size(), 3U);
    const EnumEntryNode& fast = *mode.entries()[1];
    EXPECT_EQ(fast.name(), "Entry1");
    EXPECT_EQ(fast.symbolic(), "Fast");
    EXPECT_EQ(fast.value(), 16);
    EXPECT_EQ(fast.info().displayName, "Fast mode");
    EXPECT_EQ(fast.info().toolTip, "as fast as it can");
    EXPECT_EQ(mode.entries()[0]->symbolic(), "Off");
    EXPECT_EQ(mode.findEntry("Fast"), &fast);
    EXPECT_EQ(mode.findEntry("Entry1"), &fast);
    EXPECT_EQ(mode.findEntry(16), &fast);
    EXPECT_EQ(mode.findEntry("Nothing"), nullptr);
    EXPECT_EQ(tree.map->find("Fast"), nullptr);
}

TEST(Enumeration, ReadsTheSymbolicNameOrElseTheNumber)
{
    TestTree tree(kMode, "10000000");
    auto& mode = tree.get<EnumerationNode>("Mode");
    EXPECT_EQ(*mode.text(), "Fast");
    tree.port.set(0x100, "63000000");
    EXPECT_EQ(*mode.text(), "Fast");
    EXPECT_EQ(*mode.text(ReadFrom::Device), "99");
    EXPECT_EQ(*mode.value(), 99);
}

TEST(Enumeration, WritesOnlyEntriesThatAreOffered)
{
    TestTree tree(kMode, "10000000");
    auto& mode = tree.get<EnumerationNode>("Mode");
    EXPECT_EQ(mode.setText("Off"), Status::Ok);
    EXPECT_EQ(tree.port.hex(0x100, 4), "00000000");
    EXPECT_EQ(mode.setText("Entry1"), Status::Ok);
    EXPECT_EQ(tree.port.hex(0x100, 4), "10000000");
    EXPECT_EQ(mode.setText("Secret"), Status::EntryNotOffered);
    EXPECT_EQ(mode.setValue(2), Status::EntryNotOffered);
    EXPECT_EQ(mode.setText(""), Status::NoSuchEntry);
    EXPECT_EQ(mode.setValue(3), Status::NoSuchEntry);
    EXPECT_EQ(tree.integer("Extra").setValue(1), Status::Ok);
    EXPECT_EQ(mode.setText("Secret"), Status::Ok);
    EXPECT_EQ(tree.port.hex(0x100, 4), "02000000");
}

TEST(Enumeration, CountsAsItsIntegerElsewhere)
{
    TestTree tree(std::string(kMode) + R"(<Integer Name="N"><pValue>Mode</pValue></Integer>
        <IntSwissKnife Name="K"><pVariable Name="M">Mode</pVariable><Formula>M + 1</Formula></IntSwissKnife>)",
                  "10000000");
    EXPECT_EQ(tree.value("N"), 16);
    EXPECT_EQ(tree.value("K"), 17);
    EXPECT_EQ(tree.integer("N").setValue(0), Status::Ok);
    EXPECT_EQ(*tree.get<EnumerationNode>("Mode").text(), "Off");
    EXPECT_EQ(tree.integer("N").setValue(1), Status::NoSuchEntry);
}

} // namespace
} // namespace gige::genapi
