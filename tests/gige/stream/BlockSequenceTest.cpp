#include "BlockSequence.h"

#include "TestBlocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gige::stream
{

namespace
{

using testing::ElementsAre;

std::vector<std::uint64_t> ids(const AssemblerBench& bench)
{
    std::vector<std::uint64_t> list;
    for (const Completed& one : bench.completed) {
        list.push_back(one.info.blockId);
    }
    return list;
}

TEST(BlockDistance, TakesTheShorterWayRoundOfStandardIds)
{
    EXPECT_EQ(blockDistance(1, 2, false), 1);
    EXPECT_EQ(blockDistance(2, 1, false), -1);
    EXPECT_EQ(blockDistance(65535, 1, false), 1);
    EXPECT_EQ(blockDistance(1, 65535, false), -1);
    EXPECT_EQ(blockDistance(65530, 5, false), 10);
    EXPECT_EQ(blockDistance(7, 7, false), 0);
}

TEST(BlockDistance, DoesNotWrapExtendedIds)
{
    EXPECT_EQ(blockDistance(65535, 1, true), -65534);
    EXPECT_EQ(blockDistance(65535, 65536, true), 1);
    EXPECT_EQ(blockDistance(1, 0x1000000000, true), 0xFFFFFFFFF);
}

TEST(BlockIds, WrapFrom65535To1)
{
    AssemblerBench bench;
    bench.queueBuffers(4);
    const TestBlock last{.id = 65535, .timestamp = 3};
    bench.feed(TestBlock{.id = 65534, .timestamp = 2});
    bench.feed(last, last.orderWithout({11}));
    bench.feed(TestBlock{.id = 1, .timestamp = 4});
    bench.feed(last, {11});
    bench.feed(TestBlock{.id = 2, .timestamp = 5});
    EXPECT_THAT(ids(bench), ElementsAre(65534U, 65535U, 1U, 2U));
    EXPECT_EQ(bench.assembler.statistics().blocksReceived, 4U);
}

TEST(BlockIds, MayStartAnywhereAndSkip)
{
    AssemblerBench bench;
    bench.queueBuffers(3);
    bench.feed(TestBlock{.id = 65401, .timestamp = 1});
    bench.feed(TestBlock{.id = 65410, .timestamp = 2});
    bench.feed(TestBlock{.id = 30, .timestamp = 3});
    EXPECT_THAT(ids(bench), ElementsAre(65401U, 65410U, 30U));
}

TEST(BlockIds, LatePacketsAreDropped)
{
    AssemblerBench bench;
    bench.queueBuffers(4);
    for (const std::uint64_t id : {101U, 102U, 103U}) {
        bench.feed(TestBlock{.id = id});
    }
    bench.feed(TestBlock{.id = 101});
    bench.feed(TestBlock{.id = 103}, {0, 5, 11});
    bench.feed(TestBlock{.id = 3}, {5});
    EXPECT_EQ(bench.completed.size(), 3U);
    EXPECT_EQ(bench.assembler.statistics().packetsIgnored, 12U + 3 + 1);
}

TEST(BlockIds, FarBackMeansThatTheDeviceRestarted)
{
    AssemblerBench bench;
    bench.queueBuffers(3);
    bench.feed(TestBlock{.id = 200});
    bench.feed(TestBlock{.id = 201}, {0, 1});
    bench.feed(TestBlock{.id = 1});
    EXPECT_THAT(ids(bench), ElementsAre(200U, 201U, 1U));
    EXPECT_THAT(bench.results(),
                ElementsAre(BlockResult::Ok, BlockResult::ImageError, BlockResult::Ok));
}

TEST(BlockIds, NewerTimestampUnderAnOldIdMeansThatTheDeviceRestarted)
{
    AssemblerBench bench;
    bench.queueBuffers(4);
    bench.feed(TestBlock{.id = 4, .timestamp = 1000});
    bench.feed(TestBlock{.id = 5, .timestamp = 2000});
    bench.feed(TestBlock{.id = 1, .timestamp = 3000});
    bench.feed(TestBlock{.id = 2, .timestamp = 4000});
    EXPECT_THAT(ids(bench), ElementsAre(4U, 5U, 1U, 2U));
}

TEST(BlockIds, SameIdForEveryAcquisitionIsTaken)
{
    AssemblerBench bench;
    bench.queueBuffers(3);
    for (const std::uint64_t timestamp : {1000U, 2000U, 3000U}) {
        bench.feed(TestBlock{.id = 1, .timestamp = timestamp});
    }
    EXPECT_EQ(bench.assembler.statistics().blocksReceived, 3U);
}

TEST(BlockIds, NewLeaderUnderTheIdOfAnOpenBlockEndsIt)
{
    AssemblerBench bench;
    bench.queueBuffers(2);
    bench.feed(TestBlock{.id = 1, .timestamp = 1000}, {0, 1, 2, 3});
    bench.feed(TestBlock{.id = 1, .timestamp = 2000});
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::ImageError, BlockResult::Ok));
}

TEST(BlockIds, OldIdAfterALongSilenceIsTaken)
{
    AssemblerBench bench;
    bench.queueBuffers(2);
    bench.feed(TestBlock{.id = 5, .timestamp = 7});
    bench.advance(kRestartSilence);
    bench.feed(TestBlock{.id = 1, .timestamp = 7}, {1, 0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    EXPECT_THAT(ids(bench), ElementsAre(5U, 1U));
    EXPECT_EQ(bench.assembler.statistics().blocksReceived, 2U);
}

TEST(BlockIds, RestOfABlockAfterAStallIsLate)
{
    AssemblerBench bench;
    bench.queueBuffers(3);
    const TestBlock stalled{.id = 5};
    bench.feed(stalled, {0, 1, 2, 3});
    bench.advance(2s);
    bench.feed(stalled, {4, 5, 6, 7, 8, 9, 10, 11});
    bench.feed(TestBlock{.id = 6});
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::ImageError, BlockResult::Ok));
    EXPECT_EQ(bench.assembler.statistics().packetsIgnored, 8U);
}

TEST(BlockIds, SameIdAfterAFailedBlockIsTakenWithItsLeader)
{
    AssemblerBench bench;
    bench.queueBuffers(2);
    bench.feed(TestBlock{.id = 1, .timestamp = 7}, {0, 1, 2, 3});
    bench.advance(2s);
    bench.feed(TestBlock{.id = 1, .timestamp = 7});
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::ImageError, BlockResult::Ok));
}

TEST(BlockIds, ResetOfTheTimestampLosesNothing)
{
    AssemblerBench bench;
    bench.queueBuffers(4);
    bench.feed(TestBlock{.id = 1, .timestamp = 900'000});
    bench.feed(TestBlock{.id = 2, .timestamp = 10});
    bench.feed(TestBlock{.id = 1, .timestamp = 20});
    EXPECT_EQ(bench.assembler.statistics().blocksReceived, 3U);
}

TEST(BlockIds, ChangeOfTheIdModeIsTaken)
{
    AssemblerBench bench;
    bench.queueBuffers(3);
    bench.feed(TestBlock{.id = 5});
    bench.feed(TestBlock{.id = 5, .extendedIds = true});
    bench.feed(TestBlock{.id = 5});
    EXPECT_EQ(bench.assembler.statistics().blocksReceived, 3U);
}

} // namespace

} // namespace gige::stream
