// What the camera writes into its frames, and the serial command that asks for them.
#include "FrameCounterCheck.h"
#include "FrameHeader.h"
#include "FrameRequester.h"
#include "InfoFrame.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;
using Gap = FrameCounterCheck::Gap;

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

Bytes infoFrame(std::uint32_t descriptor)
{
    Bytes bytes(100);
    for (unsigned i = 0; i < 4; ++i) {
        bytes[96 + i] = static_cast<std::uint8_t>(descriptor >> 8 * i);
    }
    return bytes;
}

InfoFrame decoded(std::uint32_t descriptor)
{
    return decodeInfoFrame(infoFrame(descriptor)).value();
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

/// Frames of 256 bytes that hold nothing but their counters.
Bytes blockOf(const std::vector<std::uint16_t>& counters)
{
    Bytes block(counters.size() * 256);
    for (std::size_t i = 0; i < counters.size(); ++i) {
        block[i * 256 + 4] = static_cast<std::uint8_t>(counters[i]);
        block[i * 256 + 5] = static_cast<std::uint8_t>(counters[i] >> 8);
    }
    return block;
}

std::vector<Gap> check(FrameCounterCheck& counterCheck, const std::vector<std::uint16_t>& counters)
{
    const Bytes block = blockOf(counters);
    return counterCheck.check(BlockCounters(block, 256, counters.size()));
}

std::vector<Gap> check(const std::vector<std::uint16_t>& counters)
{
    FrameCounterCheck counterCheck;
    return check(counterCheck, counters);
}

TEST(FrameCounterCheck, AcceptsTheWrap)
{
    EXPECT_EQ(check({65534, 65535, 0, 1}), std::vector<Gap>{});
}

TEST(FrameCounterCheck, AcceptsWhateverFollows65535)
{
    EXPECT_EQ(check({65535, 7, 8}), std::vector<Gap>{});
}

TEST(FrameCounterCheck, FindsAMissingFrame)
{
    EXPECT_EQ(check({10, 12}), (std::vector<Gap>{{10, 12}}));
}

TEST(FrameCounterCheck, FindsARepeatedFrame)
{
    EXPECT_EQ(check({10, 10, 11}), (std::vector<Gap>{{10, 10}}));
}

TEST(FrameCounterCheck, AcceptsACounterOfZeroButNotWhatFollowsIt)
{
    EXPECT_EQ(check({10, 0, 5}), (std::vector<Gap>{{0, 5}}));
}

TEST(FrameCounterCheck, ComparesFrameZeroWithTheBlockBefore)
{
    FrameCounterCheck counterCheck;
    EXPECT_EQ(check(counterCheck, {500, 501}), std::vector<Gap>{});
    EXPECT_EQ(check(counterCheck, {502, 503}), std::vector<Gap>{});
    EXPECT_EQ(check(counterCheck, {505, 506}), (std::vector<Gap>{{503, 505}}));
}

TEST(BlockCounters, StepOneByteShortThroughFramesOfOddSize)
{
    Bytes block(3 * 255);
    block[4] = 1;
    block[254 + 4] = 2;
    block[508 + 4] = 3;
    const BlockCounters counters(block, 255, 3);
    ASSERT_EQ(counters.size(), 3U);
    EXPECT_EQ(counters[0], 1);
    EXPECT_EQ(counters[1], 2);
    EXPECT_EQ(counters[2], 3);
}

TEST(BlockCounters, LeaveOutFramesBehindTheBlock)
{
    EXPECT_EQ(BlockCounters(Bytes(600), 256, 5).size(), 3U); // of the third the counter is there
    EXPECT_EQ(BlockCounters(Bytes(600), 0, 5).size(), 0U);
    EXPECT_EQ(BlockCounters(Bytes(5), 256, 5).size(), 0U);
}

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
