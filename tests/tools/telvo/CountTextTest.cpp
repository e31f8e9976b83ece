#include "CountText.h"

#include <gtest/gtest.h>

namespace
{

using namespace telvo;

TEST(CountText, HasTheSingularForOneAlone)
{
    EXPECT_EQ(countText(0, "frame"), "0 frames");
    EXPECT_EQ(countText(1U, "frame"), "1 frame");
    EXPECT_EQ(countText(2L, "packet"), "2 packets");
}

} // namespace
