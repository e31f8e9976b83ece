// What lies behind a block's pointers when the image size changes during the transfer.
#include "BlockTransferTest.h"

namespace
{

constexpr std::ptrdiff_t kLargeFrame = 2048 * 2048; // bytes

class BlockGeometryTest : public BlockTransferTest
{
  protected:
    void SetUp() override { start(); }

    /// The camera has this geometry, and the host reads it.
    void readGeometry(std::int64_t width, std::int64_t height)
    {
        s.camera().integer("Width").value(width);
        s.camera().integer("Height").value(height);
        std::uint32_t read = 0;
        ASSERT_EQ(expGetWidth(&read, kCamera), 0);
        ASSERT_EQ(expGetHeight(&read, kCamera), 0);
    }

    Block receive(std::uint32_t frames)
    {
        EXPECT_EQ(request(0, frames), 0);
        for (std::uint32_t i = 0; i < frames; ++i) {
            s.pipelineFeed().feedFrame(frame(static_cast<std::uint16_t>(i + 1), 0xAA));
        }
        EXPECT_TRUE(s.pipelineFeed().waitUntilDrained());
        return collect();
    }

    static void expectNothing(const Block& block)
    {
        EXPECT_EQ(block.data, nullptr);
        EXPECT_EQ(block.frames, kUntouched);
        EXPECT_EQ(block.status, 0xFFFFFFFF);
    }

    const std::uint8_t* info(std::uint32_t index)
    {
        std::uint64_t header = 0;
        std::uint8_t flags = 0;
        std::uint8_t extra = 0;
        return expGetRecordedFrameBlockInfo(nullptr, index, &header, &flags, &extra, kCamera);
    }
};

TEST_F(BlockGeometryTest, ABlockGrowsToAllItsFramesInTheNewSize)
{
    readGeometry(2048, 2048);
    const Block block = receive(3);
    ASSERT_NE(block.data, nullptr);
    EXPECT_EQ(block.frames, 3);
    EXPECT_EQ(block.data[3 * kFrameSize - 1], 0xAA);
    EXPECT_EQ(block.data[3 * kFrameSize], 0);
    EXPECT_EQ(block.data[3 * kLargeFrame - 1], 0);
}

TEST_F(BlockGeometryTest, ABlockGrowsToFramesBeyondItsSize)
{
    ASSERT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    readGeometry(2048, 2048); // one frame fits
    ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    const Block block = receive(4);
    ASSERT_NE(block.data, nullptr);
    EXPECT_EQ(block.frames, 4);
    EXPECT_EQ(block.data[kLargeFrame - 1], 0);
    EXPECT_EQ(block.data[4 * kLargeFrame - 1], 0);
}

TEST_F(BlockGeometryTest, ABlockThatCannotGrowIsNotGivenAndTheNextOneIs)
{
    for (const std::int64_t side : {65'537LL, 16'384LL, 0LL}) {
        readGeometry(side, side);
        expectNothing(receive(2));
    }
    readGeometry(16, 16);
    EXPECT_EQ(receive(2).frames, 2);
}

TEST_F(BlockGeometryTest, AFrameInTheBlockHasTheNewSizeBehindItOrIsNotGiven)
{
    const Block block = receive(2);
    readGeometry(2048, 2048);
    EXPECT_EQ(info(1), block.data + kFrameSize);
    EXPECT_EQ(info(6273), block.data + 6273 * kFrameSize); // ends 192 bytes before the block
    EXPECT_EQ(info(6274), nullptr);
    readGeometry(65'537, 65'537);
    EXPECT_EQ(info(0), nullptr);
    readGeometry(16, 16);
    EXPECT_EQ(info(22'656), block.data + 22'656 * kFrameSize);
    EXPECT_EQ(info(22'657), nullptr); // only half of it
}

} // namespace
