#include "TestTree.h"

namespace gige::genapi
{
namespace
{

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

} // namespace
} // namespace gige::genapi
