#include "LinkPacing.h"

#include "ModeTest.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace
{

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

// As constants, since none with an overflow would compile.

TEST(RaisedInterPacketDelay, IsDefinedForEveryNumber)
{
    constexpr std::int32_t kFallback = 40;
    constexpr std::int32_t fromZero = raisedInterPacketDelay(0, kFallback);
    constexpr std::int32_t fromBelowTheLimit = raisedInterPacketDelay(4800, kFallback);
    constexpr std::int32_t beyondTheLimit = raisedInterPacketDelay(4801, kFallback);
    constexpr std::int32_t fromTheHighest = raisedInterPacketDelay(kHighest, kFallback);
    constexpr std::int32_t fromJustBelow = raisedInterPacketDelay(kHighest - 199, kFallback);
    constexpr std::int32_t fromTheLowest = raisedInterPacketDelay(kLowest, kFallback);
    EXPECT_EQ(fromZero, 200);
    EXPECT_EQ(fromBelowTheLimit, 5000);
    EXPECT_EQ(beyondTheLimit, 40);
    EXPECT_EQ(fromTheHighest, 40);
    EXPECT_EQ(fromJustBelow, 40);
    EXPECT_EQ(fromTheLowest, -2'147'483'448);
}

TEST(RaisedDataRate, IsDefinedForEveryNumber)
{
    constexpr std::int32_t fromBelowTheLimit = raisedDataRate(14, 3);
    constexpr std::int32_t beyondTheLimit = raisedDataRate(15, 3);
    constexpr std::int32_t fromTheHighest = raisedDataRate(kHighest, 3);
    constexpr std::int32_t fromTheLowest = raisedDataRate(kLowest, 3);
    EXPECT_EQ(fromBelowTheLimit, 15);
    EXPECT_EQ(beyondTheLimit, 3);
    EXPECT_EQ(fromTheHighest, 3);
    EXPECT_EQ(fromTheLowest, -2'147'483'647);
}

class PacingLimitsTest : public GrabberTest
{
};

TEST_F(PacingLimitsTest, AHostsLargestNumbersAreKeptThroughStreamErrors)
{
    TelvoConnectionSettings settings{};
    settings.useSettings = 1;
    settings.defaultInterPacketDelay = 0x7FFFFFFF;
    settings.outputDataRate = 0x7FFFFFFF;
    ASSERT_EQ(connect(), 0);
    ASSERT_EQ(initialize(settings), 0);
    ASSERT_EQ(expStartLiveMode(kCamera), 0);
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    s.setTick(5000);
    s.forget();
    s.pipelineFeed().feedError(Code::ResendsFailure);
    s.pipelineFeed().feedError(Code::ImageError);
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    const Texts calls = s.takeWorkerCalls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "GevSCPD.SetValue 2147483647"), 1);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "InternalDataRate.SetValue 15"), 1);
}

} // namespace
