#include "PortAccess.h"

#include "TestTree.h"

namespace gige::genapi
{
namespace
{

using Bytes = std::vector<std::uint8_t>;

class PortAccessTest : public testing::Test
{
  protected:
    static Bytes read(PortAccess& access, std::uint64_t address, std::size_t size)
    {
        Bytes bytes(size);
        EXPECT_EQ(access.read(address, bytes), Status::Ok);
        return bytes;
    }

    MemoryPort mPort{0x100, "000102030405060708090A0B"};
    PortAccess mAccess{mPort, {}};
};

TEST_F(PortAccessTest, ReadsAlignedMemoryAsItIs)
{
    EXPECT_EQ(read(mAccess, 0x100, 8), (Bytes{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(mPort.takeAccesses(), (Accesses{"R 100+8"}));
}

TEST_F(PortAccessTest, ReadsTheCoveringWordsOfAnOddRange)
{
    EXPECT_EQ(read(mAccess, 0x103, 2), (Bytes{3, 4}));
    EXPECT_EQ(read(mAccess, 0x105, 1), (Bytes{5}));
    EXPECT_EQ(read(mAccess, 0x108, 3), (Bytes{8, 9, 10}));
    EXPECT_EQ(mPort.takeAccesses(), (Accesses{"R 100+8", "R 104+4", "R 108+4"}));
}

TEST_F(PortAccessTest, PatchesTheCoveringWordsOfAnOddWrite)
{
    EXPECT_EQ(mAccess.write(0x103, Bytes{0xAA, 0xBB}), Status::Ok);
    EXPECT_EQ(mPort.takeAccesses(), (Accesses{"R 100+8", "W 100+8"}));
    EXPECT_EQ(mPort.hex(0x100, 12), "000102AABB05060708090A0B");
}

TEST_F(PortAccessTest, DoesNotWriteWhatItCouldNotRead)
{
    mPort.failWith(Status::PortTimeout);
    EXPECT_EQ(mAccess.write(0x101, Bytes{1}), Status::PortTimeout);
    EXPECT_EQ(mPort.takeAccesses(), (Accesses{"R 100+4"}));
}

TEST_F(PortAccessTest, UsesRegisterCommandsForFourBytesOfAnOldDevice)
{
    PortAccess access(mPort, {.fourBytesAsRegister = true});
    EXPECT_EQ(read(access, 0x104, 4), (Bytes{4, 5, 6, 7}));
    EXPECT_EQ(access.write(0x104, Bytes{0xA, 0xB, 0xC, 0xD}), Status::Ok);
    EXPECT_EQ(read(access, 0x100, 8), (Bytes{0, 1, 2, 3, 0xA, 0xB, 0xC, 0xD}));
    EXPECT_EQ(read(access, 0x102, 4), (Bytes{2, 3, 0xA, 0xB}));
    EXPECT_EQ(mPort.takeAccesses(), (Accesses{"r 104", "w 104", "R 100+8", "R 100+8"}));
}

TEST_F(PortAccessTest, TakesRegisterCommandsAsBigEndianWhateverTheNodeSays)
{
    const PortAccess access(mPort, {.fourBytesAsRegister = true});
    EXPECT_EQ(access.byteOrder(0x104, 4, ByteOrder::LittleEndian), ByteOrder::BigEndian);
    EXPECT_EQ(access.byteOrder(0x104, 8, ByteOrder::LittleEndian), ByteOrder::LittleEndian);
    EXPECT_EQ(access.byteOrder(0x102, 4, ByteOrder::LittleEndian), ByteOrder::LittleEndian);
    EXPECT_EQ(mAccess.byteOrder(0x104, 4, ByteOrder::LittleEndian), ByteOrder::LittleEndian);
}

TEST_F(PortAccessTest, WritesWordByWordWithoutMemoryWrites)
{
    PortAccess access(mPort, {.hasWriteMemory = false});
    EXPECT_EQ(access.write(0x100, Bytes{9, 8, 7, 6, 5, 4, 3, 2}), Status::Ok);
    EXPECT_EQ(mPort.takeAccesses(), (Accesses{"w 100", "w 104"}));
    EXPECT_EQ(mPort.hex(0x100, 8), "0908070605040302");
}

TEST_F(PortAccessTest, WritesNumbersInTheOrderOfALittleEndianDevice)
{
    // WRITEREG of a number n puts its lowest byte first there; this memory puts the highest first.
    PortAccess access(mPort, {.hasWriteMemory = false, .isBigEndian = false});
    EXPECT_EQ(access.write(0x100, Bytes{1, 2, 3, 4}), Status::Ok);
    EXPECT_EQ(mPort.hex(0x100, 4), "04030201");
}

TEST_F(PortAccessTest, RefusesRangesBeyondTheAddressSpace)
{
    Bytes bytes(8);
    EXPECT_EQ(mAccess.read(~std::uint64_t{0} - 3, bytes), Status::PortBadAddress);
    EXPECT_EQ(mAccess.write(~std::uint64_t{0} - 3, bytes), Status::PortBadAddress);
    EXPECT_TRUE(mPort.takeAccesses().empty());
}

constexpr const char* kLittleEndianRegister =
    "<IntReg Name=\"N\"><Address>0x100</Address><Length>4</Length><AccessMode>RW</AccessMode>"
    "<pPort>Device</pPort><Endianess>LittleEndian</Endianess></IntReg>";

TEST(SchemaVersion, DecidesHowFourBytesAreAccessed)
{
    TestTree modern(kLittleEndianRegister, "00000280", 1, {});
    EXPECT_EQ(modern.value("N"), 0x80020000);
    EXPECT_EQ(modern.port.takeAccesses(), (Accesses{"R 100+4"}));

    TestTree old(kLittleEndianRegister, "00000280", 0, {});
    EXPECT_EQ(old.value("N"), 640);
    EXPECT_EQ(old.integer("N").setValue(0x01020304), Status::Ok);
    EXPECT_EQ(old.port.takeAccesses(), (Accesses{"r 100", "w 100"}));
    EXPECT_EQ(old.port.hex(0x100, 4), "01020304");
}

TEST(SchemaVersion, CanBeOverridden)
{
    PortOptions options;
    options.fourBytesAsRegister = true;
    TestTree claimsModern(kLittleEndianRegister, "00000280", 1, options);
    EXPECT_EQ(claimsModern.value("N"), 640);
    options.fourBytesAsRegister = false;
    TestTree claimsOld(kLittleEndianRegister, "00000280", 0, options);
    EXPECT_EQ(claimsOld.value("N"), 0x80020000);
}

} // namespace
} // namespace gige::genapi
