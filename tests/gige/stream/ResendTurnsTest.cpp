#include "ResendTurns.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace gige::stream
{

namespace
{

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::size_t kSlots = 512;
constexpr Time kNow{1h};

class ResendTurnsTest : public testing::Test
{
  protected:
    std::vector<std::size_t> turns(Time now, bool hasBudget = false) const
    {
        std::vector<std::size_t> list;
        for (auto i = all.first(0, now, hasBudget); i < kSlots;
             i = all.first(i + 1, now, hasBudget)) {
            list.push_back(i);
        }
        return list;
    }

    ResendTurns<kSlots> all;
};

TEST_F(ResendTurnsTest, BlocksWithoutNewsAreNotLookedAt)
{
    for (std::size_t i = 0; i < kSlots; ++i) {
        all.wait(i, kNow + 5ms, false, kNow);
    }
    all.wake(300);
    all.wake(7);
    EXPECT_THAT(turns(kNow), ElementsAre(7, 300));
    all.wait(7, kNow + 9ms, false, kNow);
    all.forget(300);
    EXPECT_THAT(turns(kNow), IsEmpty());
}

TEST_F(ResendTurnsTest, ATurnComesWithItsTime)
{
    all.wait(5, kNow + 5ms, false, kNow);
    all.wait(64, kNow + 2ms, false, kNow);
    all.wait(511, std::nullopt, false, kNow);
    EXPECT_EQ(all.next(), kNow + 2ms);
    EXPECT_THAT(turns(kNow + 2ms - 1ns), IsEmpty());
    EXPECT_THAT(turns(kNow + 2ms), ElementsAre(64));
    EXPECT_THAT(turns(kNow + 5ms), ElementsAre(5, 64));
    all.forget(5);
    all.forget(64);
    EXPECT_EQ(all.next(), std::nullopt);
    EXPECT_THAT(turns(kNow + 1h), IsEmpty());
}

TEST_F(ResendTurnsTest, BlocksThatWaitForBudgetAreNotLookedAtWithoutIt)
{
    for (std::size_t i = 0; i < kSlots; ++i) {
        all.wait(i, std::nullopt, true, kNow);
    }
    EXPECT_THAT(turns(kNow, false), IsEmpty());
    EXPECT_EQ(turns(kNow, true).size(), kSlots);
    EXPECT_EQ(all.next(), std::nullopt); // budget comes with a packet, not with time
    all.wait(0, std::nullopt, false, kNow);
    EXPECT_EQ(all.first(0, kNow, true), 1U);
}

TEST_F(ResendTurnsTest, ALaterTimeTakesEffectWhenTheEarlierHasCome)
{
    all.wait(3, kNow + 5ms, false, kNow);
    all.wait(3, kNow + 9ms, false, kNow + 1ms);
    EXPECT_EQ(all.next(), kNow + 5ms);
    all.wait(3, kNow + 9ms, false, kNow + 5ms);
    EXPECT_EQ(all.next(), kNow + 9ms);
    all.wait(3, kNow + 7ms, false, kNow + 6ms);
    EXPECT_EQ(all.next(), kNow + 7ms);
}

/// Against a plain search.
TEST(SlotTimes, FindsTheEarliestAndEachThatIsDue)
{
    constexpr std::size_t kCount = 64;
    SlotTimes<kCount> times;
    std::vector<Time> plain(kCount, Time::max());
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {
        const std::size_t slot = random() % kCount;
        plain[slot] =
            random() % 4 == 0 ? Time::max() : Time(std::chrono::milliseconds(random() % 50));
        times.set(slot, plain[slot]);
        ASSERT_EQ(times.earliest(), *std::ranges::min_element(plain));
        const std::size_t from = random() % (kCount + 1);
        const Time now(std::chrono::milliseconds(random() % 50));
        const auto due = std::find_if(plain.begin() + static_cast<std::ptrdiff_t>(from),
                                      plain.end(), [&](Time time) { return time <= now; });
        ASSERT_EQ(times.firstDue(from, now), static_cast<std::size_t>(due - plain.begin()));
    }
}

TEST(SlotSet, FindsTheFirstFromAnySlotOn)
{
    SlotSet<kSlots> set;
    EXPECT_EQ(set.first(0), kSlots);
    set.insert(63);
    set.insert(64);
    set.insert(64);
    set.insert(511);
    EXPECT_EQ(set.first(0), 63U);
    EXPECT_EQ(set.first(64), 64U);
    EXPECT_EQ(set.first(65), 511U);
    EXPECT_EQ(set.first(512), kSlots);
    set.erase(64);
    set.erase(511);
    EXPECT_EQ(set.first(64), kSlots);
    set.erase(63);
    EXPECT_TRUE(set.empty());
}

} // namespace

} // namespace gige::stream
