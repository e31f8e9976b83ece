#include "Windows1252.h"

#include <gtest/gtest.h>

namespace
{

using telvo::utf8FromWindows1252;

TEST(Windows1252, LeavesAsciiAlone)
{
    EXPECT_EQ(utf8FromWindows1252("Frame Nr. 5\r\n"), "Frame Nr. 5\r\n");
}

TEST(Windows1252, ConvertsLetters)
{
    EXPECT_EQ(utf8FromWindows1252("Vorg\xE4"
                                  "nger"),
              "Vorg\xC3\xA4"
              "nger");
    EXPECT_EQ(utf8FromWindows1252("\xFF"), "\xC3\xBF");
}

TEST(Windows1252, ConvertsItsOwnSigns)
{
    EXPECT_EQ(utf8FromWindows1252("\x80"), "\xE2\x82\xAC"); // euro
    EXPECT_EQ(utf8FromWindows1252("\x91"), "\xE2\x80\x98"); // left quotation mark
    EXPECT_EQ(utf8FromWindows1252("\x8A"), "\xC5\xA0");     // S with caron
    EXPECT_EQ(utf8FromWindows1252("\x9F"), "\xC5\xB8");     // Y with diaeresis
}

TEST(Windows1252, ReplacesUndefinedBytes)
{
    for (const char* byte : {"\x81", "\x8D", "\x8F", "\x90", "\x9D"}) {
        EXPECT_EQ(utf8FromWindows1252(byte), "\xEF\xBF\xBD");
    }
}

} // namespace
