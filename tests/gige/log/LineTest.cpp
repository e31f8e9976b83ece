#include "Line.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace
{

using gige::log::Line;

TEST(Line, TakesTextsAndNumbers)
{
    Line line("lost ");
    line << -3 << ", " << std::numeric_limits<std::uint64_t>::max() << Line(" packets");
    EXPECT_EQ(line.view(), "lost -3, 18446744073709551615 packets");
    EXPECT_FALSE(line.empty());
    EXPECT_TRUE(Line().empty());
}

TEST(Line, IsCutWhereItsRoomEnds)
{
    Line line(std::string(499, 'x'));
    line << "yz" << 12;
    EXPECT_EQ(line.view(), std::string(499, 'x') + 'y');
}

} // namespace
