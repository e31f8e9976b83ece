#include "GeometryCache.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

namespace
{

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

std::uint32_t frameSize(std::int32_t width, std::int32_t height)
{
    GeometryCache geometry;
    geometry.width = width;
    geometry.height = height;
    return geometry.frameSize();
}

TEST(GeometryCache, HasNoFrameThat32BitsCannotCount)
{
    EXPECT_EQ(frameSize(1280, 1024), 1'310'720U);
    EXPECT_EQ(frameSize(65'535, 65'537), 4'294'967'295U);
    EXPECT_EQ(frameSize(65'536, 65'536), 0U);
    EXPECT_EQ(frameSize(65'537, 65'537), 0U); // 131,073 when cut to 32 bits
    EXPECT_EQ(frameSize(kHighest, kHighest), 0U);
    EXPECT_EQ(frameSize(0, 1024), 0U);
    EXPECT_EQ(frameSize(-65'536, -65'536), 0U);
    EXPECT_EQ(frameSize(kLowest, kLowest), 0U);
}

} // namespace
