#include "FrameCounterTotal.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

namespace
{

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

TEST(FrameCounterTotal, CountsOnBeyond31Bits)
{
    FrameCounterTotal total(100'000);
    std::int32_t frames = 0;
    for (int wrap = 0; wrap < 32'770; ++wrap) {
        total.add(60'000);
        frames = total.add(0);
    }
    EXPECT_EQ(static_cast<std::uint32_t>(frames), 2'147'581'950U); // 32770 * 65535
}

TEST(FrameCounterTotal, TakesAnyNumberOfFrames)
{
    EXPECT_EQ(FrameCounterTotal(kHighest).add(1), 1);
    EXPECT_EQ(FrameCounterTotal(kLowest).add(1), 1);
}

} // namespace
