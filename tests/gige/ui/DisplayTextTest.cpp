#include "DisplayText.h"

#include <gtest/gtest.h>

namespace gige::ui
{
namespace
{

TEST(DisplayText, LeavesUtf8AsItIs)
{
    EXPECT_EQ(displayText("Kamera \xC3\xA4 \xE2\x82\xAC \xF0\x9F\x93\xB7"),
              "Kamera \xC3\xA4 \xE2\x82\xAC \xF0\x9F\x93\xB7");
}

TEST(DisplayText, TakesWhatIsNoUtf8ForLatin1)
{
    EXPECT_EQ(displayText("Vorg\xE4nger"), "Vorg\xC3\xA4nger");
    EXPECT_EQ(displayText("\xC3"), "\xC3\x83");                  // cut in the middle
    EXPECT_EQ(displayText("\xC0\xAF"), "\xC3\x80\xC2\xAF");      // too long a form of '/'
    EXPECT_EQ(displayText("\xED\xA0\x80"), "\xC3\xAD\xC2\xA0 "); // half of a surrogate pair
}

TEST(DisplayText, BlanksControlCharacters)
{
    EXPECT_EQ(displayText("a\x1B[31mb\n\x7F"), "a [31mb  ");
    EXPECT_EQ(displayText("a\xC2\x9B"
                          "b"),
              "a b"); // CSI as one character
    EXPECT_EQ(displayText("a\x9B"
                          "b"),
              "a b"); // the same in Latin-1
}

TEST(CharacterCount, CountsCharactersNotBytes)
{
    EXPECT_EQ(characterCount(""), 0U);
    EXPECT_EQ(characterCount("a\xC3\xA4\xE2\x82\xAC"), 3U);
}

TEST(Fitted, CutsAndFillsToAWidthInCharacters)
{
    EXPECT_EQ(fitted("abc", 5), "abc  ");
    EXPECT_EQ(fitted("abc", 2), "ab");
    EXPECT_EQ(fitted("\xC3\xA4\xC3\xB6", 1), "\xC3\xA4");
    EXPECT_EQ(fitted("\xC3\xA4", 3), "\xC3\xA4  ");
    EXPECT_EQ(fitted("", 0), "");
}

TEST(Wrapped, BreaksAtBlanks)
{
    EXPECT_EQ(wrapped("Number of frames per sequence", 10),
              (std::vector<std::string>{"Number of", "frames per", "sequence"}));
    EXPECT_EQ(wrapped("two words", 9), (std::vector<std::string>{"two words"}));
    EXPECT_TRUE(wrapped("", 10).empty());
}

TEST(Wrapped, CutsAWordThatIsLongerThanALine)
{
    EXPECT_EQ(wrapped("abcdefgh ij", 5), (std::vector<std::string>{"abcde", "fgh", "ij"}));
    EXPECT_TRUE(wrapped("abc", 0).empty());
}

} // namespace
} // namespace gige::ui
