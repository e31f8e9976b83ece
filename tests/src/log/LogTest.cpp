// The bytes of debug lines, whatever they say.
#include "GrabberTest.h"

namespace
{

using LogTest = InitializedGrabberTest;

TEST_F(LogTest, LinesEndWithCarriageReturnAndLineFeed)
{
    expSetExposureTime(640, kCamera);
    EXPECT_EQ(s.takeLog(), Texts{"-- GEN setExposureTime 640\r\n"});
}

TEST_F(LogTest, TextsAreCutAt997Characters)
{
    const std::string start = "setStreamParameter ";
    expSetStreamParam(std::string(2000, 'n').c_str(), 5, kCamera);
    EXPECT_EQ(s.takeLog(), Texts{start + std::string(997 - start.size(), 'n') + "\r\n"});
}

TEST_F(LogTest, ATextOf997CharactersIsNotCut)
{
    const std::string name(997 - std::string("setStreamParameter  5").size(), 'n');
    expSetStreamParam(name.c_str(), 5, kCamera);
    EXPECT_EQ(s.takeLog(), Texts{"setStreamParameter " + name + " 5\r\n"});
}

TEST_F(LogTest, ATextOf998CharactersLosesItsLast)
{
    const std::string name(998 - std::string("setStreamParameter  42").size(), 'n');
    expSetStreamParam(name.c_str(), 42, kCamera);
    EXPECT_EQ(s.takeLog(), Texts{"setStreamParameter " + name + " 4\r\n"});
}

TEST_F(LogTest, WhiteSpaceBeforeTheCutIsStripped)
{
    expSetStreamParam(("name" + std::string(2000, '\t')).c_str(), 5, kCamera);
    EXPECT_EQ(s.takeLog(), Texts{"setStreamParameter name\r\n"});
}

TEST_F(LogTest, EveryKindOfTrailingWhiteSpaceIsStripped)
{
    expSetStreamParam(("name \t\n\v\f\r" + std::string(2000, ' ')).c_str(), 5, kCamera);
    EXPECT_EQ(s.takeLog(), Texts{"setStreamParameter name\r\n"});
}

TEST_F(LogTest, WhiteSpaceWithinATextStays)
{
    expSetStreamParam(" a\nb ", 5, kCamera);
    EXPECT_EQ(s.takeLog(), Texts{"setStreamParameter  a\nb  5\r\n"});
}

TEST_F(LogTest, AFormatsOwnLineFeedIsStripped)
{
    TelvoConnectionSettings settings{};
    settings.useSettings = 1;
    settings.defaultInterPacketDelay = 1500;
    initialize(settings);
    EXPECT_EQ(s.takeLog().front(),
              "----------------------------> Set interpacket delay = 1500\r\n");
}

TEST_F(LogTest, PercentSignsOfTheHostAreText)
{
    expSetStreamParam("%s%n%d", 5, kCamera);
    EXPECT_EQ(s.takeLog(), Texts{"setStreamParameter %s%n%d 5\r\n"});
}

TEST_F(LogTest, BytesAbove127PassUnchanged)
{
    expSetStreamParam("Vorg\xE4nger", 5, kCamera);
    EXPECT_EQ(s.takeLog(), Texts{"setStreamParameter Vorg\xE4nger 5\r\n"});
}

} // namespace
