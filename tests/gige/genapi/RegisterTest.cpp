#include "TestTree.h"

#include <bit>

namespace gige::genapi
{
namespace
{

std::string intReg(const std::string& rest)
{
    return "<IntReg Name=\"N\">" + at100(rest) + "</IntReg>";
}

std::string masked(const std::string& rest)
{
    return "<MaskedIntReg Name=\"N\">" + at100(rest) + "</MaskedIntReg>";
}

constexpr const char* kBig = "<Endianess>BigEndian</Endianess>";

TEST(IntReg, AssemblesBytesByItsByteOrder)
{
    EXPECT_EQ(TestTree(intReg("<Length>4</Length>"), "01020304").value("N"), 0x04030201);
    EXPECT_EQ(TestTree(intReg(std::string("<Length>4</Length>") + kBig), "01020304").value("N"),
              0x01020304);
    EXPECT_EQ(TestTree(intReg(std::string("<Length>3</Length>") + kBig), "01020304").value("N"),
              0x010203);
    EXPECT_EQ(TestTree(intReg("<Length>8</Length>"), "0102030405060708").value("N"),
              0x0807060504030201);
    EXPECT_EQ(TestTree(intReg("<Length>1</Length>"), "FF020304").value("N"), 255);
}

TEST(IntReg, ExtendsTheSignOnlyOfSignedRegisters)
{
    EXPECT_EQ(TestTree(intReg("<Length>2</Length>"), "FEFF0000").value("N"), 65534);
    EXPECT_EQ(TestTree(intReg("<Length>2</Length><Sign>Signed</Sign>"), "FEFF0000").value("N"), -2);
    EXPECT_EQ(TestTree(intReg("<Length>8</Length>"), "FFFFFFFFFFFFFFFF").value("N"), -1);
}

TEST(IntReg, TakesItsRangeFromWidthAndSign)
{
    TestTree byte(intReg("<Length>1</Length>"));
    EXPECT_EQ(*byte.integer("N").minimum(), 0);
    EXPECT_EQ(*byte.integer("N").maximum(), 255);
    EXPECT_EQ(*byte.integer("N").increment(), 1);
    EXPECT_EQ(byte.integer("N").setValue(256), Status::OutOfRange);
    EXPECT_EQ(byte.integer("N").setValue(-1), Status::OutOfRange);

    TestTree word(intReg("<Length>4</Length><Sign>Signed</Sign>"));
    EXPECT_EQ(*word.integer("N").minimum(), -2147483648LL);
    EXPECT_EQ(*word.integer("N").maximum(), 2147483647LL);

    TestTree all(intReg("<Length>8</Length>"));
    EXPECT_EQ(*all.integer("N").minimum(), INT64_MIN);
    EXPECT_EQ(*all.integer("N").maximum(), INT64_MAX);
}

TEST(IntReg, WritesInItsByteOrder)
{
    TestTree little(intReg("<Length>4</Length>"));
    EXPECT_EQ(little.integer("N").setValue(0x01020304), Status::Ok);
    EXPECT_EQ(little.port.hex(0x100, 4), "04030201");
    EXPECT_EQ(little.port.takeAccesses(), (Accesses{"W 100+4"}));

    TestTree negative(intReg(std::string("<Length>8</Length><Sign>Signed</Sign>") + kBig));
    EXPECT_EQ(negative.integer("N").setValue(-2), Status::Ok);
    EXPECT_EQ(negative.port.hex(0x100, 8), "FFFFFFFFFFFFFFFE");
}

TEST(MaskedIntReg, CountsLittleEndianBitsFromTheLeastSignificant)
{
    EXPECT_EQ(
        TestTree(masked("<Length>4</Length><LSB>4</LSB><MSB>15</MSB>"), "A3FE0000").value("N"),
        0xFEA);
    EXPECT_EQ(TestTree(masked("<Length>4</Length><Bit>0</Bit>"), "01000000").value("N"), 1);
    EXPECT_EQ(TestTree(masked("<Length>4</Length><Bit>31</Bit>"), "00000080").value("N"), 1);
}

TEST(MaskedIntReg, CountsBigEndianBitsFromTheMostSignificant)
{
    const std::string length4 = std::string("<Length>4</Length>") + kBig;
    EXPECT_EQ(TestTree(masked(length4 + "<LSB>31</LSB><MSB>16</MSB>"), "ABCD1234").value("N"),
              0x1234);
    EXPECT_EQ(TestTree(masked(length4 + "<LSB>15</LSB><MSB>0</MSB>"), "ABCD1234").value("N"),
              0xABCD);
    EXPECT_EQ(TestTree(masked(length4 + "<Bit>0</Bit>"), "80000000").value("N"), 1);
    EXPECT_EQ(TestTree(masked(length4 + "<Bit>31</Bit>"), "00000001").value("N"), 1);
    EXPECT_EQ(
        TestTree(masked(std::string("<Length>2</Length>") + kBig + "<Bit>15</Bit>"), "00010000")
            .value("N"),
        1);
}

TEST(MaskedIntReg, SortsASwappedPairOfBits)
{
    EXPECT_EQ(
        TestTree(masked("<Length>4</Length><LSB>15</LSB><MSB>4</MSB>"), "A3FE0000").value("N"),
        0xFEA);
    EXPECT_EQ(
        TestTree(masked(std::string("<Length>4</Length>") + kBig + "<LSB>16</LSB><MSB>31</MSB>"),
                 "ABCD1234")
            .value("N"),
        0x1234);
}

TEST(MaskedIntReg, WritesItsBitsAndKeepsTheOthers)
{
    TestTree tree(masked("<Length>4</Length><LSB>4</LSB><MSB>7</MSB><Sign>Signed</Sign>"),
                  "FFFFFFFF");
    EXPECT_EQ(tree.integer("N").setValue(-8), Status::Ok);
    EXPECT_EQ(tree.port.hex(0x100, 4), "8FFFFFFF");
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4", "W 100+4"}));
    EXPECT_EQ(tree.integer("N").setValue(8), Status::OutOfRange);
    EXPECT_EQ(tree.value("N"), -8);
}

TEST(MaskedIntReg, ThatCannotBeReadStartsFromWhatWasWrittenLast)
{
    TestTree tree(
        R"(<StructReg><Address>0x100</Address><Length>4</Length><AccessMode>WO</AccessMode>
        <pPort>Device</pPort><StructEntry Name="Low"><LSB>0</LSB><MSB>7</MSB></StructEntry>
        <StructEntry Name="High"><LSB>8</LSB><MSB>15</MSB></StructEntry></StructReg>)",
        "FFFFFFFF");
    EXPECT_EQ(tree.integer("Low").setValue(0x12), Status::Ok);
    EXPECT_EQ(tree.port.hex(0x100, 4), "12000000");
    EXPECT_EQ(tree.integer("High").setValue(0x34), Status::Ok);
    EXPECT_EQ(tree.port.hex(0x100, 4), "12340000");
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"W 100+4", "W 100+4"}));
}

TEST(MaskedIntReg, TakesAllBitsOfTheLongestRegister)
{
    TestTree tree(masked("<Length>8</Length><LSB>0</LSB><MSB>63</MSB>"), "FEFFFFFFFFFFFFFF");
    EXPECT_EQ(tree.value("N"), -2);
    EXPECT_EQ(tree.integer("N").setValue(5), Status::Ok);
    EXPECT_EQ(tree.port.hex(0x100, 8), "0500000000000000");
}

TEST(StructReg, GivesItsEntriesWhatTheyLack)
{
    TestTree tree(R"(<StructReg Comment="c"><Address>0x100</Address><Length>4</Length>
        <AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess>
        <Cachable>NoCache</Cachable><Sign>Unsigned</Sign>
        <StructEntry Name="Whole"><LSB>31</LSB><MSB>0</MSB></StructEntry>
        <StructEntry Name="Fixed"><AccessMode>RO</AccessMode><LSB>31</LSB><MSB>28</MSB>
          <Sign>Signed</Sign></StructEntry></StructReg>)",
                  "0000000F");
    EXPECT_EQ(tree.value("Whole"), 15);
    EXPECT_EQ(tree.value("Fixed"), -1);
    EXPECT_EQ(tree.integer("Fixed").setValue(0), Status::ReadOnly);
    EXPECT_EQ(tree.integer("Whole").setValue(1), Status::Ok);
}

TEST(FloatReg, HoldsSinglesAndDoubles)
{
    TestTree single("<FloatReg Name=\"F\">" + at100("<Length>4</Length>") + "</FloatReg>",
                    "0000C03F");
    EXPECT_EQ(single.realValue("F"), 1.5);
    EXPECT_EQ(*single.real("F").maximum(), 3.4028234663852886e38);
    EXPECT_EQ(single.real("F").setValue(1e39), Status::OutOfRange);
    EXPECT_EQ(single.real("F").setValue(-2.0), Status::Ok);
    EXPECT_EQ(single.port.hex(0x100, 4), "000000C0");

    TestTree wide("<FloatReg Name=\"F\">" + at100("<Length>8</Length>") + kBig + "</FloatReg>",
                  "3FF8000000000000");
    EXPECT_EQ(wide.realValue("F"), 1.5);
    EXPECT_EQ(wide.real("F").setValue(-0.5), Status::Ok);
    EXPECT_EQ(wide.port.hex(0x100, 8), "BFE0000000000000");
}

TEST(FloatReg, RefusesWhatIsNoNumber)
{
    TestTree tree("<FloatReg Name=\"F\">" + at100("<Length>4</Length>") + "</FloatReg>");
    EXPECT_EQ(tree.real("F").setValue(std::numeric_limits<double>::quiet_NaN()),
              Status::OutOfRange);
    EXPECT_EQ(tree.real("F").setValue(std::numeric_limits<double>::infinity()), Status::OutOfRange);
}

TEST(StringReg, ReadsUpToTheFirstNulOrTheEnd)
{
    const std::string node =
        "<StringReg Name=\"S\">" + at100("<Length>4</Length>") + "</StringReg>";
    EXPECT_EQ(*TestTree(node, "41420043").get<StringNode>("S").value(), "AB");
    EXPECT_EQ(*TestTree(node, "41424344").get<StringNode>("S").value(), "ABCD");
    EXPECT_EQ(*TestTree(node, "00414243").get<StringNode>("S").value(), "");
}

TEST(StringReg, WritesPaddedWithNuls)
{
    TestTree tree("<StringReg Name=\"S\">" + at100("<Length>6</Length>") + "</StringReg>",
                  "FFFFFFFFFFFFFFFF");
    auto& text = tree.get<StringNode>("S");
    EXPECT_EQ(*text.maximumLength(), 6U);
    EXPECT_EQ(text.setValue("AB"), Status::Ok);
    EXPECT_EQ(tree.port.hex(0x100, 8), "414200000000FFFF");
    EXPECT_EQ(text.setValue("ABCDEF"), Status::Ok);
    EXPECT_EQ(text.setValue("ABCDEFG"), Status::OutOfRange);
    EXPECT_EQ(*text.value(), "ABCDEF");
}

TEST(RegisterKind, ReadsAndWritesBytes)
{
    TestTree tree("<Register Name=\"R\">" + at100("<Length>8</Length>") + "</Register>",
                  "0102030405060708");
    auto& node = tree.get<RegisterNode>("R");
    EXPECT_EQ(*node.length(), 8U);
    EXPECT_EQ(*node.read(), (std::vector<std::uint8_t>{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(node.write(std::vector<std::uint8_t>{9, 8, 7, 6}), Status::Ok);
    EXPECT_EQ(tree.port.hex(0x100, 8), "0908070605060708");
    EXPECT_EQ(*node.read(), (std::vector<std::uint8_t>{9, 8, 7, 6, 5, 6, 7, 8}));
    EXPECT_EQ(node.write(std::vector<std::uint8_t>(9)), Status::OutOfRange);
    EXPECT_EQ(node.write({}), Status::OutOfRange);
}

TEST(RegisterAddress, IsTheSumOfAllTerms)
{
    TestTree tree(R"(<Integer Name="Base"><Value>4</Value></Integer>
        <Integer Name="Index"><Value>2</Value></Integer><Integer Name="Step"><Value>3</Value></Integer>
        <IntReg Name="N"><Address>0x80</Address><Address>0x70</Address><pAddress>Base</pAddress>
          <IntSwissKnife Name="K"><pVariable Name="I">Index</pVariable><Formula>I + 2</Formula></IntSwissKnife>
          <pIndex Offset="2">Index</pIndex><pIndex pOffset="Step">Index</pIndex>
          <Length>1</Length></IntReg>)",
                  "000102030405060708090A0B0C0D0E0F101112131415161718");
    // 0x80 + 0x70 + 4 + (2 + 2) + 2 * 2 + 2 * 3 = 0x102
    EXPECT_EQ(tree.value("N"), 2);
    EXPECT_EQ(tree.map->find("K"), nullptr);
    EXPECT_EQ(tree.integer("Index").setValue(3), Status::Ok);
    EXPECT_EQ(tree.value("N"), 8); // one more, two more, three more
}

TEST(RegisterAddress, StepsByTheLengthUnlessToldOtherwise)
{
    TestTree tree(R"(<Integer Name="Index"><Value>1</Value></Integer>
        <IntReg Name="N"><Address>0x100</Address><pIndex>Index</pIndex><Length>2</Length></IntReg>)",
                  "0001020304050607");
    EXPECT_EQ(tree.value("N"), 0x0302);
    EXPECT_EQ(tree.integer("Index").setValue(3), Status::Ok);
    EXPECT_EQ(tree.value("N"), 0x0706);
}

TEST(RegisterLength, MayComeFromAnotherNode)
{
    TestTree tree(R"(<Integer Name="Size"><Value>2</Value></Integer><IntReg Name="N">
        <Address>0x100</Address><pLength>Size</pLength><Endianess>BigEndian</Endianess></IntReg>)",
                  "01020304");
    EXPECT_EQ(tree.value("N"), 0x0102);
    EXPECT_EQ(tree.integer("Size").setValue(4), Status::Ok);
    EXPECT_EQ(tree.value("N"), 0x01020304);
    for (const std::int64_t length : {0, -1, 9, 65537}) {
        EXPECT_EQ(tree.integer("Size").setValue(length), Status::Ok);
        EXPECT_EQ(tree.valueStatus("N"), Status::RegisterTooLarge) << length;
    }
}

TEST(RegisterErrors, PassOnWhatThePortSays)
{
    TestTree tree(intReg("<Length>4</Length>"));
    for (const Status status :
         {Status::PortTimeout, Status::PortNotConnected, Status::PortAccessDenied,
          Status::PortBadAddress, Status::PortBusy, Status::PortError}) {
        tree.port.failWith(status);
        EXPECT_EQ(tree.valueStatus("N"), status);
        EXPECT_EQ(tree.integer("N").setValue(1), status);
    }
    tree.port.failWith(Status::Ok);
    EXPECT_EQ(tree.value("N"), 0);
}

TEST(RegisterDefects, MakeTheNodeUnusableAlone)
{
    const std::pair<const char*, Status> rows[] = {
        {"<IntReg Name=\"X\"><Length>4</Length></IntReg>", Status::BadNode},
        {"<IntReg Name=\"X\"><Address>0x100</Address></IntReg>", Status::RegisterTooLarge},
        {"<IntReg Name=\"X\"><Address>z</Address><Length>4</Length></IntReg>", Status::BadNode},
        {"<IntReg Name=\"X\"><Address>0x100</Address><Length>-4</Length></IntReg>",
         Status::RegisterTooLarge},
        {"<IntReg Name=\"X\"><Address>0x100</Address><Length>65537</Length></IntReg>",
         Status::RegisterTooLarge},
        {"<IntReg Name=\"X\"><Address>0x100</Address><Length>9</Length></IntReg>",
         Status::RegisterTooLarge},
        {"<IntReg "
         "Name=\"X\"><Address>0x100</Address><Length>4</Length><pPort>Nowhere</pPort></IntReg>",
         Status::BadNode},
        {"<IntReg "
         "Name=\"X\"><Address>0x100</Address><Length>4</Length><pPort>Good</pPort></IntReg>",
         Status::BadNode},
        {"<IntReg "
         "Name=\"X\"><Address>0x100</Address><Length>4</Length><Endianess>Odd</Endianess></IntReg>",
         Status::BadNode},
        {"<IntReg "
         "Name=\"X\"><Address>0x100</Address><Length>4</Length><pAddress>Nowhere</pAddress></"
         "IntReg>",
         Status::BadNode},
        {"<IntReg Name=\"X\"><Address>0x100</Address><Length>4</Length><pIndex "
         "Offset=\"x\">Good</pIndex></IntReg>",
         Status::BadNode},
        {"<MaskedIntReg Name=\"X\"><Address>0x100</Address><Length>4</Length></MaskedIntReg>",
         Status::BadNode},
        {"<MaskedIntReg "
         "Name=\"X\"><Address>0x100</Address><Length>4</Length><Bit>32</Bit></MaskedIntReg>",
         Status::BadNode},
        {"<MaskedIntReg "
         "Name=\"X\"><Address>0x100</Address><Length>4</Length><Bit>-1</Bit></MaskedIntReg>",
         Status::BadNode},
    };
    for (const auto& [node, status] : rows) {
        TestTree tree(std::string(node) + "<Integer Name=\"Good\"><Value>7</Value></Integer>"
                                          "<Integer Name=\"OnX\"><pValue>X</pValue></Integer>");
        EXPECT_EQ(tree.valueStatus("X"), status) << node;
        EXPECT_EQ(tree.valueStatus("OnX"), status) << node;
        EXPECT_EQ(tree.value("Good"), 7);
        EXPECT_TRUE(tree.port.takeAccesses().empty());
    }
    TestTree odd("<FloatReg Name=\"F\">" + at100("<Length>3</Length>") + "</FloatReg>");
    EXPECT_EQ(odd.real("F").value().status(), Status::BadNode);
    EXPECT_EQ(odd.real("F").setValue(1), Status::BadNode);
}

TEST(RegisterLimit, AllowsSixtyFourKiB)
{
    std::string memory;
    for (int i = 0; i < 65536; ++i) {
        memory += "5A";
    }
    TestTree tree("<Register Name=\"R\">" + at100("<Length>65536</Length>") + "</Register>",
                  memory);
    EXPECT_EQ(*tree.get<RegisterNode>("R").read(), std::vector<std::uint8_t>(65536, 0x5A));
}

} // namespace
} // namespace gige::genapi
