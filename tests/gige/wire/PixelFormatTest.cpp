#include "PixelFormat.h"

#include <gtest/gtest.h>

using namespace gige::wire;

namespace
{

TEST(PixelFormat, CodeTellsTheBits)
{
    EXPECT_EQ(bitsPerPixel(kPixelMono8), 8U);
    EXPECT_EQ(bitsPerPixel(0x010C0006), 12U); // Mono12Packed
    EXPECT_EQ(lineBytes(kPixelMono8, 1280), 1280U);
    EXPECT_EQ(lineBytes(0x010C0047, 3), 5U); // Mono12p: 36 bits
    EXPECT_EQ(lineBytes(0x01010037, 9), 2U); // Mono1p
    EXPECT_EQ(lineBytes(0x02180014, 4), 12U);
}

} // namespace
