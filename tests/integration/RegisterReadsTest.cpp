// What exports that look at limits cost: each command is a round trip to the camera.

#include "Host.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

using RangeExport = std::int32_t (*)(std::uint32_t*, std::uint32_t*, std::uint32_t*, std::int32_t);
using ClampedWrite = std::int32_t (*)(std::uint32_t*, std::int32_t);

class RegisterReads : public testing::Test
{
  protected:
    void SetUp() override
    {
        ASSERT_FALSE(camera.start());
        TelvoConnectionSettings settings = fastSettings();
        settings.heartbeatTimeout = 60'000; // heartbeats are commands, too
        settings.heartbeatInterval = 20'000;
        host.open(camera, settings);
    }

    /// Commands that the camera gets; the least of some calls, since a heartbeat may fall into one.
    template <typename Call>
    std::uint64_t commandsOf(Call call)
    {
        std::uint64_t least = 1000;
        for (int i = 0; i < 3; ++i) {
            const std::uint64_t before = camera.log().counters().commands;
            EXPECT_EQ(call(), 0);
            least = std::min(least, camera.log().counters().commands - before);
        }
        return least;
    }

    std::uint64_t commandsOfRange(RangeExport function)
    {
        return commandsOf([&] {
            std::uint32_t minimum = 0;
            std::uint32_t maximum = 0;
            std::uint32_t value = 0;
            return function(&minimum, &maximum, &value, host.id());
        });
    }

    std::uint64_t commandsOfWrite(ClampedWrite function, std::uint32_t wanted)
    {
        return commandsOf([&] {
            std::uint32_t value = wanted;
            return function(&value, host.id());
        });
    }

    camera::VirtualCamera camera{preparedCamera()};
    Host host;
};

// This camera has its minima in the description, and its maxima in registers where they move.
TEST_F(RegisterReads, OfARangeAreTheValueAndTheLimitsThatAreInRegisters)
{
    EXPECT_EQ(commandsOfRange(expGetExposureTime), 2U);
    EXPECT_EQ(commandsOfRange(expGetFrameRate), 2U);
    EXPECT_EQ(commandsOfRange(expGetTrailerCounter), 2U);
    EXPECT_EQ(commandsOfRange(expGetBlacklevel), 1U);
    EXPECT_EQ(commandsOfRange(expGetMultipleSlopeDual), 1U);
    EXPECT_EQ(commandsOfRange(expGetMultipleSlopeTriple), 1U);
    EXPECT_EQ(commandsOfRange(expGetSingleSettingRecordBurstCnt), 1U);
    EXPECT_EQ(commandsOf([this] {
                  double minimum = 0;
                  double maximum = 0;
                  double value = 0;
                  return expGetGainRaw(&minimum, &maximum, &value, host.id());
              }),
              1U);
}

TEST_F(RegisterReads, OfAClampedWriteAreTheMaximumForTheHostAndForTheCheck)
{
    EXPECT_EQ(commandsOfWrite(expSetCurrentStreamSequence, 0), 3U); // with the write itself
    // These ask besides whether the camera streams, which locks them.
    EXPECT_EQ(commandsOfWrite(expSetWidth, 640), 4U);
    EXPECT_EQ(commandsOfWrite(expSetHeight, 480), 4U);
    EXPECT_EQ(commandsOfWrite(expSetOffsetX, 0), 4U);
    EXPECT_EQ(commandsOfWrite(expSetOffsetY, 0), 4U);
}

} // namespace
