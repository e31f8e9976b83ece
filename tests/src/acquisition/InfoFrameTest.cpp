#include "InfoFrame.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;

Bytes encoded(std::uint32_t descriptor)
{
    Bytes bytes(100);
    for (unsigned i = 0; i < 4; ++i) {
        bytes[96 + i] = static_cast<std::uint8_t>(descriptor >> 8 * i);
    }
    return bytes;
}

InfoFrame decoded(std::uint32_t descriptor)
{
    return decodeInfoFrame(encoded(descriptor)).value();
}

TEST(InfoFrame, ReadsTheCamerasBytes)
{
    Bytes bytes(100, 0xFF); // the first 32 bytes tell nothing
    for (std::size_t i = 32; i < 96; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i);
    }
    bytes[96] = 0x02;
    bytes[97] = 0xCF;
    bytes[98] = 0xFF;
    bytes[99] = 0x91;
    EXPECT_EQ(decodeInfoFrame(bytes),
              (InfoFrame{.width = 1280,
                         .height = 1024,
                         .recordMode = 1,
                         .sequences = 4,
                         .stopPointers = {0x03222120, 0x07262524, 0x0B2A2928, 0x0F2E2D2C,
                                          0x13323130, 0x17363534, 0x1B3A3938, 0x1F3E3D3C,
                                          0x03424140, 0x07464544, 0x0B4A4948, 0x0F4E4D4C,
                                          0x13525150, 0x17565554, 0x1B5A5958, 0x1F5E5D5C}}));
}

TEST(InfoFrame, NeedsAHundredBytes)
{
    EXPECT_EQ(decodeInfoFrame(Bytes(99)), std::nullopt);
}

TEST(InfoFrame, CountsTheWidthFromSixteen)
{
    EXPECT_EQ(decoded(0x00000000).width, 16U);
    EXPECT_EQ(decoded(0x00007F00).width, 2048U);
}

TEST(InfoFrame, CountsTheHeightFromOne)
{
    EXPECT_EQ(decoded(0x00000000).height, 1U);
    EXPECT_EQ(decoded(0x7FFU << 15).height, 2048U);
}

TEST(InfoFrame, TakesBit1ForTheRecordMode)
{
    EXPECT_EQ(decoded(0x00000002).recordMode, 1U);
    EXPECT_EQ(decoded(0xFFFFFFFD).recordMode, 0U);
}

TEST(InfoFrame, KnowsEverySequenceCode)
{
    constexpr std::array<std::uint32_t, 8> kSequences{2, 4, 8, 16, 1, 1, 1, 1};
    for (std::uint32_t code = 0; code < 8; ++code) {
        EXPECT_EQ(decoded(0x80000002 | code << 28).sequences, kSequences[code]) << code;
    }
}

TEST(InfoFrame, HasOneSequenceWhateverTheCodeWithoutRecordModeOrValidBit)
{
    for (std::uint32_t code = 0; code < 8; ++code) {
        EXPECT_EQ(decoded(0x80000000 | code << 28).sequences, 1U) << code;
        EXPECT_EQ(decoded(0x00000002 | code << 28).sequences, 1U) << code;
        EXPECT_EQ(decoded(0x00000000 | code << 28).sequences, 1U) << code;
    }
}

} // namespace
