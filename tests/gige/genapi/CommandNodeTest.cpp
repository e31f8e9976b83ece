#include "TestTree.h"

namespace gige::genapi
{
namespace
{

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

} // namespace
} // namespace gige::genapi
