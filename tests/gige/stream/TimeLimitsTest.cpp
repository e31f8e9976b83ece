#include "TestBlocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gige::stream
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

TEST(PacketTimeout, EndsABlockThatGetsNoPackets)
{
    AssemblerBench bench;
    bench.queueBuffers(1);
    bench.feed(TestBlock{}, {0, 1, 2});
    bench.advance(999ms);
    EXPECT_THAT(bench.completed, IsEmpty());
    bench.advance(1ms);
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::ImageError));
    EXPECT_EQ(bench.completed[0].info.missingPackets, 9U);
    EXPECT_EQ(bench.assembler.statistics().packetsMissing, 9U);
}

TEST(PacketTimeout, StartsAnewWithEachPacket)
{
    AssemblerBench bench;
    bench.assembler.setSettings({.packetTimeout = 100ms, .imageTimeout = 0ms});
    const TestBlock block;
    bench.queueBuffers(1);
    for (const std::uint32_t id : block.order()) {
        bench.feed(block, {id});
        bench.advance(99ms);
    }
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::Ok));
}

TEST(PacketTimeout, IsNotPutOffByDuplicates)
{
    AssemblerBench bench;
    bench.assembler.setSettings({.packetTimeout = 100ms});
    bench.queueBuffers(1);
    bench.feed(TestBlock{}, {0, 1});
    bench.advance(99ms);
    bench.feed(TestBlock{}, {0, 1});
    bench.advance(1ms);
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::ImageError));
}

TEST(ImageTimeout, EndsABlockThatTakesTooLong)
{
    AssemblerBench bench;
    bench.queueBuffers(1);
    const TestBlock block;
    bench.feed(block, {0});
    bench.advance(600ms);
    bench.feed(block, {1});
    bench.advance(499ms);
    EXPECT_THAT(bench.completed, IsEmpty());
    bench.advance(1ms);
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::ImageError));
}

TEST(ImageTimeout, LetsTheNextCompleteBlockThrough)
{
    AssemblerBench bench;
    bench.queueBuffers(2);
    bench.feed(TestBlock{.id = 1}, {0, 1});
    bench.advance(500ms);
    bench.feed(TestBlock{.id = 2});
    EXPECT_THAT(bench.completed, IsEmpty());
    bench.advance(600ms);
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::ImageError, BlockResult::Ok));
}

TEST(TimeLimits, ZeroMeansNone)
{
    AssemblerBench bench;
    bench.assembler.setSettings({.packetTimeout = 0ms, .imageTimeout = 0ms});
    bench.queueBuffers(1);
    bench.feed(TestBlock{}, {0, 1});
    EXPECT_EQ(bench.assembler.nextTime(), std::nullopt);
    bench.advance(24h);
    EXPECT_THAT(bench.completed, IsEmpty());
}

TEST(TimeLimits, PacketsOfAnEndedBlockAreLate)
{
    AssemblerBench bench;
    bench.assembler.setSettings({.packetTimeout = 50ms});
    bench.queueBuffers(2);
    const TestBlock block;
    bench.feed(block, {0, 1, 2});
    bench.advance(50ms);
    bench.feed(block, {3, 4, 5});
    EXPECT_EQ(bench.completed.size(), 1U);
    EXPECT_EQ(bench.assembler.statistics().packetsIgnored, 3U);
}

TEST(TimeLimits, NextTimeIsTheEarlierLimit)
{
    AssemblerBench bench;
    bench.queueBuffers(1);
    EXPECT_EQ(bench.assembler.nextTime(), std::nullopt);
    const Time begin = bench.now;
    bench.feed(TestBlock{}, {0});
    EXPECT_EQ(bench.assembler.nextTime(), begin + 1000ms);
    bench.advance(600ms);
    bench.feed(TestBlock{}, {1});
    EXPECT_EQ(bench.assembler.nextTime(), begin + 1100ms);
}

TEST(FirstPacketTimeout, IsOffByDefault)
{
    AssemblerBench bench;
    bench.queueBuffers(1);
    bench.advance(24h);
    EXPECT_THAT(bench.completed, IsEmpty());
}

TEST(FirstPacketTimeout, GivesAWaitingBufferBack)
{
    AssemblerBench bench;
    bench.assembler.setSettings({.firstPacketTimeout = 300ms});
    bench.queueBuffers(2);
    EXPECT_EQ(bench.assembler.nextTime(), bench.now + 300ms);
    bench.advance(299ms);
    EXPECT_THAT(bench.completed, IsEmpty());
    bench.advance(1ms);
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::TimedOut));
    bench.advance(299ms);
    EXPECT_EQ(bench.completed.size(), 1U);
    bench.advance(1ms);
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::TimedOut, BlockResult::TimedOut));
    EXPECT_EQ(bench.assembler.nextTime(), std::nullopt);
}

TEST(FirstPacketTimeout, StartsAnewWithEachBlock)
{
    AssemblerBench bench;
    bench.assembler.setSettings({.firstPacketTimeout = 300ms});
    bench.queueBuffers(2);
    bench.advance(200ms);
    bench.feed(TestBlock{});
    bench.advance(200ms);
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::Ok));
    bench.advance(100ms);
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::Ok, BlockResult::TimedOut));
}

} // namespace

} // namespace gige::stream
