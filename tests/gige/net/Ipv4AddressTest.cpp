#include "Ipv4Address.h"

#include <gtest/gtest.h>

using namespace gige::net;

namespace
{

TEST(Ipv4Address, IsReadAndWrittenAsDottedText)
{
    EXPECT_EQ(parseIpv4("127.0.0.11"), Ipv4Address{0x7F00000B});
    EXPECT_EQ(parseIpv4("255.255.255.255"), kLimitedBroadcast);
    EXPECT_EQ(parseIpv4("0.0.0.0"), kAnyAddress);
    EXPECT_EQ(toText(Ipv4Address{0x7F00010B}), "127.0.1.11");
    EXPECT_EQ(toText(Endpoint{{0x7F000001}, 3956}), "127.0.0.1:3956");
}

TEST(Ipv4Address, RefusesAnythingElse)
{
    for (const char* text :
         {"", "127", "127.0.0", "127.0.0.", "127.0.0.1.", "127.0.0.1.2", "256.0.0.1", "127..0.1",
          " 127.0.0.1", "127.0.0.1 ", "[127.0.0.1]", "+127.0.0.1", "-1.0.0.1", "0127.0.0.1",
          "127.0.0.x", "02:54:45:00:00:21"}) {
        EXPECT_FALSE(parseIpv4(text)) << text;
    }
}

} // namespace
