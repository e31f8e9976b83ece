#include "TestTree.h"

namespace gige::genapi
{
namespace
{

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

} // namespace
} // namespace gige::genapi
