#include "AccessGuard.h"

#include <gtest/gtest.h>

namespace
{

using telvo::AccessGuard;

constexpr const char* kToken = "0123456789abcdef0123456789abcdef";

TEST(AccessGuard, KnowsThisMachinesOwnNames)
{
    const AccessGuard guard(8400, "");
    EXPECT_TRUE(guard.isOwnHost("127.0.0.1:8400"));
    EXPECT_TRUE(guard.isOwnHost("localhost:8400"));
    EXPECT_TRUE(guard.isOwnHost("LocalHost:8400"));
    EXPECT_TRUE(guard.isOwnHost("[::1]:8400"));
}

TEST(AccessGuard, RefusesEveryOtherNameThatLeadsHere)
{
    const AccessGuard guard(8400, "");
    for (const char* const host :
         {"", "evil.example:8400", "127.0.0.1", "127.0.0.1:8401", "127.0.0.1:84000",
          "127.0.0.1:", "127.0.0.1.evil.example:8400", "localhost.evil.example:8400",
          "evil.example@127.0.0.1:8400", "192.168.0.1:8400", "[::2]:8400", ":8400",
          "127.0.0.1:8400:8400"}) {
        EXPECT_FALSE(guard.isOwnHost(host)) << host;
    }
}

TEST(AccessGuard, LeavesOutTheUsualPortAsBrowsersDo)
{
    const AccessGuard guard(80, "");
    EXPECT_TRUE(guard.isOwnHost("localhost"));
    EXPECT_TRUE(guard.isOwnHost("localhost:80"));
    EXPECT_FALSE(guard.isOwnHost("localhost:8400"));
}

TEST(AccessGuard, GoesByAddressesWhereItDemandsAToken)
{
    const AccessGuard guard(8400, kToken);
    EXPECT_TRUE(guard.isOwnHost("192.168.0.17:8400"));
    EXPECT_TRUE(guard.isOwnHost("[fe80::1]:8400"));
    EXPECT_TRUE(guard.isOwnHost("127.0.0.1:8400"));
    for (const char* const host :
         {"evil.example:8400", "1.2.3.4.evil.example:8400", "1.2.3:8400", "1.2.3.4.5:8400",
          "1.2.3.x:8400", "1..3.4:8400", "1.2.3.4444:8400", "[evil]:8400", "[]:8400"}) {
        EXPECT_FALSE(guard.isOwnHost(host)) << host;
    }
}

TEST(AccessGuard, TakesTheOriginOfTheRequestsOwnHostOnly)
{
    const AccessGuard guard(8400, "");
    EXPECT_TRUE(guard.isOwnOrigin("http://127.0.0.1:8400", "127.0.0.1:8400"));
    EXPECT_TRUE(guard.isOwnOrigin("http://localhost:8400", "LOCALHOST:8400"));
    for (const char* const origin :
         {"", "null", "http://evil.example", "https://127.0.0.1:8400", "http://127.0.0.1:8401",
          "http://127.0.0.1", "http://localhost:8400", "http://127.0.0.1:8400.evil.example"}) {
        EXPECT_FALSE(guard.isOwnOrigin(origin, "127.0.0.1:8400")) << origin;
    }
}

TEST(AccessGuard, FindsTheTokenAmongCookies)
{
    const AccessGuard guard(8400, kToken);
    const std::string cookie = std::string("telvo-panel-token=") + kToken;
    EXPECT_TRUE(guard.hasToken(cookie));
    EXPECT_TRUE(guard.hasToken("a=b; " + cookie + "; c=d"));
    EXPECT_TRUE(guard.hasToken("telvo-panel-token=wrong;" + cookie));
    for (const std::string& cookies :
         {std::string(), std::string("telvo-panel-token="), cookie + "0", "x" + cookie,
          cookie.substr(0, cookie.size() - 1), std::string(";;;"),
          std::string("telvo-panel-token=00000000000000000000000000000000")}) {
        EXPECT_FALSE(guard.hasToken(cookies)) << cookies;
    }
}

TEST(AccessGuard, HasNoTokenThatAnEmptyTextWouldBe)
{
    const AccessGuard guard(8400, "");
    EXPECT_FALSE(guard.needsToken());
    EXPECT_FALSE(guard.isToken(""));
}

TEST(AccessGuard, MakesTokensOf128BitsThatDiffer)
{
    const std::string token = telvo::makeToken();
    EXPECT_EQ(token.size(), 32U);
    EXPECT_EQ(token.find_first_not_of("0123456789abcdef"), std::string::npos);
    EXPECT_NE(token, telvo::makeToken());
}

} // namespace
