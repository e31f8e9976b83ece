#include "TestBlocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace gige::stream
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// What is left of a buffer that nothing was written to.
constexpr std::uint8_t kUntouched = 0xEE;

class BlockAssembly : public testing::Test
{
  protected:
    void expectOneImage(const TestBlock& block)
    {
        ASSERT_THAT(bench.results(), ElementsAre(BlockResult::Ok));
        EXPECT_EQ(bench.completed[0].bytes, block.image());
    }

    AssemblerBench bench;
};

TEST_F(BlockAssembly, TellsTheLeadersImage)
{
    bench.queueBuffers(1);
    bench.feed(TestBlock{.id = 7, .timestamp = 123456});
    const BlockInfo expected{
        .result = BlockResult::Ok,
        .blockId = 7,
        .timestamp = 123456,
        .payloadType = wire::PayloadType{wire::PayloadKind::Image, false},
        .image = wire::ImageLayout{.pixelFormat = 0x01080001, .width = 1000, .height = 1},
        .bytes = 1000};
    ASSERT_EQ(bench.completed.size(), 1U);
    EXPECT_EQ(bench.completed[0].info, expected);
    EXPECT_EQ(bench.completed[0].bytes, TestBlock{.id = 7}.image());
}

TEST_F(BlockAssembly, PlacesAShortLastPacket)
{
    const TestBlock block{.size = 950};
    bench.queueBuffers(1, 950);
    bench.feed(block);
    expectOneImage(block);
}

TEST_F(BlockAssembly, PlacesABlockOfOnePacket)
{
    const TestBlock block{.size = 5};
    bench.queueBuffers(1, 5);
    bench.feed(block);
    expectOneImage(block);
}

TEST_F(BlockAssembly, LeavesTheRestOfALongerBufferAlone)
{
    const TestBlock block{.size = 250};
    bench.queueBuffers(1, 300);
    bench.feed(block);
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::Ok));
    Bytes expected = block.image();
    expected.resize(300, kUntouched);
    EXPECT_EQ(bench.completed[0].bytes, expected);
    EXPECT_EQ(bench.completed[0].info.bytes, 250U);
}

TEST_F(BlockAssembly, TakesExtendedIds)
{
    const TestBlock block{.id = 0x1122334455667788, .extendedIds = true};
    bench.queueBuffers(1);
    bench.feed(block);
    expectOneImage(block);
    EXPECT_EQ(bench.completed[0].info.blockId, 0x1122334455667788U);
}

TEST_F(BlockAssembly, TakesPacketsInAnyOrder)
{
    const TestBlock block{.size = 1950};
    std::mt19937 random(1);
    for (int round = 0; round < 500; ++round) {
        AssemblerBench fresh;
        fresh.queueBuffers(1, 1950);
        std::vector<std::uint32_t> order = block.order();
        std::ranges::shuffle(order, random);
        fresh.feed(block, order);
        ASSERT_THAT(fresh.results(), ElementsAre(BlockResult::Ok)) << testing::PrintToString(order);
        ASSERT_EQ(fresh.completed[0].bytes, block.image()) << testing::PrintToString(order);
    }
}

TEST_F(BlockAssembly, TakesTheDataBeforeTheLeader)
{
    const TestBlock block;
    bench.queueBuffers(1);
    bench.feed(block, {1, 2, 0, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    expectOneImage(block);
}

TEST_F(BlockAssembly, TakesTheTrailerBeforeTheData)
{
    const TestBlock block;
    bench.queueBuffers(1);
    bench.feed(block, {11, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    expectOneImage(block);
}

TEST_F(BlockAssembly, TakesTheShortLastPacketFirst)
{
    const TestBlock block{.size = 950};
    bench.queueBuffers(1, 950);
    bench.feed(block, {10, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 11});
    expectOneImage(block);
}

TEST_F(BlockAssembly, TakesEachPacketTwiceAndCountsItOnce)
{
    const TestBlock block{.size = 950};
    bench.queueBuffers(1, 950);
    for (const std::uint32_t id : block.orderWithout({11})) {
        bench.feed(block, {id, id});
    }
    bench.feed(block, {11});
    expectOneImage(block);
    EXPECT_EQ(bench.assembler.statistics().packetsDuplicated, 11U);
    EXPECT_EQ(bench.assembler.statistics().packetsReceived, 12U);
    EXPECT_EQ(bench.assembler.statistics().bytesReceived, 950U);
}

TEST_F(BlockAssembly, DuplicateDoesNotOverwriteTheData)
{
    const TestBlock block;
    bench.queueBuffers(1);
    bench.feed(block, {0, 1, 2});
    bench.feed(block.joined(wire::GvspFormat::Payload, 2, Bytes(100, 0)));
    bench.feed(block, {3, 4, 5, 6, 7, 8, 9, 10, 11});
    expectOneImage(block);
}

TEST_F(BlockAssembly, CompletesBlockAfterBlock)
{
    bench.queueBuffers(3);
    for (const std::uint64_t id : {1U, 2U, 3U}) {
        bench.feed(TestBlock{.id = id});
    }
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::Ok, BlockResult::Ok, BlockResult::Ok));
    for (const std::uint64_t id : {1U, 2U, 3U}) {
        EXPECT_EQ(bench.completed[id - 1].bytes, TestBlock{.id = id}.image());
    }
    EXPECT_EQ(bench.assembler.statistics().blocksReceived, 3U);
}

TEST_F(BlockAssembly, TakesTheEndOfABlockBehindTheNextOnesBeginning)
{
    const TestBlock first{.id = 1};
    const TestBlock second{.id = 2};
    bench.queueBuffers(2);
    bench.feed(first, {0, 1, 2, 3, 4, 5, 6, 7, 8});
    bench.feed(second, {0, 1, 2});
    bench.feed(first, {9, 10, 11});
    bench.feed(second, {3, 4, 5, 6, 7, 8, 9, 10, 11});
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::Ok, BlockResult::Ok));
    EXPECT_EQ(bench.completed[0].bytes, first.image());
    EXPECT_EQ(bench.completed[1].bytes, second.image());
}

TEST_F(BlockAssembly, CompletesInTheBlocksOrder)
{
    const TestBlock first{.id = 1};
    const TestBlock second{.id = 2};
    bench.queueBuffers(2);
    bench.feed(first, first.orderWithout({4}));
    bench.feed(second);
    EXPECT_THAT(bench.completed, IsEmpty());
    bench.feed(first, {4});
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::Ok, BlockResult::Ok));
    EXPECT_EQ(bench.completed[0].bytes, first.image());
    EXPECT_EQ(bench.completed[1].bytes, second.image());
}

TEST_F(BlockAssembly, SecondBlockAfterItEndsAnIncompleteBlock)
{
    const TestBlock first{.id = 1};
    bench.queueBuffers(3);
    bench.feed(first, first.orderWithout({4}));
    bench.feed(TestBlock{.id = 2});
    bench.feed(TestBlock{.id = 3}, {0});
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::ImageError, BlockResult::Ok));
    EXPECT_EQ(bench.completed[0].info.blockId, 1U);
    EXPECT_EQ(bench.completed[0].info.missingPackets, 1U);
    Bytes expected = first.image();
    std::fill_n(expected.begin() + 300, 100, kUntouched);
    EXPECT_EQ(bench.completed[0].bytes, expected);
    EXPECT_EQ(bench.completed[1].bytes, TestBlock{.id = 2}.image());
    EXPECT_EQ(bench.assembler.statistics().blocksFailed, 1U);
    EXPECT_EQ(bench.assembler.statistics().packetsMissing, 1U);
}

TEST_F(BlockAssembly, BlockWithoutLeaderIsAnImageError)
{
    const TestBlock block;
    bench.queueBuffers(3);
    bench.feed(block, block.orderWithout({0}));
    EXPECT_THAT(bench.completed, IsEmpty());
    bench.feed(TestBlock{.id = 2}, {0});
    bench.feed(TestBlock{.id = 3}, {0});
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::ImageError));
    EXPECT_EQ(bench.completed[0].bytes, block.image());
    EXPECT_EQ(bench.completed[0].info.image, std::nullopt);
    EXPECT_EQ(bench.completed[0].info.missingPackets, 1U);
}

TEST_F(BlockAssembly, BlockWithoutTrailerIsAnImageError)
{
    const TestBlock block;
    bench.queueBuffers(3);
    bench.feed(block, block.orderWithout({11}));
    bench.feed(TestBlock{.id = 2});
    bench.feed(TestBlock{.id = 3});
    EXPECT_THAT(bench.results(),
                ElementsAre(BlockResult::ImageError, BlockResult::Ok, BlockResult::Ok));
    EXPECT_EQ(bench.completed[0].info.missingPackets, 1U);
}

TEST_F(BlockAssembly, PayloadLongerThanTheBufferIsClipped)
{
    const TestBlock block;
    bench.queueBuffers(1, 450);
    bench.feed(block);
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::BufferTooSmall));
    Bytes expected = block.image();
    expected.resize(450);
    EXPECT_EQ(bench.completed[0].bytes, expected);
    EXPECT_EQ(bench.completed[0].info.bytes, 450U);
    EXPECT_EQ(bench.assembler.statistics().blocksFailed, 1U);
    EXPECT_EQ(bench.assembler.statistics().packetsMissing, 0U);
}

TEST_F(BlockAssembly, PayloadOneByteLongerThanTheBufferIsTooLong)
{
    bench.queueBuffers(2, 999);
    bench.feed(TestBlock{});
    bench.feed(TestBlock{.id = 2, .size = 999});
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::BufferTooSmall, BlockResult::Ok));
}

TEST_F(BlockAssembly, TrailerFarBehindTheBufferTellsThatItIsTooSmall)
{
    const TestBlock block{.size = 100'000};
    bench.queueBuffers(1);
    bench.feed(block, {0, 1, block.trailerId()});
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::BufferTooSmall));
}

TEST_F(BlockAssembly, BufferWithoutMemoryIsTooSmall)
{
    bench.queueBuffers(1, 0);
    bench.feed(TestBlock{});
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::BufferTooSmall));
}

TEST_F(BlockAssembly, PacketsBehindTheTrailerAreDropped)
{
    const TestBlock block;
    bench.queueBuffers(1, 5000);
    bench.feed(block, {0, 11, 1, 2});
    bench.feed(block.joined(wire::GvspFormat::Payload, 12, Bytes(100, 1)));
    bench.feed(block.joined(wire::GvspFormat::Payload, 11, Bytes(100, 1)));
    bench.feed(block, {3, 4, 5, 6, 7, 8, 9, 10});
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::Ok));
    EXPECT_EQ(bench.completed[0].info.bytes, 1000U);
    EXPECT_EQ(bench.assembler.statistics().packetsIgnored, 2U);
}

TEST_F(BlockAssembly, TrailerBeforeReceivedDataIsAnImageError)
{
    const TestBlock block;
    bench.queueBuffers(1, 5000);
    bench.feed(block, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    bench.feed(block.joined(wire::GvspFormat::Trailer, 5, Bytes(8)));
    bench.advance(10s);
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::ImageError));
}

TEST_F(BlockAssembly, ShortPacketInTheMiddleIsAnImageError)
{
    const TestBlock block;
    bench.queueBuffers(1);
    bench.feed(block, {0, 1, 2});
    bench.feed(block.joined(wire::GvspFormat::Payload, 3, Bytes(50, 1)));
    bench.feed(block, {4, 5, 6, 7, 8, 9, 10, 11});
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::ImageError));
}

TEST_F(BlockAssembly, PacketLongerThanTheOthersIsDropped)
{
    const TestBlock block;
    bench.queueBuffers(1);
    bench.feed(block, {0, 1, 2});
    bench.feed(block.joined(wire::GvspFormat::Payload, 3, Bytes(150, 1)));
    bench.feed(block, {4, 5, 6, 7, 8, 9, 10, 11});
    bench.advance(10s);
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::ImageError));
    EXPECT_EQ(bench.completed[0].bytes[200], kUntouched);
}

TEST_F(BlockAssembly, HugePacketIdsAreContained)
{
    const TestBlock block{.extendedIds = true};
    bench.queueBuffers(2);
    for (const std::uint32_t id : {0xFFFFFFFFU, 0xFFFFFFFEU, 0x80000000U}) {
        bench.feed(block.joined(wire::GvspFormat::Payload, id, Bytes(100, 1)));
        bench.feed(block.joined(wire::GvspFormat::Trailer, id, Bytes(8)));
    }
    bench.feed(block);
    bench.advance(10s);
    ASSERT_GE(bench.completed.size(), 1U);
    EXPECT_EQ(bench.completed[0].info.result, BlockResult::BufferTooSmall);
}

TEST_F(BlockAssembly, MalformedPacketsAreDropped)
{
    const TestBlock block;
    bench.queueBuffers(1);
    bench.feed(block, {0});
    bench.feed(block.joined(wire::GvspFormat::Payload, 0, Bytes(100)));
    bench.feed(block.joined(wire::GvspFormat::Payload, 1, {}));
    bench.feed(block.joined(wire::GvspFormat::Trailer, 0, Bytes(8)));
    bench.feed(block.joined(wire::GvspFormat::AllIn, 1, Bytes(100)));
    bench.feed(block.joined(wire::GvspFormat{9}, 1, Bytes(100)));
    EXPECT_EQ(bench.assembler.statistics().packetsIgnored, 5U);
    bench.feed(block, block.orderWithout({0}));
    expectOneImage(block);
}

TEST_F(BlockAssembly, MalformedLeaderIsNoLeader)
{
    const TestBlock block;
    bench.queueBuffers(1);
    bench.feed(block.joined(wire::GvspFormat::Leader, 0, Bytes(11)));
    bench.feed(block, block.orderWithout({0}));
    EXPECT_THAT(bench.completed, IsEmpty());
    bench.feed(block, {0});
    expectOneImage(block);
}

TEST_F(BlockAssembly, ReportsAPayloadThatIsNoImage)
{
    const TestBlock block;
    bench.queueBuffers(1);
    Bytes chunkLeader(12);
    chunkLeader[3] = 0x04;
    bench.feed(block.joined(wire::GvspFormat::Leader, 0, chunkLeader));
    bench.feed(block, block.orderWithout({0}));
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::Ok));
    EXPECT_EQ(bench.completed[0].info.payloadType,
              (wire::PayloadType{wire::PayloadKind::Chunk, false}));
    EXPECT_EQ(bench.completed[0].info.image, std::nullopt);
}

TEST_F(BlockAssembly, LostDataOfTheDeviceIsAnImageError)
{
    const TestBlock block;
    bench.queueBuffers(1);
    bench.feed(block, {0, 1, 2, 3, 4});
    bench.feed(block.joined(wire::GvspFormat::Payload, 5, {}, wire::GvcpStatus::DataOverrun));
    bench.feed(block, {5, 6, 7, 8, 9, 10, 11});
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::ImageError));
}

TEST_F(BlockAssembly, ResentPacketsAreData)
{
    const TestBlock block;
    bench.queueBuffers(1);
    bench.feed(block, block.orderWithout({5, 11}));
    Bytes resent = block.packet(5);
    resent[0] = 0x01; // status PACKET_RESEND
    bench.feed(resent);
    bench.feed(block, {11});
    expectOneImage(block);
}

TEST_F(BlockAssembly, LearnsASmallerPacketSizeBetweenBlocks)
{
    const TestBlock large{.id = 1, .dataSize = 500};
    const TestBlock small{.id = 2};
    bench.queueBuffers(2);
    bench.feed(large);
    bench.feed(small, {2, 0, 1, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::Ok, BlockResult::Ok));
    EXPECT_EQ(bench.completed[1].bytes, small.image());
}

TEST_F(BlockAssembly, LearnsALargerPacketSizeBetweenBlocks)
{
    const TestBlock small{.id = 1};
    const TestBlock large{.id = 2, .size = 950, .dataSize = 500};
    bench.queueBuffers(2);
    bench.feed(small);
    bench.feed(large, {2, 0, 1, 3});
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::Ok, BlockResult::Ok));
    Bytes expected = large.image();
    expected.resize(1000, kUntouched);
    // The short packet came first and was moved: where it lay at first belongs to no image byte.
    EXPECT_TRUE(
        std::equal(expected.begin(), expected.begin() + 950, bench.completed[1].bytes.begin()));
}

TEST_F(BlockAssembly, AbortEndsOpenBlocks)
{
    bench.queueBuffers(3);
    const TestBlock first{.id = 1};
    bench.feed(first, {0, 1});
    bench.feed(TestBlock{.id = 2}, {0});
    bench.assembler.abort();
    EXPECT_THAT(bench.results(), ElementsAre(BlockResult::Aborted, BlockResult::Aborted));
    // What is still on its way of them is late.
    bench.feed(first, {2, 3});
    bench.feed(TestBlock{.id = 2}, {1, 2});
    EXPECT_EQ(bench.assembler.statistics().packetsIgnored, 4U);
    bench.feed(TestBlock{.id = 3});
    EXPECT_EQ(bench.completed.size(), 3U);
    EXPECT_EQ(bench.completed[2].info.result, BlockResult::Ok);
    EXPECT_EQ(bench.assembler.statistics().blocksFailed, 0U);
}

TEST_F(BlockAssembly, WithoutBufferABlockIsDroppedAsAWhole)
{
    const TestBlock first{.id = 1};
    bench.feed(first, {0, 1, 2});
    bench.queueBuffers(2);
    bench.feed(first, {3, 4, 5, 6, 7, 8, 9, 10, 11});
    EXPECT_THAT(bench.completed, IsEmpty());
    EXPECT_EQ(bench.assembler.statistics().blocksDropped, 1U);
    EXPECT_EQ(bench.assembler.statistics().packetsIgnored, 12U);
    bench.feed(TestBlock{.id = 2});
    ASSERT_THAT(bench.results(), ElementsAre(BlockResult::Ok));
    EXPECT_EQ(bench.completed[0].info.blockId, 2U);
}

} // namespace

} // namespace gige::stream
