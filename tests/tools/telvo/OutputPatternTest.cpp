#include "OutputPattern.h"
#include "ToolError.h"

#include <gtest/gtest.h>

namespace
{

using namespace telvo;

CameraAddress camera(const std::string& name)
{
    CameraAddress camera{.mac = "", .ip = "10.0.0.7", .onLoopback = false, .device = {}};
    camera.device.info.serialNumber = "S1";
    camera.device.info.userDefinedName = name;
    return camera;
}

TEST(OutputPattern, HasTheCamerasOwn)
{
    EXPECT_EQ(pathFor("out/{name}-{serial}-{ip}.tif", camera("left")), "out/left-S1-10.0.0.7.tif");
    EXPECT_EQ(pathFor("{name}/{name}", camera("left")), "left/left");
    EXPECT_EQ(pathFor("plain", camera("left")), "plain");
}

TEST(OutputPattern, KeepsToOneFileNameWhateverACameraIsCalled)
{
    EXPECT_EQ(pathFor("out/{name}.tif", camera("../a:b\n")), "out/.._a_b_.tif");
    EXPECT_EQ(pathFor("{name}", camera("{name}")), "{name}");
}

TEST(OutputPattern, KeepsLettersOfEveryLanguage)
{
    EXPECT_EQ(pathFor("{name}.tif", camera("K\xC3\xBC")), std::filesystem::path(u8"K\u00FC.tif"));
}

TEST(OutputPattern, RefusesOtherWordsInBraces)
{
    EXPECT_NO_THROW(requireKnownPlaces("{ip}/{serial}-{name}{0}{.raw"));
    EXPECT_THROW(requireKnownPlaces("{ip}/{nme}.raw"), UsageError);
    EXPECT_THROW(requireKnownPlaces("{}"), UsageError);
}

TEST(OutputPattern, IsKnownByItsPlaces)
{
    EXPECT_TRUE(isPattern("a/{ip}"));
    EXPECT_FALSE(isPattern("a/{port}"));
}

} // namespace
