#include "TestTree.h"

namespace gige::genapi
{
namespace
{

TEST(NodeInfo, HasWhatAParameterBrowserShows)
{
    TestTree tree(
        R"(<Integer Name="Width" NameSpace="Standard"><ToolTip>short</ToolTip><Description>long text</Description>
        <DisplayName> Image width </DisplayName><Visibility>Expert</Visibility><DocuURL>http://x</DocuURL>
        <IsDeprecated>Yes</IsDeprecated><EventID>9001</EventID><Streamable>Yes</Streamable><Value>1</Value>
        <Unit>px</Unit><Representation>HexNumber</Representation></Integer>
        <Integer Name="Plain"><Value>1</Value><Visibility>Nonsense</Visibility></Integer>)");
    const NodeInfo& width = tree.map->find("Width")->info();
    EXPECT_EQ(width.name, "Width");
    EXPECT_EQ(width.displayName, "Image width");
    EXPECT_EQ(width.toolTip, "short");
    EXPECT_EQ(width.description, "long text");
    EXPECT_EQ(width.visibility, Visibility::Expert);
    EXPECT_EQ(tree.integer("Width").unit(), "px");
    EXPECT_EQ(tree.integer("Width").representation(), Representation::HexNumber);

    const NodeInfo& plain = tree.map->find("Plain")->info();
    EXPECT_EQ(plain.displayName, "Plain");
    EXPECT_EQ(plain.visibility, Visibility::Beginner);
    EXPECT_EQ(tree.integer("Plain").unit(), "");
    EXPECT_EQ(tree.integer("Plain").representation(), Representation::PureNumber);
}

TEST(NodeInfo, TakesThePresentationOverFromBelow)
{
    TestTree tree(R"(<IntReg Name="Reg"><Address>0x100</Address><Length>4</Length><Unit>ms</Unit>
          <Representation>IPV4Address</Representation></IntReg>
        <Integer Name="N"><pValue>Reg</pValue></Integer><Integer Name="Own"><pValue>Reg</pValue><Unit>us</Unit></Integer>
        <Float Name="F"><Value>1</Value><DisplayNotation>Scientific</DisplayNotation><DisplayPrecision>3</DisplayPrecision>
          <Representation>Logarithmic</Representation></Float><Float Name="G"><Value>1</Value></Float>)");
    EXPECT_EQ(tree.integer("N").unit(), "ms");
    EXPECT_EQ(tree.integer("N").representation(), Representation::Ipv4Address);
    EXPECT_EQ(tree.integer("Own").unit(), "us");
    EXPECT_EQ(tree.real("F").representation(), Representation::Logarithmic);
}

TEST(NodeMap, FlattensGroupsAndIgnoresNamespacesAndWhatItDoesNotKnow)
{
    const std::string xml =
        R"(<g:RegisterDescription xmlns:g="http://www.genicam.org/GenApi/Version_1_0">
        <g:Group Comment="a"><Group><g:Integer Name="Deep"><g:Value>3</g:Value><Novelty>?</Novelty></g:Integer></Group></g:Group>
        <ConfRom Name="Old"/><TextDesc Name="Older"/><Whatever Name="Unknown"><Integer Name="Inside"><Value>1</Value></Integer></Whatever>
        <!-- a comment --><g:Integer><g:Value>1</g:Value></g:Integer><g:Integer Name="Deep"><g:Value>4</g:Value></g:Integer>
        </g:RegisterDescription>)";
    MemoryPort port(0x100, "");
    const auto map = NodeMap::load(xml, port);
    ASSERT_EQ(map.status(), Status::Ok);
    EXPECT_EQ(*(*map)->find<IntegerNode>("Deep")->value(), 3); // the first of two
    for (const char* const name : {"Old", "Older", "Unknown", "Inside", ""}) {
        EXPECT_EQ((*map)->find(name), nullptr) << name;
    }
    EXPECT_EQ((*map)->nodes().size(), 1U);
    EXPECT_EQ((*map)->root(), nullptr);
}

TEST(NodeMap, ListsCategoriesWithTheFeaturesThatExist)
{
    TestTree tree(
        R"(<Category Name="Root"><pFeature>Sub</pFeature><pFeature>Nowhere</pFeature><pFeature>N</pFeature></Category>
        <Category Name="Sub"><pFeature>Root</pFeature></Category><Integer Name="N"><Value>1</Value></Integer>)");
    const CategoryNode* const root = tree.map->root();
    ASSERT_NE(root, nullptr);
    ASSERT_EQ(root->features().size(), 2U);
    EXPECT_EQ(root->features()[0]->name(), "Sub");
    EXPECT_EQ(root->features()[0]->kind(), NodeKind::Category);
    EXPECT_EQ(root->features()[1]->name(), "N");
    EXPECT_EQ(*tree.map->find("Root")->accessMode(), AccessMode::ReadOnly);
}

TEST(NodeMap, ListsAllNodesByName)
{
    TestTree tree(
        R"(<Integer Name="B"><Value>1</Value></Integer><Integer Name="A"><Value>1</Value></Integer>)");
    std::vector<std::string> names;
    for (const Node* const node : tree.map->nodes()) {
        names.push_back(node->name());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"A", "B", "Device"}));
}

TEST(Status, HasAName)
{
    EXPECT_STREQ(name(Status::Ok), "OK");
    EXPECT_STREQ(name(Status::OutOfRange), "OUT_OF_RANGE");
    EXPECT_STREQ(name(Status::PortNotConnected), "PORT_NOT_CONNECTED");
    EXPECT_STREQ(name(Status::UrlUnsupported), "URL_UNSUPPORTED");
}

} // namespace
} // namespace gige::genapi
