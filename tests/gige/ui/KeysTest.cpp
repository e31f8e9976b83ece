#include "Keys.h"

#include <gtest/gtest.h>

namespace gige::ui
{
namespace
{

Key character(const std::string& text)
{
    return {.code = KeyCode::Character, .text = text};
}

/// The keys in what a terminal has sent, after which nothing follows.
std::vector<Key> keysIn(std::string input)
{
    std::vector<Key> keys;
    while (const auto key = takeKey(input, true)) {
        keys.push_back(*key);
    }
    return keys;
}

std::vector<KeyCode> codesIn(const std::string& input)
{
    std::vector<KeyCode> codes;
    for (const Key& key : keysIn(input)) {
        codes.push_back(key.code);
    }
    return codes;
}

TEST(TakeKey, TakesCharactersOneByOne)
{
    EXPECT_EQ(keysIn("q5"), (std::vector{character("q"), character("5")}));
    EXPECT_TRUE(character("q").is('q'));
    EXPECT_FALSE(character("q").is('r'));
}

TEST(TakeKey, TakesACharacterOfSeveralBytesWhole)
{
    EXPECT_EQ(keysIn("\xC3\xA4\xE2\x82\xAC"),
              (std::vector{character("\xC3\xA4"), character("\xE2\x82\xAC")}));
    std::string begun = "\xE2\x82";
    EXPECT_EQ(takeKey(begun, false), std::nullopt);
    EXPECT_EQ(takeKey(begun, true), character("\xE2\x82"));
}

TEST(TakeKey, KnowsTheKeysThatMoveInBothForms)
{
    EXPECT_EQ(codesIn("\x1B[A\x1BOA\x1B[B\x1BOB"),
              (std::vector{KeyCode::Up, KeyCode::Up, KeyCode::Down, KeyCode::Down}));
    EXPECT_EQ(codesIn("\x1B[5~\x1B[6~\x1B[H\x1B[F\x1B[1~\x1B[4~"),
              (std::vector{KeyCode::PageUp, KeyCode::PageDown, KeyCode::Home, KeyCode::End,
                           KeyCode::Home, KeyCode::End}));
}

TEST(TakeKey, TakesAnUnknownSequenceAsOneKeyThatDoesNothing)
{
    EXPECT_EQ(codesIn("\x1B[1;5Cq"), (std::vector{KeyCode::Unknown, KeyCode::Character}));
    EXPECT_EQ(codesIn("\x1B[1;5"), (std::vector{KeyCode::Unknown}));
}

TEST(TakeKey, WaitsForTheRestOfASequence)
{
    for (const char* const begun : {"\x1B", "\x1B[", "\x1BO", "\x1B[5"}) {
        std::string input = begun;
        EXPECT_EQ(takeKey(input, false), std::nullopt);
        EXPECT_EQ(input, begun);
    }
}

TEST(TakeKey, TakesALoneEscapeForTheKey)
{
    EXPECT_EQ(codesIn("\x1B"), (std::vector{KeyCode::Escape}));
    EXPECT_EQ(codesIn("\x1Bq"), (std::vector{KeyCode::Escape, KeyCode::Character}));
}

TEST(TakeKey, KnowsEnterBackspaceAndCtrlC)
{
    EXPECT_EQ(codesIn("\r\n\x7F\x08\x03\x04"),
              (std::vector{KeyCode::Enter, KeyCode::Enter, KeyCode::Backspace, KeyCode::Backspace,
                           KeyCode::Interrupt, KeyCode::Interrupt}));
    EXPECT_EQ(codesIn("\t"), (std::vector{KeyCode::Unknown}));
}

TEST(TakeKey, TakesNothingOfNothing)
{
    std::string nothing;
    EXPECT_EQ(takeKey(nothing, true), std::nullopt);
}

} // namespace
} // namespace gige::ui
