#include "OpenBlock.h"

#include "TestBlocks.h"

#include <gtest/gtest.h>

namespace gige::stream
{

namespace
{

/// A block of one byte per packet, with room for a thousand.
class OpenBlockTest : public testing::Test
{
  protected:
    OpenBlockTest() { block.begin(buffer, 1, false, {}, {}); }

    void receive(std::uint32_t first, std::uint32_t last)
    {
        for (std::uint32_t id = first; id <= last; ++id) {
            ASSERT_EQ(block.addData(id, wire::Bytes{7}), Placement::Stored);
        }
    }

    wire::Bytes memory = wire::Bytes(1000);
    StreamBuffer buffer{memory};
    OpenBlock block;
};

TEST_F(OpenBlockTest, FindsWhatIsThereAndWhatIsNot)
{
    receive(3, 300);
    EXPECT_EQ(block.findMissing(0, 900), 0U);
    EXPECT_EQ(block.findMissing(1, 900), 1U);
    EXPECT_EQ(block.findReceived(0, 900), 3U);
    EXPECT_EQ(block.findMissing(3, 900), 301U);
    EXPECT_EQ(block.findReceived(301, 900), 900U);
    EXPECT_EQ(block.findMissing(3, 200), 200U);
    EXPECT_EQ(block.findMissing(900, 900), 900U);
}

TEST_F(OpenBlockTest, FindsLeaderAndTrailerToo)
{
    ASSERT_EQ(block.addLeader({}), Placement::Stored);
    receive(1, 2);
    ASSERT_EQ(block.addTrailer(500), Placement::Stored);
    EXPECT_EQ(block.findReceived(0, 501), 0U);
    EXPECT_EQ(block.findMissing(0, 501), 3U);
    EXPECT_EQ(block.findReceived(3, 501), 500U);
    EXPECT_EQ(block.findMissing(500, 501), 501U);
    EXPECT_EQ(block.findMissing(500, 502), 501U);
}

TEST_F(OpenBlockTest, FindsBehindTheBuffersEnd)
{
    ASSERT_EQ(block.addTrailer(0xFF'FFFF), Placement::Stored);
    EXPECT_EQ(block.findMissing(5000, 0x100'0000), 5000U);
    EXPECT_EQ(block.findReceived(5000, 0x100'0000), 0xFF'FFFFU);
}

} // namespace

} // namespace gige::stream
