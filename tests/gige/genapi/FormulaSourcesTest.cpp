#include "TestTree.h"

namespace gige::genapi
{
namespace
{

TEST(SwissKnife, ComputesInDoubleOrInteger)
{
    TestTree tree(R"(<Integer Name="N"><Value>7</Value></Integer>
        <SwissKnife Name="Float"><pVariable Name="V">N</pVariable><Formula>V / 2</Formula></SwissKnife>
        <IntSwissKnife Name="Int"><pVariable Name="V">N</pVariable><Formula>V / 2</Formula></IntSwissKnife>)");
    EXPECT_EQ(tree.realValue("Float"), 3.5);
    EXPECT_EQ(tree.value("Int"), 3);
}

TEST(SwissKnife, UsesConstantsAndNamedSubFormulas)
{
    TestTree tree(R"(<Integer Name="N"><Value>3</Value></Integer>
        <IntSwissKnife Name="K"><pVariable Name="V">N</pVariable><Constant Name="TEN">0xA</Constant>
          <Expression Name="A">V * TEN</Expression><Expression Name="B">A + 1</Expression>
          <Formula>B * B</Formula></IntSwissKnife>)");
    EXPECT_EQ(tree.value("K"), 961);
}

TEST(SwissKnife, DoesNotLetSubFormulasContainThemselves)
{
    TestTree tree(
        R"(<IntSwissKnife Name="Self"><Expression Name="A">A + 1</Expression><Formula>A</Formula></IntSwissKnife>
        <IntSwissKnife Name="Forward"><Expression Name="A">B</Expression><Expression Name="B">A</Expression>
          <Formula>A</Formula></IntSwissKnife>)");
    EXPECT_EQ(tree.valueStatus("Self"), Status::FormulaMalformed);
    EXPECT_EQ(tree.valueStatus("Forward"), Status::FormulaMalformed);
}

TEST(SwissKnife, KnowsPropertiesOfOtherNodes)
{
    TestTree tree(
        R"(<Integer Name="N"><Value>20</Value><Min>10</Min><Max>90</Max><Inc>5</Inc><Visibility>Guru</Visibility></Integer>
        <Integer Name="Free"><Value>1</Value></Integer>
        <IntReg Name="Reg"><Address>0x100</Address><Length>4</Length><Cachable>WriteAround</Cachable></IntReg>
        <Enumeration Name="E"><EnumEntry Name="Blue"><Value>42</Value></EnumEntry><Value>42</Value></Enumeration>
        <IntSwissKnife Name="K"><pVariable Name="N.Value">N</pVariable><pVariable Name="N.Min">N</pVariable>
          <pVariable Name="N.Max">N</pVariable><pVariable Name="N.Inc">N</pVariable>
          <Formula>((N.Value * 100 + N.Min) * 100 + N.Max) * 100 + N.Inc</Formula></IntSwissKnife>
        <IntSwissKnife Name="Modes"><pVariable Name="N.AccessMode">N</pVariable><pVariable Name="R.AccessMode">Reg</pVariable>
          <pVariable Name="N.Visibility">N</pVariable><pVariable Name="R.CachingMode">Reg</pVariable>
          <Formula>N.AccessMode * 1000 + R.AccessMode * 100 + N.Visibility * 10 + R.CachingMode</Formula></IntSwissKnife>
        <IntSwissKnife Name="Entry"><pVariable Name="E.Entry.Blue">E</pVariable><Formula>E.Entry.Blue</Formula></IntSwissKnife>
        <IntSwissKnife Name="NoEntry"><pVariable Name="E.Entry.Red">E</pVariable><Formula>E.Entry.Red</Formula></IntSwissKnife>
        <IntSwissKnife Name="Highest"><pVariable Name="F.Max">Free</pVariable><Formula>F.Max</Formula></IntSwissKnife>)");
    EXPECT_EQ(tree.value("K"), 20109005);
    EXPECT_EQ(tree.value("Modes"), 4322);
    EXPECT_EQ(tree.value("Entry"), 42);
    EXPECT_EQ(tree.valueStatus("NoEntry"), Status::NoSuchEntry);
    EXPECT_EQ(tree.value("Highest"), INT64_MAX);
}

TEST(SwissKnife, ReportsAnErrorOfThatReadOnly)
{
    TestTree tree(R"(<Integer Name="N"><Value>0</Value></Integer>
        <IntSwissKnife Name="K"><pVariable Name="V">N</pVariable><Formula>10 / V</Formula></IntSwissKnife>)");
    EXPECT_EQ(tree.valueStatus("K"), Status::ArithmeticError);
    EXPECT_EQ(tree.integer("N").setValue(5), Status::Ok);
    EXPECT_EQ(tree.value("K"), 2);
}

TEST(SwissKnife, DoesNotNeedVariablesOfABranchNotTaken)
{
    TestTree tree(R"(<Integer Name="No"><Value>0</Value></Integer>
        <Integer Name="Gone"><pIsAvailable>No</pIsAvailable><Value>1</Value></Integer>
        <IntSwissKnife Name="K"><pVariable Name="C">No</pVariable><pVariable Name="G">Gone</pVariable>
          <Formula>C ? G : 8</Formula></IntSwissKnife>)");
    EXPECT_EQ(tree.value("K"), 8);
    EXPECT_EQ(tree.integer("No").setValue(1), Status::Ok);
    EXPECT_EQ(tree.value("K"), 1);
}

TEST(SwissKnife, WithADefectIsUnusableAlone)
{
    const std::pair<const char*, Status> rows[] = {
        {"<IntSwissKnife Name=\"X\"/>", Status::FormulaMalformed},
        {"<IntSwissKnife Name=\"X\"><Formula>1 +</Formula></IntSwissKnife>",
         Status::FormulaMalformed},
        {"<IntSwissKnife Name=\"X\"><Formula>A</Formula></IntSwissKnife>",
         Status::FormulaMalformed},
        {"<IntSwissKnife Name=\"X\"><pVariable "
         "Name=\"A\">Nowhere</pVariable><Formula>1</Formula></IntSwissKnife>",
         Status::BadNode},
        {"<IntSwissKnife Name=\"X\"><Constant "
         "Name=\"A\">one</Constant><Formula>1</Formula></IntSwissKnife>",
         Status::BadNode},
        {"<IntConverter "
         "Name=\"X\"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom></IntConverter>",
         Status::BadNode},
        {"<IntConverter Name=\"X\"><FormulaTo>FROM</FormulaTo><pValue>Good</pValue></IntConverter>",
         Status::FormulaMalformed},
        {"<IntReg "
         "Name=\"X\"><IntSwissKnife><Formula>(</Formula></IntSwissKnife><Length>4</Length></"
         "IntReg>",
         Status::FormulaMalformed},
    };
    for (const auto& [node, status] : rows) {
        TestTree tree(std::string(node) + "<Integer Name=\"Good\"><Value>7</Value></Integer>");
        EXPECT_EQ(tree.integer("X").defect(), status) << node;
        EXPECT_EQ(tree.valueStatus("X"), status) << node;
        EXPECT_EQ(tree.value("Good"), 7);
    }
}

std::string inParentheses(std::size_t depth)
{
    std::string text(depth, '(');
    text += '1';
    text.append(depth, ')');
    return text;
}

TEST(SwissKnife, ThatNestsTenThousandDeepIsADefectOfItsNode)
{
    const std::string deep = inParentheses(10'000);
    const std::string lessDeep = inParentheses(2'000);
    TestTree tree("<IntSwissKnife Name=\"Long\"><Formula>" + deep +
                  "</Formula></IntSwissKnife><IntSwissKnife Name=\"Deep\"><Formula>" + lessDeep +
                  "</Formula></IntSwissKnife>");
    EXPECT_EQ(tree.valueStatus("Long"), Status::FormulaTooLong);
    EXPECT_EQ(tree.valueStatus("Deep"), Status::FormulaTooDeep);
}

constexpr const char* kConverter = R"(
<Integer Name="Ticks"><Value>100</Value><Min>10</Min><Max>1000</Max></Integer><Integer Name="Free"><Value>4</Value></Integer>
<Converter Name="Time"><FormulaTo>FROM * 4</FormulaTo><FormulaFrom>TO / 4</FormulaFrom><pValue>Ticks</pValue></Converter>
<Converter Name="Rate"><FormulaTo>1000 / FROM</FormulaTo><FormulaFrom>1000 / TO</FormulaFrom><pValue>Ticks</pValue>
  <Slope>Decreasing</Slope></Converter>
<Converter Name="Varying"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom><pValue>Ticks</pValue><Slope>Varying</Slope></Converter>
<Converter Name="Unlimited"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom><pValue>Free</pValue></Converter>
<IntConverter Name="Doubled"><pVariable Name="OFFSET">Free</pVariable><FormulaTo>(FROM - OFFSET) / 2</FormulaTo>
  <FormulaFrom>TO * 2 + OFFSET</FormulaFrom><pValue>Ticks</pValue></IntConverter>)";

TEST(Converter, ConvertsBothWays)
{
    TestTree tree(kConverter);
    EXPECT_EQ(tree.realValue("Time"), 25.0);
    EXPECT_EQ(tree.real("Time").setValue(50.3), Status::Ok);
    EXPECT_EQ(tree.value("Ticks"), 201);
    EXPECT_EQ(tree.realValue("Time"), 50.25);
    EXPECT_EQ(tree.value("Doubled"), 406);
    EXPECT_EQ(tree.integer("Doubled").setValue(204), Status::Ok);
    EXPECT_EQ(tree.value("Ticks"), 100);
}

TEST(Converter, ConvertsTheTargetsLimits)
{
    TestTree tree(kConverter);
    EXPECT_EQ(*tree.real("Time").minimum(), 2.5);
    EXPECT_EQ(*tree.real("Time").maximum(), 250.0);
    EXPECT_EQ(*tree.real("Rate").minimum(), 1.0);
    EXPECT_EQ(*tree.real("Rate").maximum(), 100.0);
    EXPECT_EQ(tree.real("Time").setValue(2.4), Status::OutOfRange);
    EXPECT_EQ(tree.real("Rate").setValue(100.5), Status::OutOfRange);
    EXPECT_EQ(*tree.integer("Doubled").minimum(), 24);
    EXPECT_EQ(*tree.integer("Doubled").maximum(), 2004);
}

TEST(Converter, HasNoLimitsWhereNoneCanBeDerived)
{
    TestTree tree(kConverter);
    constexpr double kHighest = 1.7976931348623157e308;
    for (const char* const name : {"Varying", "Unlimited"}) {
        EXPECT_EQ(*tree.real(name).minimum(), -kHighest) << name;
        EXPECT_EQ(*tree.real(name).maximum(), kHighest) << name;
    }
    EXPECT_EQ(tree.real("Varying").setValue(5), Status::OutOfRange); // the target refuses
}

TEST(Converter, IgnoresALimitThatHasNoCounterpart)
{
    TestTree tree(R"(<Integer Name="Ticks"><Value>10</Value><Min>0</Min><Max>100</Max></Integer>
        <Converter Name="Rate"><FormulaTo>1000 / FROM</FormulaTo><FormulaFrom>1000 / TO</FormulaFrom><pValue>Ticks</pValue></Converter>)");
    EXPECT_EQ(*tree.real("Rate").maximum(), 1.7976931348623157e308);
    EXPECT_EQ(tree.realValue("Rate"), 100.0);
    EXPECT_EQ(tree.real("Rate").setValue(20), Status::Ok);
    EXPECT_EQ(tree.value("Ticks"), 50);
    EXPECT_EQ(tree.real("Rate").setValue(0), Status::ArithmeticError);
}

constexpr const char* kTicksWithLimitsInRegisters = R"(
<Integer Name="Ticks"><Value>10</Value><pMin>MinReg</pMin><pMax>MaxReg</pMax></Integer>
<IntReg Name="MinReg"><Address>0x100</Address><Length>4</Length><pPort>Device</pPort><Cachable>NoCache</Cachable></IntReg>
<IntReg Name="MaxReg"><Address>0x104</Address><Length>4</Length><pPort>Device</pPort><Cachable>NoCache</Cachable></IntReg>
<Converter Name="Time"><FormulaTo>FROM * 2</FormulaTo><FormulaFrom>TO / 2</FormulaFrom><pValue>Ticks</pValue><Slope>Increasing</Slope></Converter>
<Converter Name="Rate"><FormulaTo>80 / FROM</FormulaTo><FormulaFrom>80 / TO</FormulaFrom><pValue>Ticks</pValue><Slope>Decreasing</Slope></Converter>
<Converter Name="Untold"><FormulaTo>80 / FROM</FormulaTo><FormulaFrom>80 / TO</FormulaFrom><pValue>Ticks</pValue></Converter>)";

TEST(Converter, ReadsTheOneLimitOfItsTargetThatIsWanted)
{
    TestTree tree(kTicksWithLimitsInRegisters, "0200000028000000"); // 2 and 40
    EXPECT_EQ(*tree.real("Time").minimum(), 1.0);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4"}));
    EXPECT_EQ(*tree.real("Time").maximum(), 20.0);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 104+4"}));
    EXPECT_EQ(*tree.real("Rate").minimum(), 2.0);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 104+4"}));
    EXPECT_EQ(*tree.real("Rate").maximum(), 40.0);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4"}));
    EXPECT_EQ(*tree.real("Rate").increment(), std::nullopt);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{}));
}

TEST(Converter, NeedsBothLimitsOfItsTargetWhereItsSlopeIsNotTold)
{
    TestTree tree(kTicksWithLimitsInRegisters, "0200000028000000");
    EXPECT_EQ(*tree.real("Untold").minimum(), 2.0);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4", "R 104+4"}));
}

TEST(Converter, HasTheAccessOfItsTarget)
{
    TestTree tree(R"(<IntReg Name="Reg"><Address>0x100</Address><Length>4</Length></IntReg>
        <Converter Name="C"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom><pValue>Reg</pValue></Converter>)");
    EXPECT_EQ(*tree.real("C").accessMode(), AccessMode::ReadOnly);
    EXPECT_EQ(tree.real("C").setValue(1), Status::ReadOnly);
}

} // namespace
} // namespace gige::genapi
