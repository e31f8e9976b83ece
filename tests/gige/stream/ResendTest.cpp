#include "TestBlocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gige::stream
{

void PrintTo(const ResendRequest& request, std::ostream* out)
{
    *out << "block " << request.blockId << (request.extendedIds ? " (extended) " : " ")
         << request.packets.first << ".." << request.packets.last;
}

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

ResendRequest request(std::uint64_t block, std::uint32_t first, std::uint32_t last)
{
    return {.blockId = block, .packets = {first, last}};
}

class Resend : public testing::Test
{
  protected:
    Resend()
    {
        bench.assembler.setSettings({.maximumPendingResends = 1000});
        bench.queueBuffers(4);
    }

    /// Lets the reorder time pass twice: once to see the gap, once to call it a loss.
    void waitForLosses()
    {
        bench.advance(0ms);
        bench.advance(kReorderTime);
    }

    const TestBlock block{.id = 9};
    AssemblerBench bench;
};

TEST_F(Resend, IsOffByDefault)
{
    bench.assembler.setSettings({});
    bench.feed(block, block.orderWithout({3, 4, 5}));
    waitForLosses();
    bench.advance(10s);
    EXPECT_THAT(bench.requests, IsEmpty());
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::ImageError));
}

TEST_F(Resend, AsksOncePerGap)
{
    bench.feed(block, block.orderWithout({3, 4, 5, 8}));
    waitForLosses();
    EXPECT_THAT(bench.requests, ElementsAre(request(9, 3, 5), request(9, 8, 8)));
}

TEST_F(Resend, CompletesTheBlock)
{
    bench.feed(block, block.orderWithout({3, 4, 5}));
    waitForLosses();
    bench.feed(block, {3, 4, 5});
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::Ok));
    EXPECT_EQ(bench.completed[0].bytes, block.image());
    EXPECT_EQ(bench.assembler.statistics().packetsResent, 3U);
}

TEST_F(Resend, WaitsForPacketsInDisorder)
{
    bench.feed(block, {0, 1, 2, 4});
    bench.advance(0ms);
    bench.advance(kReorderTime / 2);
    bench.feed(block, {3, 5, 6, 7, 8, 9, 10, 11});
    bench.advance(kReorderTime);
    EXPECT_THAT(bench.requests, IsEmpty());
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::Ok));
    EXPECT_EQ(bench.assembler.statistics().packetsResent, 0U);
}

TEST_F(Resend, IsRepeatedAndThenGivenUp)
{
    bench.feed(block, block.orderWithout({3}));
    waitForLosses();
    EXPECT_EQ(bench.requests.size(), 1U);
    bench.advance(kResendPause - 1ms);
    EXPECT_EQ(bench.requests.size(), 1U);
    bench.advance(1ms);
    EXPECT_EQ(bench.requests.size(), 2U);
    // With growing patience.
    bench.advance(4 * kResendPause - 1ms);
    EXPECT_EQ(bench.requests.size(), 2U);
    bench.advance(1ms);
    EXPECT_EQ(bench.requests.size(), 3U);
    bench.advance(16 * kResendPause);
    bench.advance(64 * kResendPause);
    EXPECT_THAT(bench.requests, ElementsAre(request(9, 3, 3), request(9, 3, 3), request(9, 3, 3)));
}

TEST_F(Resend, MaximumRequestsPerPacketIsKept)
{
    bench.assembler.setSettings({.maximumPendingResends = 1000, .maximumRequestsPerPacket = 1});
    bench.feed(block, block.orderWithout({3}));
    waitForLosses();
    bench.advance(10 * kResendPause);
    bench.advance(10 * kResendPause);
    EXPECT_EQ(bench.requests.size(), 1U);
}

TEST_F(Resend, FailureHasAResultOfItsOwn)
{
    bench.feed(block, block.orderWithout({3}));
    waitForLosses();
    bench.advance(1000ms);
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::ResendsFailure));
    EXPECT_EQ(bench.assembler.statistics().blocksFailed, 1U);
    EXPECT_EQ(bench.assembler.statistics().packetsMissing, 1U);
}

TEST_F(Resend, AsksForTheLeader)
{
    bench.feed(block, block.orderWithout({0}));
    waitForLosses();
    EXPECT_THAT(bench.requests, ElementsAre(request(9, 0, 0)));
    bench.feed(block, {0});
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::Ok));
}

TEST_F(Resend, AsksForTheTailAfterAPause)
{
    bench.feed(block, {0, 1, 2, 3, 4, 5, 6, 7, 8});
    waitForLosses();
    EXPECT_THAT(bench.requests, IsEmpty());
    bench.advance(kTailTime - kReorderTime);
    EXPECT_THAT(bench.requests, ElementsAre(request(9, 9, 11)));
}

TEST_F(Resend, AsksForTheTailWhenTheNextBlockBegins)
{
    bench.feed(block, {0, 1, 2, 3, 4, 5, 6, 7, 8});
    bench.feed(TestBlock{.id = 10}, {0});
    bench.advance(0ms);
    EXPECT_THAT(bench.requests, ElementsAre(request(9, 9, 11)));
}

TEST_F(Resend, LeaderAloneIsNotCutOff)
{
    bench.feed(block, {0});
    bench.advance(500ms);
    EXPECT_THAT(bench.requests, IsEmpty());
}

TEST_F(Resend, UsesTheBlocksIdMode)
{
    const TestBlock extended{.id = 0x100000000, .extendedIds = true};
    bench.feed(extended, extended.orderWithout({3}));
    waitForLosses();
    const ResendRequest expected{.blockId = 0x100000000, .extendedIds = true, .packets = {3, 3}};
    EXPECT_THAT(bench.requests, ElementsAre(expected));
}

TEST_F(Resend, StopsForPacketsThatAreGone)
{
    bench.feed(block, block.orderWithout({3, 5}));
    waitForLosses();
    EXPECT_EQ(bench.requests.size(), 2U);
    bench.feed(block.joined(wire::GvspFormat::Payload, 3, {}, wire::GvcpStatus::PacketUnavailable));
    bench.advance(kResendPause);
    EXPECT_THAT(bench.requests, ElementsAre(request(9, 3, 3), request(9, 5, 5), request(9, 5, 5)));
}

TEST_F(Resend, StopsForAllPacketsBeforeOneThatIsGone)
{
    bench.feed(block, block.orderWithout({3, 5, 7}));
    waitForLosses();
    EXPECT_EQ(bench.requests.size(), 3U);
    bench.feed(
        block.joined(wire::GvspFormat::Payload, 5, {}, wire::GvcpStatus::PacketAndPreviousRemoved));
    bench.advance(kResendPause);
    EXPECT_EQ(bench.requests.size(), 4U);
    EXPECT_EQ(bench.requests[3], request(9, 7, 7));
}

TEST_F(Resend, AsksAgainForPacketsNotYetAvailable)
{
    bench.feed(block, block.orderWithout({3}));
    waitForLosses();
    bench.feed(
        block.joined(wire::GvspFormat::Payload, 3, {}, wire::GvcpStatus::PacketNotYetAvailable));
    bench.advance(kResendPause);
    EXPECT_THAT(bench.requests, ElementsAre(request(9, 3, 3), request(9, 3, 3)));
}

TEST_F(Resend, KeepsToTheMaximumPending)
{
    bench.assembler.setSettings({.maximumPendingResends = 2});
    bench.feed(block, block.orderWithout({2, 3, 4, 6}));
    waitForLosses();
    EXPECT_THAT(bench.requests, ElementsAre(request(9, 2, 3)));
    bench.feed(block, {2});
    bench.advance(0ms);
    EXPECT_THAT(bench.requests, ElementsAre(request(9, 2, 3), request(9, 4, 4)));
    bench.feed(block, {3, 4});
    bench.advance(0ms);
    EXPECT_EQ(bench.requests.size(), 3U);
    EXPECT_EQ(bench.requests.back(), request(9, 6, 6));
    bench.feed(block, {6});
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::Ok));
}

TEST_F(Resend, SharesTheMaximumAmongBlocks)
{
    bench.assembler.setSettings({.maximumPendingResends = 3});
    bench.feed(block, block.orderWithout({2, 3}));
    const TestBlock next{.id = 10};
    bench.feed(next, next.orderWithout({4, 5}));
    waitForLosses();
    EXPECT_THAT(bench.requests, ElementsAre(request(9, 2, 3), request(10, 4, 4)));
}

TEST_F(Resend, NextTimeFollowsTheRequests)
{
    bench.feed(block, block.orderWithout({3}));
    bench.advance(0ms);
    EXPECT_EQ(bench.assembler.nextTime(), bench.now + kReorderTime);
    bench.advance(kReorderTime);
    ASSERT_EQ(bench.requests.size(), 1U);
    EXPECT_GT(bench.assembler.nextTime(), bench.now);
    EXPECT_LE(bench.assembler.nextTime(), bench.now + kResendPause);
}

TEST_F(Resend, LaterBlocksWaitForTheAnswer)
{
    bench.queueBuffers(4);
    bench.feed(block, block.orderWithout({3}));
    for (std::uint64_t id = 10; id <= 12; ++id) {
        bench.feed(TestBlock{.id = id});
    }
    waitForLosses();
    EXPECT_THAT(bench.results(), IsEmpty());
    bench.feed(block, {3});
    EXPECT_THAT(bench.results(),
                ElementsAre(BlockResult::Ok, BlockResult::Ok, BlockResult::Ok, BlockResult::Ok));
    EXPECT_EQ(bench.completed[0].bytes, block.image());
}

TEST_F(Resend, SeveralBlocksAreHealedInAnyOrder)
{
    bench.queueBuffers(4);
    const TestBlock second{.id = 10};
    const TestBlock third{.id = 12}; // nothing came of block 11
    bench.feed(block, block.orderWithout({3}));
    bench.feed(second, second.orderWithout({4}));
    bench.feed(third, third.orderWithout({5}));
    waitForLosses();
    EXPECT_THAT(bench.requests,
                ElementsAre(request(9, 3, 3), request(10, 4, 4), request(12, 5, 5)));
    bench.feed(third, {5});
    bench.feed(second, {4});
    EXPECT_THAT(bench.results(), IsEmpty());
    bench.feed(block, {3});
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::Ok, BlockResult::Ok, BlockResult::Ok));
}

TEST_F(Resend, ABlockIsGivenUpWhenNoAnswerCanComplete)
{
    bench.queueBuffers(4);
    bench.feed(block, block.orderWithout({3}));
    bench.feed(TestBlock{.id = 10});
    bench.feed(TestBlock{.id = 11});
    waitForLosses();
    EXPECT_THAT(bench.results(), IsEmpty());
    bench.feed(block.joined(wire::GvspFormat::Payload, 3, {}, wire::GvcpStatus::PacketUnavailable));
    bench.advance(0ms);
    EXPECT_THAT(bench.results(),
                ElementsAre(BlockResult::ResendsFailure, BlockResult::Ok, BlockResult::Ok));
}

TEST_F(Resend, ABlockIsGivenUpAfterTheLastRequest)
{
    bench.assembler.setSettings({.maximumPendingResends = 1000, .maximumRequestsPerPacket = 1});
    bench.queueBuffers(4);
    bench.feed(block, block.orderWithout({3}));
    bench.feed(TestBlock{.id = 10});
    bench.feed(TestBlock{.id = 11});
    bench.advance(0ms); // the later blocks have cut it off
    EXPECT_EQ(bench.requests.size(), 1U);
    bench.advance(kResendPause - 1ms);
    EXPECT_THAT(bench.results(), IsEmpty());
    bench.advance(1ms);
    EXPECT_THAT(bench.results(),
                ElementsAre(BlockResult::ResendsFailure, BlockResult::Ok, BlockResult::Ok));
}

TEST_F(Resend, TheOldestBlockIsGivenUpBeforeTheBuffersRunOut)
{
    bench.feed(block, block.orderWithout({3}));
    waitForLosses();
    bench.feed(TestBlock{.id = 10});
    bench.feed(TestBlock{.id = 11});
    EXPECT_THAT(bench.results(), IsEmpty());
    bench.feed(TestBlock{.id = 12}); // in the last of four buffers
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::ResendsFailure, BlockResult::Ok,
                                             BlockResult::Ok, BlockResult::Ok));
    EXPECT_EQ(bench.assembler.statistics().blocksDropped, 0U);
}

TEST_F(Resend, AnAnswerThatComesTooLateBelongsNowhere)
{
    bench.queueBuffers(1000);
    bench.feed(block, block.orderWithout({3}));
    waitForLosses();
    bench.feed(block.joined(wire::GvspFormat::Payload, 3, {}, wire::GvcpStatus::PacketUnavailable));
    constexpr std::uint64_t kLater = 9 + 2 * kLateBlocks;
    for (std::uint64_t id = 10; id <= kLater; ++id) {
        bench.feed(TestBlock{.id = id});
    }
    bench.advance(10s);
    const auto before = bench.results().size();
    bench.feed(block.joined(wire::GvspFormat::Payload, 3, {}, wire::GvcpStatus::PacketResend));
    bench.feed(TestBlock{.id = kLater + 1});
    EXPECT_EQ(bench.results().size(), before + 1);
    EXPECT_EQ(bench.results().back(), BlockResult::Ok);
}

TEST_F(Resend, TrailersAloneAreAskedForAsFarAsTheMaximumGoes)
{
    constexpr std::uint64_t kLast = 5000;
    bench.queueBuffers(kLast + 100);
    for (std::uint64_t id = 9; id <= kLast; ++id) {
        bench.feed(TestBlock{.id = id}.joined(wire::GvspFormat::Trailer, 0xFF'FFFF, {}));
        bench.advance(0ms);
    }
    // Each time that the oldest block is closed for the next one, the next one's turn has come.
    EXPECT_EQ(bench.requests.size(), kLast - 9 - 512 + 2);
    EXPECT_EQ(bench.requests.front(), request(9, 0, 999));
    EXPECT_EQ(bench.requests.back(), request(kLast - 511, 0, 999));
}

TEST_F(Resend, APacketGivenUpThatComesAllTheSameHealsItsBlock)
{
    bench.feed(block, block.orderWithout({3}));
    waitForLosses();
    bench.feed(block.joined(wire::GvspFormat::Payload, 3, {}, wire::GvcpStatus::PacketUnavailable));
    bench.advance(0ms);
    bench.feed(block, {3});
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::Ok));
}

TEST_F(Resend, EachOfManyBlocksWithLostOnesBetweenIsFound)
{
    bench.queueBuffers(20);
    std::vector<TestBlock> blocks;
    for (const std::uint64_t id : {9U, 12U, 13U, 20U, 21U, 40U}) {
        blocks.push_back({.id = id});
        bench.feed(blocks.back(), blocks.back().orderWithout({3}));
    }
    waitForLosses();
    EXPECT_THAT(bench.requests,
                ElementsAre(request(9, 3, 3), request(12, 3, 3), request(13, 3, 3),
                            request(20, 3, 3), request(21, 3, 3), request(40, 3, 3)));
    for (const std::size_t i : {4U, 1U, 5U, 2U, 3U, 0U}) {
        EXPECT_THAT(bench.results(), IsEmpty());
        bench.feed(blocks[i], {3});
    }
    EXPECT_EQ(bench.results(), std::vector(6, BlockResult::Ok));
}

TEST_F(Resend, NothingIsAskedForABlockLongerThanItsBuffer)
{
    const TestBlock large{.id = 9, .size = 10'000};
    bench.feed(large, large.orderWithout({3, large.trailerId()}));
    waitForLosses();
    bench.advance(kTailTime);
    EXPECT_THAT(bench.requests, IsEmpty());
    EXPECT_EQ(bench.assembler.nextTime(), bench.now + 1000ms - kTailTime - kReorderTime);
}

} // namespace

} // namespace gige::stream
