#include "TestTree.h"

#include "GenApiLimits.h"

namespace gige::genapi
{
namespace
{

Status loadStatus(const std::string& xml)
{
    MemoryPort port(0x100, "");
    return NodeMap::load(xml, port).status();
}

std::string repeated(const std::string& text, std::size_t count)
{
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

TEST(Description, MustBeWellFormedXmlOfTheRightKind)
{
    for (const char* const xml :
         {"", "   ", "text", "<", "<a", "<RegisterDescription>", "<RegisterDescription></Other>",
          "<Other/>", "<RegisterDescription><Integer Name=\"A></RegisterDescription>",
          "\xFF\xFE\xFF", "<?xml version=\"1.0\"?>", "<!-- only a comment -->"}) {
        EXPECT_EQ(loadStatus(xml), Status::DescriptionMalformed) << xml;
    }
    EXPECT_EQ(loadStatus(std::string(100, '\0')), Status::DescriptionMalformed);
}

TEST(Description, MayHaveAByteOrderMarkBlanksAndNulsAround)
{
    using namespace std::string_literals;
    EXPECT_EQ(loadStatus("\xEF\xBB\xBF<RegisterDescription/>"), Status::Ok);
    EXPECT_EQ(loadStatus(" \r\n<?xml version=\"1.0\"?><RegisterDescription/>\n"), Status::Ok);
    EXPECT_EQ(loadStatus("<RegisterDescription/>\0\0\0"s), Status::Ok);
}

TEST(DescriptionLimits, Size)
{
    const std::string tail = "<RegisterDescription/>";
    EXPECT_EQ(loadStatus(std::string(kDescriptionSizeLimit - tail.size(), ' ') + tail), Status::Ok);
    EXPECT_EQ(loadStatus(std::string(kDescriptionSizeLimit, ' ') + tail),
              Status::DescriptionTooLarge);
}

TEST(DescriptionLimits, Depth)
{
    const auto nested = [](std::size_t depth) {
        return "<RegisterDescription>" + repeated("<Group>", depth - 1) +
               repeated("</Group>", depth - 1) + "</RegisterDescription>";
    };
    EXPECT_EQ(loadStatus(nested(64)), Status::Ok);
    EXPECT_EQ(loadStatus(nested(65)), Status::DescriptionTooDeep);
    EXPECT_EQ(loadStatus(nested(500'000)), Status::DescriptionTooDeep);
}

TEST(DescriptionLimits, NumberOfNodes)
{
    const std::string start = "<RegisterDescription>";
    const std::string end = "</RegisterDescription>";
    const auto nodes = [](std::size_t count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += "<Node Name=\"N" + std::to_string(i) + "\"/>";
        }
        return text;
    };
    EXPECT_EQ(loadStatus(start + nodes(50'000) + end), Status::Ok);
    EXPECT_EQ(loadStatus(start + nodes(50'001) + end), Status::TooManyNodes);
    const std::string entries =
        "<Enumeration Name=\"E\">" + repeated("<EnumEntry/>", 50'000) + "</Enumeration>";
    EXPECT_EQ(loadStatus(start + entries + end), Status::TooManyNodes);
}

TEST(DescriptionLimits, NumberOfElements)
{
    EXPECT_EQ(loadStatus("<RegisterDescription>" + repeated("<a/>", 2'000'000) +
                         "</RegisterDescription>"),
              Status::TooManyNodes);
}

TEST(DescriptionLimits, NodesOfAStructureCount)
{
    EXPECT_EQ(loadStatus("<RegisterDescription><StructReg>" +
                         repeated("<StructEntry Name=\"E\"/>", 50'001) +
                         "</StructReg></RegisterDescription>"),
              Status::TooManyNodes);
}

TEST(DescriptionLimits, ElementsOfAStructure)
{
    const auto structure = [](std::size_t entries, std::size_t others) {
        return "<StructReg><Address>0x100</Address><Length>4</Length><AccessMode>RW</AccessMode>" +
               repeated("<pPort>Device</pPort>", others) +
               repeated("<StructEntry Name=\"X\"><Bit>0</Bit></StructEntry>", entries) +
               "</StructReg><Integer Name=\"Good\"><Value>7</Value></Integer>";
    };
    EXPECT_EQ(TestTree(structure(128, 61)).value("X"), 0);
    for (const std::string& nodes : {structure(129, 1), structure(1, 62), structure(20'000, 64)}) {
        TestTree tree(nodes);
        EXPECT_EQ(tree.valueStatus("X"), Status::TooComplex);
        EXPECT_EQ(tree.integer("X").setValue(1), Status::TooComplex);
        EXPECT_EQ(tree.integer("X").maximum().status(), Status::TooComplex);
        EXPECT_EQ(tree.value("Good"), 7);
    }
}

TEST(References, ToThemselvesAreAnErrorNotAHang)
{
    TestTree tree(R"(<Integer Name="Self"><pValue>Self</pValue></Integer>
        <Integer Name="A"><pValue>B</pValue></Integer><Integer Name="B"><pValue>A</pValue></Integer>
        <IntSwissKnife Name="K"><pVariable Name="K">K</pVariable><Formula>K + K</Formula></IntSwissKnife>
        <Integer Name="Max"><Value>1</Value><pMax>Max</pMax></Integer>
        <Integer Name="Locked"><pIsLocked>Locked</pIsLocked><Value>1</Value></Integer>
        <IntReg Name="Reg"><pAddress>Reg</pAddress><Length>4</Length></IntReg>
        <IntReg Name="Long"><Address>0x100</Address><pLength>Long</pLength></IntReg>
        <String Name="Text"><pValue>Text</pValue></String>
        <Converter Name="C"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom><pValue>C</pValue></Converter>
        <Integer Name="Index"><pIndex>Index</pIndex><ValueIndexed Index="0">1</ValueIndexed></Integer>
        <Enumeration Name="E"><EnumEntry Name="X"><pIsAvailable>E</pIsAvailable><Value>0</Value></EnumEntry><pValue>E</pValue></Enumeration>
        <Boolean Name="Flag"><pValue>Flag</pValue></Boolean><Command Name="Run"><pValue>Run</pValue></Command>)");
    for (const char* const name : {"Self", "A", "B", "K", "Locked", "Reg", "Long", "Index"}) {
        EXPECT_EQ(tree.valueStatus(name), Status::CircularReference) << name;
    }
    for (const char* const name : {"Self", "A", "Index"}) {
        EXPECT_EQ(tree.integer(name).setValue(0), Status::CircularReference) << name;
    }
    EXPECT_EQ(tree.integer("Self").maximum().status(), Status::CircularReference);
    EXPECT_EQ(tree.integer("Self").unit(), "");
    EXPECT_EQ(tree.integer("Max").setValue(2), Status::OutOfRange); // its own value limits it
    EXPECT_EQ(tree.get<StringNode>("Text").value().status(), Status::CircularReference);
    EXPECT_EQ(tree.get<StringNode>("Text").setValue("x"), Status::CircularReference);
    EXPECT_EQ(tree.get<StringNode>("Text").maximumLength().status(), Status::CircularReference);
    EXPECT_EQ(tree.real("C").value().status(), Status::CircularReference);
    EXPECT_EQ(tree.get<EnumerationNode>("E").text().status(), Status::CircularReference);
    EXPECT_EQ(tree.get<EnumerationNode>("E").setText("X"), Status::CircularReference);
    EXPECT_EQ(tree.get<BooleanNode>("Flag").value().status(), Status::CircularReference);
    EXPECT_EQ(tree.get<CommandNode>("Run").execute(), Status::CircularReference);
    EXPECT_TRUE(tree.port.takeAccesses().empty());
}

TEST(References, MayRunInCirclesOfDifferentQuestions)
{
    // Width and OffsetX limit each other: the maximum of one needs the value of the other.
    TestTree tree(R"(<Integer Name="Width"><Value>100</Value><pMax>WidthMax</pMax></Integer>
        <Integer Name="OffsetX"><Value>20</Value><pMax>OffsetMax</pMax></Integer>
        <IntSwissKnife Name="WidthMax"><pVariable Name="O">OffsetX</pVariable><Formula>640 - O</Formula></IntSwissKnife>
        <IntSwissKnife Name="OffsetMax"><pVariable Name="W">Width</pVariable><Formula>640 - W</Formula></IntSwissKnife>)");
    EXPECT_EQ(*tree.integer("Width").maximum(), 620);
    EXPECT_EQ(*tree.integer("OffsetX").maximum(), 540);
    EXPECT_EQ(tree.integer("Width").setValue(620), Status::Ok);
    EXPECT_EQ(tree.integer("OffsetX").setValue(21), Status::OutOfRange);
}

std::string twiceTheOneBelow(int level)
{
    const std::string below = "N" + std::to_string(level - 1);
    return "<IntSwissKnife Name=\"N" + std::to_string(level) + R"("><pVariable Name="A">)" + below +
           R"(</pVariable><pVariable Name="B">)" + below +
           "</pVariable><Formula>A + B</Formula></IntSwissKnife>";
}

TEST(References, ThatDoubleAtEachLevelEndWithAnError)
{
    // Forty levels, each asking twice for the next: 2^40 reads if it were carried out.
    std::string nodes = "<Integer Name=\"N0\"><Value>1</Value></Integer>";
    for (int level = 1; level <= 40; ++level) {
        nodes += twiceTheOneBelow(level);
    }
    TestTree tree(nodes);
    EXPECT_EQ(tree.value("N5"), 32);
    EXPECT_EQ(tree.valueStatus("N40"), Status::TooComplex);
}

TEST(References, ThatFanOutWidelyEndWithAnError)
{
    std::string variables;
    std::string formula = "0";
    for (int i = 0; i < 1000; ++i) {
        variables += "<pVariable Name=\"v" + std::to_string(i) + "\">Mid</pVariable>";
        formula += "+v" + std::to_string(i);
    }
    TestTree tree("<Integer Name=\"N\"><Value>1</Value></Integer><IntSwissKnife "
                  "Name=\"Mid\"><pVariable Name=\"N\">N</pVariable>"
                  "<Formula>N" +
                  repeated("+1", 3000) +
                  "</Formula></IntSwissKnife>"
                  "<IntSwissKnife Name=\"Top\">" +
                  variables + "<Formula>" + formula + "</Formula></IntSwissKnife>");
    EXPECT_EQ(tree.value("Mid"), 3001);
    EXPECT_EQ(tree.valueStatus("Top"), Status::TooComplex);
}

TEST(References, MayBeAsDeepAsTheLimit)
{
    std::string nodes = "<Integer Name=\"N0\"><Value>5</Value></Integer>";
    for (int level = 1; level < 100; ++level) {
        nodes += "<Integer Name=\"N" + std::to_string(level) + "\"><pValue>N" +
                 std::to_string(level - 1) + "</pValue></Integer>";
    }
    TestTree tree(nodes);
    EXPECT_EQ(tree.value("N63"), 5);
    EXPECT_EQ(tree.valueStatus("N64"), Status::CircularReference);
}

} // namespace
} // namespace gige::genapi
