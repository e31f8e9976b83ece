#include "TextNumbers.h"

#include <gtest/gtest.h>

namespace gige::genapi
{
namespace
{

TEST(TextNumbers, IntegersAreDecimalOrHexadecimalPatterns)
{
    EXPECT_EQ(parseInteger("42"), 42);
    EXPECT_EQ(parseInteger(" \t-42\n"), -42);
    EXPECT_EQ(parseInteger("+42"), 42);
    EXPECT_EQ(parseInteger("010"), 10);
    EXPECT_EQ(parseInteger("0x1F"), 31);
    EXPECT_EQ(parseInteger("0XfF"), 255);
    EXPECT_EQ(parseInteger("0xFFFFFFFFFFFFFFFF"), -1);
    EXPECT_EQ(parseInteger("-9223372036854775808"), INT64_MIN);
    for (const char* const text : {"", " ", "abc", "1.5", "1 2", "0x", "0xG", "--1", "+-1", "1e3",
                                   "9223372036854775808", "0x10000000000000000"}) {
        EXPECT_EQ(parseInteger(text), std::nullopt) << text;
    }
}

TEST(TextNumbers, RealsAreDecimalWithFractionAndExponent)
{
    EXPECT_EQ(parseReal(" 1.5 "), 1.5);
    EXPECT_EQ(parseReal("-2e3"), -2000.0);
    EXPECT_EQ(parseReal("+.25"), 0.25);
    EXPECT_EQ(parseReal("0x10"), 16.0);
    for (const char* const text : {"", "x", "1.5.2", "1e", "1,5", "+-1"}) {
        EXPECT_EQ(parseReal(text), std::nullopt) << text;
    }
}

TEST(TextNumbers, HexadecimalNeedsNoPrefix)
{
    EXPECT_EQ(parseHexadecimal("8001a000"), 0x8001A000U);
    EXPECT_EQ(parseHexadecimal(" 0xAB "), 0xABU);
    EXPECT_EQ(parseHexadecimal("-1"), std::nullopt);
    EXPECT_EQ(parseHexadecimal(""), std::nullopt);
}

TEST(TextNumbers, TrimsBlanksAtBothEnds)
{
    EXPECT_EQ(trimmed(" \r\n\ta b\t "), "a b");
    EXPECT_EQ(trimmed("   "), "");
    EXPECT_EQ(trimmed(""), "");
}

} // namespace
} // namespace gige::genapi
