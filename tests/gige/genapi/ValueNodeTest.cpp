#include "TestTree.h"

namespace gige::genapi
{
namespace
{

TEST(Integer, HasA64BitRangeUnlessLimited)
{
    TestTree tree("<Integer Name=\"N\"><Value>0x7FFFFFFFFFFFFFFF</Value></Integer>");
    EXPECT_EQ(tree.value("N"), INT64_MAX);
    EXPECT_EQ(*tree.integer("N").minimum(), INT64_MIN);
    EXPECT_EQ(*tree.integer("N").maximum(), INT64_MAX);
    EXPECT_EQ(*tree.integer("N").increment(), 1);
    EXPECT_EQ(tree.integer("N").setValue(INT64_MIN), Status::Ok);
    EXPECT_EQ(tree.value("N"), INT64_MIN);
}

TEST(Integer, TakesLimitsFromConstantsNodesAndItsTarget)
{
    TestTree tree(R"(<Integer Name="Low"><Value>-10</Value></Integer>
        <Integer Name="Step"><Value>5</Value></Integer>
        <IntReg Name="Reg"><Address>0x100</Address><Length>1</Length><AccessMode>RW</AccessMode></IntReg>
        <Integer Name="Own"><Value>0</Value><pMin>Low</pMin><Max>20</Max><pInc>Step</pInc></Integer>
        <Integer Name="Inherited"><pValue>Reg</pValue><Min>10</Min></Integer>
        <Integer Name="Upper"><pValue>Inherited</pValue></Integer>)");
    EXPECT_EQ(*tree.integer("Own").minimum(), -10);
    EXPECT_EQ(*tree.integer("Own").maximum(), 20);
    EXPECT_EQ(*tree.integer("Own").increment(), 5);
    EXPECT_EQ(tree.integer("Own").setValue(-5), Status::Ok);
    EXPECT_EQ(tree.integer("Own").setValue(-4), Status::OutOfRange);
    EXPECT_EQ(*tree.integer("Inherited").minimum(), 10);
    EXPECT_EQ(*tree.integer("Inherited").maximum(), 255);
    EXPECT_EQ(*tree.integer("Upper").minimum(), 10);
    EXPECT_EQ(tree.integer("Upper").setValue(9), Status::OutOfRange);
    EXPECT_EQ(tree.integer("Upper").setValue(256), Status::OutOfRange);
}

TEST(Integer, ChecksTheLimitsOfEveryNodeOnTheWay)
{
    TestTree tree(R"(<Integer Name="Inner"><Value>0</Value><Max>10</Max></Integer>
        <Integer Name="Outer"><pValue>Inner</pValue><Max>100</Max></Integer>)");
    EXPECT_EQ(*tree.integer("Outer").maximum(), 100);
    EXPECT_EQ(tree.integer("Outer").setValue(50), Status::OutOfRange);
    EXPECT_EQ(tree.value("Inner"), 0);
}

TEST(Integer, TakesAnIncrementOfZeroOrLessAsOne)
{
    TestTree tree("<Integer Name=\"N\"><Value>0</Value><Inc>0</Inc></Integer>");
    EXPECT_EQ(*tree.integer("N").increment(), 1);
    EXPECT_EQ(tree.integer("N").setValue(3), Status::Ok);
}

TEST(Integer, CountsIncrementsAcrossTheWholeRange)
{
    TestTree tree(
        "<Integer "
        "Name=\"N\"><Value>0</Value><Min>-9223372036854775808</Min><Inc>2</Inc></Integer>");
    EXPECT_EQ(tree.integer("N").setValue(INT64_MAX - 1), Status::Ok);
    EXPECT_EQ(tree.integer("N").setValue(INT64_MAX), Status::OutOfRange);
}

TEST(Integer, WritesCopiesButNeverReadsThem)
{
    TestTree tree(
        R"(<Integer Name="N"><pValue>A</pValue><pValueCopy>B</pValueCopy><pValueCopy>C</pValueCopy></Integer>
        <Integer Name="A"><Value>1</Value></Integer><Integer Name="B"><Value>2</Value></Integer>
        <Integer Name="C"><Value>3</Value></Integer>)");
    EXPECT_EQ(tree.value("N"), 1);
    EXPECT_EQ(tree.integer("N").setValue(9), Status::Ok);
    EXPECT_EQ(tree.value("A"), 9);
    EXPECT_EQ(tree.value("B"), 9);
    EXPECT_EQ(tree.value("C"), 9);
}

TEST(Integer, SelectsAmongIndexedValues)
{
    TestTree tree(
        R"(<Integer Name="I"><Value>0</Value></Integer><Integer Name="Other"><Value>70</Value></Integer>
        <Integer Name="N"><pIndex>I</pIndex><ValueIndexed Index="0">10</ValueIndexed>
          <pValueIndexed Index="1">Other</pValueIndexed><ValueDefault>99</ValueDefault></Integer>
        <Integer Name="M"><pIndex>I</pIndex><ValueIndexed Index="0">10</ValueIndexed></Integer>)");
    EXPECT_EQ(tree.value("N"), 10);
    EXPECT_EQ(tree.integer("N").setValue(11), Status::Ok);
    EXPECT_EQ(tree.integer("I").setValue(1), Status::Ok);
    EXPECT_EQ(tree.value("N"), 70);
    EXPECT_EQ(tree.integer("N").setValue(71), Status::Ok);
    EXPECT_EQ(tree.value("Other"), 71);
    EXPECT_EQ(tree.integer("I").setValue(5), Status::Ok);
    EXPECT_EQ(tree.value("N"), 99);
    EXPECT_EQ(tree.integer("N").setValue(100), Status::Ok);
    EXPECT_EQ(tree.value("N"), 100);
    EXPECT_EQ(tree.valueStatus("M"), Status::OutOfRange);
    EXPECT_EQ(tree.integer("I").setValue(0), Status::Ok);
    EXPECT_EQ(tree.value("N"), 11);
}

TEST(Integer, TakesAFloatTargetRounded)
{
    TestTree tree(R"(<Float Name="F"><Value>2.5</Value><Min>-1</Min><Max>7.25</Max></Float>
        <Integer Name="N"><pValue>F</pValue></Integer>)");
    EXPECT_EQ(tree.value("N"), 3);
    EXPECT_EQ(*tree.integer("N").minimum(), -1);
    EXPECT_EQ(*tree.integer("N").maximum(), 7);
    EXPECT_EQ(tree.integer("N").setValue(4), Status::Ok);
    EXPECT_EQ(tree.realValue("F"), 4.0);
}

TEST(Float, ReadsAndWritesIntegerTargets)
{
    TestTree tree(R"(<Integer Name="N"><Value>3</Value><Min>0</Min><Max>10</Max></Integer>
        <Float Name="F"><pValue>N</pValue></Float>)");
    EXPECT_EQ(tree.realValue("F"), 3.0);
    EXPECT_EQ(*tree.real("F").minimum(), 0.0);
    EXPECT_EQ(*tree.real("F").maximum(), 10.0);
    EXPECT_EQ(tree.real("F").setValue(10.5), Status::OutOfRange);
    EXPECT_EQ(tree.real("F").setValue(7), Status::Ok);
    EXPECT_EQ(tree.value("N"), 7);
}

TEST(Float, HasNoIncrementUnlessGiven)
{
    TestTree tree(R"(<Float Name="Free"><Value>1</Value></Float>
        <Float Name="Stepped"><Value>1</Value><Min>0.1</Min><Max>1.1</Max><Inc>0.1</Inc></Float>)");
    EXPECT_EQ(*tree.real("Free").increment(), std::nullopt);
    EXPECT_EQ(*tree.real("Free").minimum(), -1.7976931348623157e308);
    EXPECT_EQ(*tree.real("Free").maximum(), 1.7976931348623157e308);
    EXPECT_EQ(*tree.real("Stepped").increment(), 0.1);
    EXPECT_EQ(tree.real("Stepped").setValue(0.7), Status::Ok);
    EXPECT_EQ(tree.real("Stepped").setValue(0.75), Status::OutOfRange);
    EXPECT_EQ(tree.realValue("Stepped"), 0.7);
}

TEST(String, IsAVariableOrAnotherText)
{
    TestTree tree(R"(<String Name="Host"><Value>abc</Value></String>
        <String Name="Alias"><pValue>Reg</pValue></String>
        <StringReg Name="Reg"><Address>0x100</Address><Length>4</Length><AccessMode>RW</AccessMode></StringReg>
        <Integer Name="N"><Value>1</Value></Integer><String Name="Bad"><pValue>N</pValue></String>)",
                  "41420000");
    EXPECT_EQ(*tree.get<StringNode>("Host").value(), "abc");
    EXPECT_EQ(tree.get<StringNode>("Host").setValue("longer than before"), Status::Ok);
    EXPECT_EQ(*tree.get<StringNode>("Host").value(), "longer than before");
    EXPECT_EQ(*tree.get<StringNode>("Alias").value(), "AB");
    EXPECT_EQ(*tree.get<StringNode>("Alias").maximumLength(), 4U);
    EXPECT_EQ(tree.get<StringNode>("Alias").setValue("XYZ"), Status::Ok);
    EXPECT_EQ(tree.port.hex(0x100, 4), "58595A00");
    EXPECT_EQ(tree.get<StringNode>("Alias").setValue("XYZZY"), Status::OutOfRange);
    EXPECT_EQ(tree.get<StringNode>("Bad").value().status(), Status::BadNode);
}

TEST(Boolean, ComparesWithItsOnValue)
{
    TestTree tree(R"(<Integer Name="N"><Value>7</Value></Integer>
        <Boolean Name="B"><pValue>N</pValue><OnValue>7</OnValue><OffValue>3</OffValue></Boolean>
        <Integer Name="AsNumber"><pValue>B</pValue></Integer>
        <Boolean Name="Host"><Value>true</Value></Boolean><Boolean Name="Bad"/>)");
    auto& node = tree.get<BooleanNode>("B");
    EXPECT_TRUE(*node.value());
    EXPECT_EQ(tree.value("AsNumber"), 1);
    EXPECT_EQ(node.setValue(false), Status::Ok);
    EXPECT_EQ(tree.value("N"), 3);
    EXPECT_FALSE(*node.value());
    EXPECT_EQ(tree.integer("AsNumber").setValue(1), Status::Ok);
    EXPECT_EQ(tree.value("N"), 7);
    EXPECT_EQ(tree.integer("N").setValue(1), Status::Ok);
    EXPECT_FALSE(*node.value());
    EXPECT_TRUE(*tree.get<BooleanNode>("Host").value());
    EXPECT_EQ(tree.get<BooleanNode>("Host").setValue(false), Status::Ok);
    EXPECT_FALSE(*tree.get<BooleanNode>("Host").value());
    EXPECT_EQ(tree.get<BooleanNode>("Bad").value().status(), Status::BadNode);
    EXPECT_EQ(tree.get<BooleanNode>("Bad").setValue(true), Status::BadNode);
}

TEST(Command, WritesItsValueAndAsksTheDeviceUntilItIsTakenBack)
{
    TestTree tree(
        R"(<IntReg Name="Reg"><Address>0x100</Address><Length>4</Length><AccessMode>RW</AccessMode></IntReg>
        <Integer Name="V"><Value>5</Value></Integer>
        <Command Name="Run"><pValue>Reg</pValue><pCommandValue>V</pCommandValue><PollingTime>20</PollingTime></Command>)");
    auto& command = tree.get<CommandNode>("Run");
    EXPECT_EQ(command.info().pollingTime, std::chrono::milliseconds(20));
    EXPECT_EQ(command.execute(), Status::Ok);
    EXPECT_EQ(tree.port.hex(0x100, 4), "05000000");
    EXPECT_FALSE(*command.isDone());
    tree.port.set(0x100, "00000000");
    EXPECT_TRUE(*command.isDone());
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"W 100+4", "R 100+4", "R 100+4"}));
}

TEST(Command, OnAWriteOnlyRegisterIsDoneAtOnce)
{
    TestTree tree(
        R"(<IntReg Name="Reg"><Address>0x100</Address><Length>4</Length><AccessMode>WO</AccessMode></IntReg>
        <Command Name="Run"><pValue>Reg</pValue><CommandValue>1</CommandValue></Command>
        <Command Name="Bad"><CommandValue>1</CommandValue></Command>)");
    EXPECT_EQ(tree.get<CommandNode>("Run").execute(), Status::Ok);
    EXPECT_TRUE(*tree.get<CommandNode>("Run").isDone());
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"W 100+4"}));
    EXPECT_EQ(tree.get<CommandNode>("Bad").execute(), Status::BadNode);
    EXPECT_EQ(tree.get<CommandNode>("Bad").isDone().status(), Status::BadNode);
}

TEST(Command, ReportsWhenTheDeviceRefuses)
{
    TestTree tree(
        R"(<IntReg Name="Reg"><Address>0x100</Address><Length>4</Length><AccessMode>RW</AccessMode></IntReg>
        <Command Name="Run"><pValue>Reg</pValue></Command>)");
    tree.port.failWith(Status::PortAccessDenied);
    EXPECT_EQ(tree.get<CommandNode>("Run").execute(), Status::PortAccessDenied);
    EXPECT_EQ(tree.get<CommandNode>("Run").isDone().status(), Status::PortAccessDenied);
}

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

TEST(ValueDefects, MakeTheNodeUnusableAlone)
{
    for (const char* const node :
         {"<Integer Name=\"X\"/>", "<Integer Name=\"X\"><Value>abc</Value></Integer>",
          "<Integer Name=\"X\"><Value>1.5</Value></Integer>",
          "<Integer Name=\"X\"><pValue>Nowhere</pValue></Integer>",
          "<Integer Name=\"X\"><Value>1</Value><Min>low</Min></Integer>",
          "<Integer Name=\"X\"><Value>1</Value><pMax>Nowhere</pMax></Integer>",
          "<Integer Name=\"X\"><Value>1</Value><pIsAvailable>Nowhere</pIsAvailable></Integer>",
          "<Integer Name=\"X\"><Value>1</Value><ImposedAccessMode>XX</ImposedAccessMode></Integer>",
          "<Integer Name=\"X\"><pValue>Good</pValue><pValueCopy>Nowhere</pValueCopy></Integer>",
          "<Integer Name=\"X\"><pIndex>Good</pIndex><ValueIndexed>1</ValueIndexed></Integer>",
          "<Integer Name=\"X\"><pIndex>Nowhere</pIndex><ValueIndexed "
          "Index=\"1\">1</ValueIndexed></Integer>",
          "<Integer Name=\"X\"><pIndex>Good</pIndex><ValueDefault>?</ValueDefault></Integer>"}) {
        TestTree tree(std::string(node) + "<Integer Name=\"Good\"><Value>7</Value></Integer>");
        EXPECT_EQ(tree.integer("X").defect(), Status::BadNode) << node;
        EXPECT_EQ(tree.valueStatus("X"), Status::BadNode) << node;
        EXPECT_EQ(tree.integer("X").setValue(1), Status::BadNode) << node;
        EXPECT_EQ(tree.integer("X").minimum().status(), Status::BadNode) << node;
        EXPECT_EQ(tree.integer("X").accessMode().status(), Status::BadNode) << node;
        EXPECT_EQ(tree.value("Good"), 7);
    }
    TestTree tree("<Enumeration Name=\"E\"/><Float Name=\"F\"><Value>x</Value></Float>");
    EXPECT_EQ(tree.get<EnumerationNode>("E").text().status(), Status::BadNode);
    EXPECT_EQ(tree.get<EnumerationNode>("E").setText("A"), Status::BadNode);
    EXPECT_EQ(tree.real("F").value().status(), Status::BadNode);
}

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

TEST(ValueDefects, OfWhatANodePointsToAreReported)
{
    TestTree tree(R"(<Integer Name="Bad"/><Category Name="C"/><Node Name="Plain"/>
        <Integer Name="OnBad"><Value>1</Value><pMax>Bad</pMax></Integer>
        <Integer Name="OnCategory"><pValue>C</pValue></Integer>
        <Integer Name="OnPlain"><pValue>Plain</pValue></Integer>)");
    EXPECT_EQ(tree.value("OnBad"), 1);
    EXPECT_EQ(tree.integer("OnBad").setValue(2), Status::BadNode);
    EXPECT_EQ(tree.integer("OnBad").maximum().status(), Status::BadNode);
    EXPECT_EQ(tree.valueStatus("OnCategory"), Status::WrongKind);
    EXPECT_EQ(tree.valueStatus("OnPlain"), Status::WrongKind);
}

} // namespace
} // namespace gige::genapi
