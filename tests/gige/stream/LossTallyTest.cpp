#include "LossTally.h"

#include "OpenBlock.h"

#include <array>
#include <gtest/gtest.h>
#include <initializer_list>
#include <vector>

namespace gige::stream
{

namespace
{

/// A block of a leader (0), 98 data packets and a trailer (99): ten packets in each tenth.
class LossTallyTest : public testing::Test
{
  protected:
    void receiveAllBut(std::uint32_t first, std::uint32_t last)
    {
        block.begin(buffer, 1, false, Time(), {.dataSize = 10, .blockBytes = 980});
        const std::array<std::uint8_t, 10> data{};
        for (std::uint32_t id = 1; id <= 98; ++id) {
            if (id < first || id > last) {
                ASSERT_EQ(block.addData(id, data), Placement::Stored);
            }
        }
        ASSERT_EQ(block.addLeader({}), Placement::Stored);
        if (last < 99) {
            ASSERT_EQ(block.addTrailer(99), Placement::Stored);
        }
    }

    std::vector<std::uint8_t> memory = std::vector<std::uint8_t>(980);
    StreamBuffer buffer{memory};
    OpenBlock block;
    LossTally tally;
};

TEST_F(LossTallyTest, SpreadsALongLossOverTheTenthsThatItLiesIn)
{
    receiveAllBut(15, 32);
    tally.addMissing(block);
    EXPECT_EQ(tally.lost(), (log::LostByTenth{0, 5, 10, 3, 0, 0, 0, 0, 0, 0}));
}

TEST_F(LossTallyTest, CountsAnEndThatIsMissing)
{
    receiveAllBut(88, 99);
    tally.addMissing(block);
    EXPECT_EQ(tally.lost(), (log::LostByTenth{0, 0, 0, 0, 0, 0, 0, 0, 2, 10}));
}

TEST_F(LossTallyTest, CountsWhatCameLaterWhereItBelongs)
{
    receiveAllBut(5, 5);
    tally.addCame(block, 5);
    tally.addCame(block, 98);
    tally.addCame(block, 100); // behind the block's end
    EXPECT_EQ(tally.lost(), (log::LostByTenth{1, 0, 0, 0, 0, 0, 0, 0, 0, 1}));
}

TEST_F(LossTallyTest, FindsNothingInAWholeBlock)
{
    receiveAllBut(1000, 0);
    tally.addMissing(block);
    EXPECT_EQ(tally.lost(), log::LostByTenth{});
}

} // namespace

} // namespace gige::stream
