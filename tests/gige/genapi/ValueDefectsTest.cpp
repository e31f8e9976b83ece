#include "TestTree.h"

namespace gige::genapi
{
namespace
{

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
    TestTree tree(R"(<Enumeration Name="E"/><Float Name="F"><Value>x</Value></Float>)");
    EXPECT_EQ(tree.get<EnumerationNode>("E").text().status(), Status::BadNode);
    EXPECT_EQ(tree.get<EnumerationNode>("E").setText("A"), Status::BadNode);
    EXPECT_EQ(tree.real("F").value().status(), Status::BadNode);
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
