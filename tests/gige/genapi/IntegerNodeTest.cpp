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

} // namespace
} // namespace gige::genapi
