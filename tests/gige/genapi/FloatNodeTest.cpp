#include "TestTree.h"

namespace gige::genapi
{
namespace
{

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

} // namespace
} // namespace gige::genapi
