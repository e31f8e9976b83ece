#include "MacAddress.h"

#include <gtest/gtest.h>

using namespace gige::wire;

namespace
{

constexpr MacAddress kMac{{0x02, 0x54, 0x45, 0x00, 0xAB, 0xCD}};

TEST(MacAddress, IsReadWithEitherSeparatorAndAnyCase)
{
    EXPECT_EQ(parseMac("02:54:45:00:ab:cd"), kMac);
    EXPECT_EQ(parseMac("02-54-45-00-AB-CD"), kMac);
    EXPECT_EQ(parseMac("02:54:45:00:aB:Cd"), kMac);
}

TEST(MacAddress, IsWrittenInLowerCaseWithColons)
{
    EXPECT_EQ(toText(kMac), "02:54:45:00:ab:cd");
}

TEST(MacAddress, RefusesAnythingElse)
{
    for (const char* text :
         {"", "02:54:45:00:ab", "02:54:45:00:ab:cd:ef", "02:54-45:00:ab:cd", "02 54 45 00 ab cd",
          "0254:45:00:ab:cd:", "02:54:45:00:ab:cg", "02:54:45:00:ab:-1", "02:54:45:00:ab:+1",
          "02:54:45:00:ab: 1", "127.0.0.1"}) {
        EXPECT_FALSE(parseMac(text)) << text;
    }
}

} // namespace
