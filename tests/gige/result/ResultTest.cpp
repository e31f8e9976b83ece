#include "Result.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace gige
{
namespace
{

enum class Reason { None, Broken, Late };

template <typename T>
using Outcome = Result<T, Reason>;

TEST(Result, HoldsAValueOrTheReasonForNone)
{
    const Outcome<int> value = 7;
    ASSERT_TRUE(value);
    EXPECT_EQ(*value, 7);
    EXPECT_EQ(value.status(), Reason::None);

    const Outcome<int> failure = Reason::Late;
    EXPECT_FALSE(failure);
    EXPECT_EQ(failure.status(), Reason::Late);
}

TEST(Result, GivesAnotherValueForNone)
{
    EXPECT_EQ(Outcome<int>(7).valueOr(1), 7);
    EXPECT_EQ(Outcome<int>(Reason::Broken).valueOr(1), 1);
}

TEST(Result, HandsOverAValueThatOnlyMoves)
{
    Outcome<std::unique_ptr<int>> value = std::make_unique<int>(7);
    const std::unique_ptr<int> taken = *std::move(value);
    EXPECT_EQ(*taken, 7);
}

TEST(Result, TransformsTheValueAndKeepsTheFailure)
{
    const auto text = [](int value) { return std::to_string(value); };
    EXPECT_EQ(*Outcome<int>(7).transform(text), "7");
    EXPECT_EQ(Outcome<int>(Reason::Broken).transform(text).status(), Reason::Broken);
}

TEST(Result, GoesOnWithAnotherResultUntilOneFails)
{
    const auto half = [](int value) {
        return value % 2 == 0 ? Outcome<int>(value / 2) : Reason::Broken;
    };
    EXPECT_EQ(*Outcome<int>(12).andThen(half).andThen(half), 3);
    EXPECT_EQ(Outcome<int>(6).andThen(half).andThen(half).status(), Reason::Broken);
    EXPECT_EQ(Outcome<int>(Reason::Late).andThen(half).status(), Reason::Late);
}

TEST(Result, GoesOnWithAStatus)
{
    const auto refuse = [](int value) { return value > 5 ? Reason::Broken : Reason::None; };
    EXPECT_EQ(Outcome<int>(4).andThen(refuse), Reason::None);
    EXPECT_EQ(Outcome<int>(7).andThen(refuse), Reason::Broken);
    EXPECT_EQ(Outcome<int>(Reason::Late).andThen(refuse), Reason::Late);
}

} // namespace
} // namespace gige
