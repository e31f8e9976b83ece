#include "FileFormat.h"

#include <gtest/gtest.h>

namespace
{

using namespace telvo;

TEST(FormatByName, KnowsTheUsualEnds)
{
    EXPECT_EQ(formatByName("a.tif"), "tiff");
    EXPECT_EQ(formatByName("{name}/b.2.tiff"), "tiff");
    EXPECT_EQ(formatByName("a.mkv"), "mkv");
    EXPECT_EQ(formatByName("a.mp4"), "mp4");
    EXPECT_EQ(formatByName("pictures.png"), "png");
    for (const char* path : {"a.raw", "a", "a.tif/b", ".tif", "/dev/stdout", "a.dat", ""}) {
        EXPECT_EQ(formatByName(path), "raw") << path;
    }
}

} // namespace
