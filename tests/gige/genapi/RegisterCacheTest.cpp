#include "TestTree.h"

namespace gige::genapi
{
namespace
{

using std::chrono::milliseconds;

std::string reg(const std::string& name, const std::string& address, const std::string& rest = "")
{
    return "<IntReg Name=\"" + name + "\"><Address>" + address +
           "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>" + rest +
           "</IntReg>";
}

TEST(Cache, AnswersTheSecondRead)
{
    TestTree tree(reg("N", "0x100"), "07000000");
    EXPECT_EQ(tree.value("N"), 7);
    tree.port.set(0x100, "08000000");
    EXPECT_EQ(tree.value("N"), 7);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4"}));
}

TEST(Cache, CanBePassedBy)
{
    TestTree tree(reg("N", "0x100"), "07000000");
    EXPECT_EQ(tree.value("N"), 7);
    tree.port.set(0x100, "08000000");
    EXPECT_EQ(*tree.integer("N").value(ReadFrom::Device), 8);
    EXPECT_EQ(tree.value("N"), 8);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4", "R 100+4"}));
}

TEST(Cache, KeepsWhatIsWrittenThrough)
{
    TestTree tree(reg("N", "0x100"));
    EXPECT_EQ(tree.integer("N").setValue(5), Status::Ok);
    EXPECT_EQ(tree.value("N"), 5);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"W 100+4"}));
}

TEST(Cache, DropsWhatIsWrittenAround)
{
    TestTree tree(reg("N", "0x100", "<Cachable>WriteAround</Cachable>"));
    EXPECT_EQ(tree.value("N"), 0);
    EXPECT_EQ(tree.value("N"), 0);
    EXPECT_EQ(tree.integer("N").setValue(5), Status::Ok);
    EXPECT_EQ(tree.value("N"), 5);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4", "W 100+4", "R 100+4"}));
}

TEST(Cache, IsNotUsedForVolatileRegisters)
{
    TestTree tree(reg("N", "0x100", "<Cachable>NoCache</Cachable>"));
    EXPECT_EQ(tree.value("N"), 0);
    EXPECT_EQ(tree.value("N"), 0);
    EXPECT_EQ(tree.integer("N").setValue(5), Status::Ok);
    EXPECT_EQ(tree.value("N"), 5);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4", "R 100+4", "W 100+4", "R 100+4"}));
}

TEST(Cache, ForgetsAfterAFailedWrite)
{
    TestTree tree(reg("N", "0x100"), "07000000");
    EXPECT_EQ(tree.value("N"), 7);
    tree.port.failWith(Status::PortTimeout);
    EXPECT_EQ(tree.integer("N").setValue(9), Status::PortTimeout);
    tree.port.failWith(Status::Ok);
    tree.port.set(0x100, "09000000"); // the write had arrived, its answer not
    EXPECT_EQ(tree.value("N"), 9);
}

TEST(Cache, DoesNotKeepAFailedRead)
{
    TestTree tree(reg("N", "0x100"), "07000000");
    tree.port.failWith(Status::PortTimeout);
    EXPECT_EQ(tree.valueStatus("N"), Status::PortTimeout);
    tree.port.failWith(Status::Ok);
    EXPECT_EQ(tree.value("N"), 7);
}

TEST(Cache, KeepsTheElementsOfAnIndexedRegisterApart)
{
    TestTree tree(
        R"(<Integer Name="I"><Value>0</Value></Integer><IntReg Name="N"><Address>0x100</Address>
        <pIndex Offset="4">I</pIndex><Length>4</Length><AccessMode>RW</AccessMode></IntReg>)",
        "0100000002000000");
    EXPECT_EQ(tree.value("N"), 1);
    EXPECT_EQ(tree.integer("I").setValue(1), Status::Ok);
    EXPECT_EQ(tree.value("N"), 2);
    EXPECT_EQ(tree.integer("I").setValue(0), Status::Ok);
    EXPECT_EQ(tree.value("N"), 1);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4", "R 104+4"}));
}

TEST(Cache, EndsWhenAnotherNodeWritesAnOverlappingRange)
{
    TestTree tree("<IntReg Name=\"Wide\"><Address>0x100</Address><Length>8</Length></IntReg>" +
                      reg("Low", "0x100") + reg("High", "0x104") + reg("Beyond", "0x108"),
                  "010000000000000009000000");
    EXPECT_EQ(tree.value("Wide"), 1);
    EXPECT_EQ(tree.value("Low"), 1);
    EXPECT_EQ(tree.value("Beyond"), 9);
    tree.port.takeAccesses();
    EXPECT_EQ(tree.integer("High").setValue(1), Status::Ok);
    EXPECT_EQ(tree.value("Wide"), 0x100000001);
    EXPECT_EQ(tree.value("Low"), 1);
    EXPECT_EQ(tree.value("Beyond"), 9);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"W 104+4", "R 100+8"}));
}

TEST(Cache, IsSharedByTheEntriesOfAStructure)
{
    TestTree tree(
        R"(<StructReg><Address>0x100</Address><Length>4</Length><AccessMode>RW</AccessMode>
        <StructEntry Name="A"><LSB>0</LSB><MSB>7</MSB></StructEntry>
        <StructEntry Name="B"><LSB>8</LSB><MSB>15</MSB></StructEntry></StructReg>)",
        "01020000");
    EXPECT_EQ(tree.value("A"), 1);
    EXPECT_EQ(tree.value("B"), 2);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4"}));
    EXPECT_EQ(tree.integer("A").setValue(9), Status::Ok);
    EXPECT_EQ(tree.value("B"), 2);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4", "W 100+4"}));
}

TEST(Cache, DoesNotHoldFormulaResults)
{
    TestTree tree(reg("N", "0x100", "<Cachable>NoCache</Cachable>") +
                      "<IntSwissKnife Name=\"K\"><pVariable Name=\"V\">N</pVariable>"
                      "<Formula>V * 2</Formula></IntSwissKnife>",
                  "01000000");
    EXPECT_EQ(tree.value("K"), 2);
    tree.port.set(0x100, "02000000");
    EXPECT_EQ(tree.value("K"), 4);
}

TEST(Cache, IsForgottenOnDemand)
{
    TestTree tree(reg("N", "0x100"), "07000000");
    EXPECT_EQ(tree.value("N"), 7);
    tree.map->invalidate();
    EXPECT_EQ(tree.value("N"), 7);
    EXPECT_EQ(tree.port.takeAccesses(), (Accesses{"R 100+4", "R 100+4"}));
}

TEST(Cache, EndsWhenThePollingTimeHasElapsed)
{
    TestTree tree(reg("Slow", "0x100", "<PollingTime>1000</PollingTime>") +
                  reg("Fast", "0x104", "<PollingTime>100</PollingTime>") + reg("Never", "0x108"));
    const auto readAll = [&] {
        for (const char* const name : {"Slow", "Fast", "Never"}) {
            EXPECT_EQ(tree.value(name), 0);
        }
        return tree.port.takeAccesses();
    };
    EXPECT_EQ(readAll(), (Accesses{"R 100+4", "R 104+4", "R 108+4"}));
    tree.map->poll(milliseconds(99));
    EXPECT_EQ(readAll(), (Accesses{}));
    tree.map->poll(milliseconds(1));
    EXPECT_EQ(readAll(), (Accesses{"R 104+4"}));
    tree.map->poll(milliseconds(900));
    EXPECT_EQ(readAll(), (Accesses{"R 100+4", "R 104+4"}));
}

/// How often "Reg" is read again after `write`, all having been read before.
template <typename Write>
Accesses readsAfter(TestTree& tree, Write write)
{
    EXPECT_EQ(tree.value("Reg"), 0);
    EXPECT_EQ(write(), Status::Ok);
    tree.port.takeAccesses();
    EXPECT_EQ(tree.value("Reg"), 0);
    return tree.port.takeAccesses();
}

TEST(Invalidator, DropsWhatNamesIt)
{
    TestTree tree(reg("Reg", "0x100", "<pInvalidator>Trigger</pInvalidator>") +
                  reg("Trigger", "0x104") + reg("Other", "0x108"));
    EXPECT_EQ(readsAfter(tree, [&] { return tree.integer("Other").setValue(1); }), (Accesses{}));
    EXPECT_EQ(readsAfter(tree, [&] { return tree.integer("Trigger").setValue(1); }),
              (Accesses{"R 100+4"}));
}

TEST(Invalidator, ActsOnWhateverAWriteGoesThrough)
{
    TestTree tree(
        reg("Reg", "0x100", "<pInvalidator>Trigger</pInvalidator>") + reg("Trigger", "0x104") +
        "<Integer Name=\"Feature\"><pValue>Middle</pValue></Integer>"
        "<Converter Name=\"Middle\"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom>"
        "<pValue>Trigger</pValue></Converter>");
    EXPECT_EQ(readsAfter(tree, [&] { return tree.integer("Feature").setValue(1); }),
              (Accesses{"R 100+4"}));
}

TEST(Invalidator, MayBeAFeatureAboveTheRegisterWritten)
{
    TestTree tree(reg("Reg", "0x100", "<pInvalidator>Feature</pInvalidator>") +
                  reg("Trigger", "0x104") +
                  "<Integer Name=\"Feature\"><pValue>Trigger</pValue></Integer>");
    EXPECT_EQ(readsAfter(tree, [&] { return tree.integer("Feature").setValue(1); }),
              (Accesses{"R 100+4"}));
    EXPECT_EQ(readsAfter(tree, [&] { return tree.integer("Trigger").setValue(2); }),
              (Accesses{"R 100+4"}));
}

TEST(Invalidator, MayBeAPort)
{
    TestTree tree(reg("Reg", "0x100", "<pInvalidator>Device</pInvalidator>") + reg("Any", "0x104"));
    EXPECT_EQ(readsAfter(tree, [&] { return tree.integer("Any").setValue(1); }),
              (Accesses{"R 100+4"}));
}

TEST(Invalidator, OfAFeatureActsOnTheRegistersBelow)
{
    TestTree tree(
        reg("Reg", "0x100") + reg("Trigger", "0x104") +
        "<Integer "
        "Name=\"Feature\"><pValue>Reg</pValue><pInvalidator>Trigger</pInvalidator></Integer>");
    EXPECT_EQ(readsAfter(tree, [&] { return tree.integer("Trigger").setValue(1); }),
              (Accesses{"R 100+4"}));
}

TEST(Invalidator, ActsThroughOthers)
{
    TestTree tree(reg("Reg", "0x100", "<pInvalidator>Second</pInvalidator>") +
                  reg("Second", "0x104", "<pInvalidator>First</pInvalidator>") +
                  reg("First", "0x108"));
    EXPECT_EQ(readsAfter(tree, [&] { return tree.integer("First").setValue(1); }),
              (Accesses{"R 100+4"}));
}

TEST(Invalidator, MayBeACommand)
{
    TestTree tree(
        reg("Reg", "0x100", "<pInvalidator>Load</pInvalidator>") + reg("Go", "0x104") +
        "<Command Name=\"Load\"><pValue>Go</pValue><CommandValue>1</CommandValue></Command>");
    auto& load = tree.get<CommandNode>("Load");
    EXPECT_EQ(readsAfter(tree, [&] { return load.execute(); }), (Accesses{"R 100+4"}));
    // Read while the command ran, and stale once it is done.
    tree.port.set(0x104, "00000000");
    EXPECT_EQ(readsAfter(tree, [&] { return load.isDone().status(); }), (Accesses{"R 100+4"}));
}

TEST(Invalidator, CyclesEnd)
{
    TestTree tree(
        reg("Reg", "0x100", "<pInvalidator>Other</pInvalidator><pInvalidator>Reg</pInvalidator>") +
        reg("Other", "0x104", "<pInvalidator>Reg</pInvalidator>"));
    EXPECT_EQ(readsAfter(tree, [&] { return tree.integer("Other").setValue(1); }),
              (Accesses{"R 100+4"}));
}

TEST(Selector, DropsTheCachesBelowItsFeatures)
{
    TestTree tree(
        reg("Reg", "0x100") + reg("SelectorReg", "0x104") +
        "<Integer Name=\"Feature\"><pValue>Reg</pValue></Integer>"
        "<Enumeration Name=\"Selector\"><EnumEntry Name=\"A\"><Value>0</Value></EnumEntry>"
        "<EnumEntry Name=\"B\"><Value>1</Value></EnumEntry><pValue>SelectorReg</pValue>"
        "<pSelected>Feature</pSelected></Enumeration>");
    EXPECT_EQ(readsAfter(tree, [&] { return tree.get<EnumerationNode>("Selector").setText("B"); }),
              (Accesses{"R 100+4"}));
    const std::vector<Node*>& selected = tree.map->find("Selector")->links().selected;
    ASSERT_EQ(selected.size(), 1U);
    EXPECT_EQ(selected[0]->name(), "Feature");
}

TEST(Cache, StartsOverWhenItIsFull)
{
    // 300 registers of 64 KiB over the same memory: more than the cache holds.
    std::string memory(std::size_t{65536} * 2, '0');
    TestTree tree(R"(<Integer Name="I"><Value>0</Value></Integer><Register Name="R">
        <Address>0x100</Address><pIndex Offset="0">I</pIndex><pLength>Size</pLength></Register>
        <Integer Name="Size"><Value>65536</Value></Integer>)",
                  memory);
    for (std::int64_t size = 65536; size > 65536 - 300; --size) {
        ASSERT_EQ(tree.integer("Size").setValue(size), Status::Ok);
        ASSERT_EQ(tree.get<RegisterNode>("R").read().status(), Status::Ok);
    }
    tree.port.takeAccesses();
    EXPECT_EQ(tree.integer("Size").setValue(65536 - 299), Status::Ok);
    EXPECT_EQ(tree.get<RegisterNode>("R").read().status(), Status::Ok);
    EXPECT_EQ(tree.port.takeAccesses().size(), 0U); // the last one is still known
    EXPECT_EQ(tree.integer("Size").setValue(65536), Status::Ok);
    EXPECT_EQ(tree.get<RegisterNode>("R").read().status(), Status::Ok);
    EXPECT_EQ(tree.port.takeAccesses().size(), 1U); // the first one is forgotten
}

} // namespace
} // namespace gige::genapi
