#include "SerialLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string_view>
#include <utility>

namespace camera
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class SerialLineTest : public testing::Test
{
  protected:
    void send(std::string_view text)
    {
        mLine.send({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    }
    std::string answers()
    {
        const auto bytes = mLine.peek(1000);
        return {bytes.begin(), bytes.end()};
    }

    std::vector<std::pair<std::uint16_t, std::uint32_t>> mWrites;
    SerialLine mLine{[this](std::uint16_t address, std::uint32_t value) {
        mWrites.emplace_back(address, value);
        return address != 0x0666;
    }};
};

TEST_F(SerialLineTest, ExecutesAFrameRequest)
{
    send(":GW07b0000003E7:GW07a800000000:GW07f8");
    EXPECT_THAT(mWrites, ElementsAre(Pair(0x07B0, 999), Pair(0x07A8, 0), Pair(0x07F8, 0)));
    EXPECT_EQ(answers(), "");
}

TEST_F(SerialLineTest, AcknowledgesWhenItIsToldTo)
{
    mLine.enableAcknowledges();
    send(":GW07b000000001");
    EXPECT_EQ(answers(), ":OK\r");
}

TEST_F(SerialLineTest, ReadsBackWhatWasWritten)
{
    send(":GW07b0000003E7:GR07b0\r\n");
    EXPECT_EQ(answers(), ":07B0000003E7\r");
}

TEST_F(SerialLineTest, KeepsHalfACommandForTheRest)
{
    send(":GW07f");
    EXPECT_THAT(mWrites, IsEmpty());
    send("8");
    EXPECT_THAT(mWrites, ElementsAre(Pair(0x07F8, 0)));
}

TEST_F(SerialLineTest, DropsHalfACommandBeforeANewOne)
{
    send(":GW07f");
    send(":GW07b000000001");
    EXPECT_THAT(mWrites, ElementsAre(Pair(0x07B0, 1)));
    EXPECT_EQ(answers(), ":ER\r");
}

TEST_F(SerialLineTest, RefusesWhatIsNoCommand)
{
    send("hello:XY07b0:GWzzzz:GW07b0123456789:GW0666");
    EXPECT_THAT(mWrites, ElementsAre(Pair(0x0666, 0)));
    EXPECT_EQ(answers(), ":ER\r:ER\r:ER\r:ER\r");
}

TEST_F(SerialLineTest, GivesAnswersUntilTheyAreConsumed)
{
    send(":GR0001:GR0002");
    EXPECT_EQ(mLine.waiting(), 28U);
    mLine.consume(14);
    EXPECT_EQ(answers(), ":000200000000\r");
    mLine.consume(1000);
    EXPECT_EQ(mLine.waiting(), 0U);
}

TEST_F(SerialLineTest, FlushDropsTheAnswers)
{
    send(":GR0001");
    mLine.flush();
    EXPECT_EQ(mLine.waiting(), 0U);
}

TEST_F(SerialLineTest, LosesTheOldestAnswersOfAHostThatNeverReads)
{
    for (int i = 0; i < 1000; ++i) {
        send(":GR0001");
    }
    EXPECT_EQ(mLine.waiting(), 4096U);
}

} // namespace
} // namespace camera
