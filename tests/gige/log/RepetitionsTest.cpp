#include "Repetitions.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

using namespace std::chrono_literals;
using gige::log::Repetitions;

constexpr Repetitions::Time kStart{1h};

TEST(Repetitions, LetTheSameLineThroughOnceASecondAndCountThoseBetween)
{
    Repetitions repetitions;
    EXPECT_EQ(repetitions.admit("no camera", kStart), 0U);
    EXPECT_FALSE(repetitions.admit("no camera", kStart));
    EXPECT_FALSE(repetitions.admit("no camera", kStart + 999ms));
    EXPECT_EQ(repetitions.admit("no camera", kStart + 1s), 2U);
    EXPECT_FALSE(repetitions.admit("no camera", kStart + 1999ms));
    EXPECT_EQ(repetitions.admit("no camera", kStart + 5s), 1U);
    EXPECT_EQ(repetitions.admit("no camera", kStart + 6s), 0U);
}

TEST(Repetitions, LetOtherLinesThrough)
{
    Repetitions repetitions;
    EXPECT_EQ(repetitions.admit("10.0.0.7: lost", kStart), 0U);
    EXPECT_EQ(repetitions.admit("10.0.0.8: lost", kStart), 0U);
    EXPECT_FALSE(repetitions.admit("10.0.0.7: lost", kStart));
}

TEST(Repetitions, ForgetTheLineLetThroughLongestAgoWhenThereAreManyOthers)
{
    Repetitions repetitions;
    for (int line = 0; line <= 32; ++line) {
        EXPECT_EQ(repetitions.admit(std::to_string(line), kStart + line * 1ms), 0U);
    }
    EXPECT_FALSE(repetitions.admit("1", kStart + 40ms));
    EXPECT_EQ(repetitions.admit("0", kStart + 40ms), 0U);
}

} // namespace
