#include "PvBuffer.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

TEST(PvBuffer, IsEmptyAtFirst)
{
    PvBuffer buffer;
    EXPECT_EQ(buffer.GetDataPointer(), nullptr);
    EXPECT_EQ(buffer.GetSize(), 0U);
}

TEST(PvBuffer, AllocGivesZeroedMemory)
{
    PvBuffer buffer;
    ASSERT_TRUE(buffer.Alloc(4096).IsOK());
    EXPECT_EQ(buffer.GetSize(), 4096U);
    const std::uint8_t* data = buffer.GetDataPointer();
    EXPECT_EQ(std::count(data, data + 4096, 0), 4096);
}

TEST(PvBuffer, AllocAgainReplacesTheMemory)
{
    PvBuffer buffer;
    ASSERT_TRUE(buffer.Alloc(100).IsOK());
    buffer.GetDataPointer()[0] = 1;
    ASSERT_TRUE(buffer.Alloc(200).IsOK());
    EXPECT_EQ(buffer.GetSize(), 200U);
    EXPECT_EQ(buffer.GetDataPointer()[0], 0);
}

TEST(PvBuffer, FreeMayBeRepeated)
{
    PvBuffer buffer;
    ASSERT_TRUE(buffer.Alloc(100).IsOK());
    buffer.Free();
    buffer.Free();
    EXPECT_EQ(buffer.GetDataPointer(), nullptr);
    EXPECT_EQ(buffer.GetSize(), 0U);
}

} // namespace
