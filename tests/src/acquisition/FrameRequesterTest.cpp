#include "FrameRequester.h"

#include <gtest/gtest.h>

namespace
{

TEST(SerialFrameRequest, NamesTheLastFrameThenTheFirst)
{
    EXPECT_EQ(serialFrameRequest({.first = 0, .last = 999}),
              ":GW07b0000003E7:GW07a800000000:GW07f8");
    EXPECT_EQ(serialFrameRequest({.first = 0x00ABCDEF, .last = 0x01FEDCBA}),
              ":GW07b001FEDCBA:GW07a800ABCDEF:GW07f8");
}

TEST(SerialFrameRequest, Has37Characters)
{
    EXPECT_EQ(serialFrameRequest({.first = 0, .last = 0}).size(), 37U);
    EXPECT_EQ(serialFrameRequest({.first = 0x7FFFFFF0, .last = 0x7FFFFFFF}).size(), 37U);
}

} // namespace
