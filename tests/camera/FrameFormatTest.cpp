#include "FrameStamp.h"
#include "Recorder.h"
#include "RecordingInfo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace camera
{
namespace
{

using testing::ElementsAre;

TEST(FrameHeader, HasTheHostsLayout)
{
    const FrameStamp stamp{.sequence = 2,
                           .number = 0x00012345,
                           .time = 0x00AABBCCDDEEFF11,
                           .flags = kFlagTrigger | kFlagRecording,
                           .last = true};
    EXPECT_THAT(encode(stamp), ElementsAre(0x45, 0x23, 0x01, 0x00, 0x45, 0x23, 0x02, 0x05, 0x11,
                                           0xFF, 0xEE, 0xDD, 0xCC, 0xBB, 0xAA, 0x01));
}

TEST(FrameHeader, CounterWrapsFrom65535To0)
{
    EXPECT_THAT(encode(FrameStamp{.number = 65535}),
                ElementsAre(0xFF, 0xFF, 0, 0, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(encode(FrameStamp{.number = 65536}),
                ElementsAre(0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST(FrameHeader, PacksTheTimeOfDay)
{
    using namespace std::chrono;
    // 2024-03-01 is day 61 of a leap year.
    const sys_time<microseconds> time =
        sys_days{2024y / March / 1} + 13h + 14min + 15s + microseconds(161718);
    EXPECT_EQ(irigTime(time),
              161718ULL | (15ULL << 20) | (14ULL << 26) | (13ULL << 32) | (61ULL << 37));
}

TEST(FrameHeader, TimeIsMicrosecondsSincePowerOn)
{
    EXPECT_EQ(headerTime(std::chrono::milliseconds(1500), false), 1'500'000U);
}

std::uint32_t descriptor(const RecordingInfo& info)
{
    const auto bytes = encode(info);
    return std::uint32_t{bytes[96]} | (std::uint32_t{bytes[97]} << 8) |
           (std::uint32_t{bytes[98]} << 16) | (std::uint32_t{bytes[99]} << 24);
}

TEST(RecordingInfo, DescribesASingleRecording)
{
    // Width 1280: field 79. Height 1024: field 1023.
    EXPECT_EQ(descriptor({.width = 1280, .height = 1024}), (79U << 8) | (1023U << 15));
}

TEST(RecordingInfo, DescribesSequences)
{
    const auto ofSequences = [](std::uint32_t count) {
        return descriptor({.width = 16, .height = 1, .continuous = true, .sequences = count});
    };
    EXPECT_EQ(ofSequences(1), 0x00000002U);
    EXPECT_EQ(ofSequences(2), 0x80000002U);
    EXPECT_EQ(ofSequences(4), 0x90000002U);
    EXPECT_EQ(ofSequences(8), 0xA0000002U);
    EXPECT_EQ(ofSequences(16), 0xB0000002U);
}

TEST(RecordingInfo, HoldsStopPointersFromByte32)
{
    RecordingInfo info{};
    info.stopPointers[0] = 0x01020304;
    info.stopPointers[15] = 0xFFFFFFFF; // more than 29 bits
    const auto bytes = encode(info);
    EXPECT_EQ(bytes[31], 0);
    EXPECT_THAT((std::array{bytes[32], bytes[33], bytes[34], bytes[35]}), ElementsAre(4, 3, 2, 1));
    EXPECT_THAT((std::array{bytes[92], bytes[93], bytes[94], bytes[95]}),
                ElementsAre(0xFF, 0xFF, 0xFF, 0x1F));
}

} // namespace
} // namespace camera
