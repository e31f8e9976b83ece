#include "FrameHeader.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;

TEST(FrameHeader, ReadsTheCamerasBytes)
{
    const std::array<std::uint8_t, 16> frame{0xFF, 0xFF, 0xFF, 0xFF, 0x34, 0x12, 0xFF, 0x5A,
                                             0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF};
    EXPECT_EQ(decodeFrameHeader(frame),
              (FrameHeader{
                  .counter = 0x1234, .flags = 0xA5, .value = 0x00CDAB8967452301, .extra = 0xEF}));
}

TEST(FrameHeader, NeedsSixteenBytes)
{
    EXPECT_EQ(decodeFrameHeader(Bytes(15)), std::nullopt);
    EXPECT_NE(decodeFrameHeader(Bytes(16)), std::nullopt);
}

} // namespace
