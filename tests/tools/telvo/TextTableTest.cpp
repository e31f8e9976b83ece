#include "TextTable.h"

#include <gtest/gtest.h>

namespace
{

using telvo::formatTable;

TEST(TextTable, AlignsItsColumns)
{
    EXPECT_EQ(formatTable({{"IP", "MODEL"}, {"127.0.0.11", "Quor6"}, {"10.0.0.1", ""}}),
              "IP          MODEL\n"
              "127.0.0.11  Quor6\n"
              "10.0.0.1\n");
}

TEST(TextTable, TakesRowsOfDifferentLengths)
{
    EXPECT_EQ(formatTable({{"a"}, {"bb", "c"}}), "a\nbb  c\n");
    EXPECT_EQ(formatTable({}), "");
}

TEST(TextTable, ShowsNoControlCharacters)
{
    EXPECT_EQ(formatTable({{"a\x1B[2J\r\n\x7F", "\xC3\xA4"}}), "a?[2J???  \xC3\xA4\n");
}

} // namespace
