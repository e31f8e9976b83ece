// A stop that comes from another thread while the host collects a block.
#include "BlockTransferTest.h"

#include <algorithm>
#include <thread>

namespace
{

constexpr std::uint32_t kEnded = 0xFFFFFFFF;
constexpr std::size_t kBlockSize = 5'800'320; // bytes

class BlockStopTest : public BlockTransferTest
{
  protected:
    static void expectEnded(const Block& block)
    {
        EXPECT_EQ(block.data, nullptr);
        EXPECT_EQ(block.frames, kUntouched);
        EXPECT_EQ(block.status, kEnded);
    }

    /// A complete block with a gap, whose line is written while the block is being copied.
    void receiveGap()
    {
        ASSERT_EQ(request(0, 2), 0);
        feed({10, 12});
    }

    void stopAtGap(std::function<void()> stop)
    {
        at("log ======> CQuorGrabber::getRecordedFrameBlockResult: Sequenzfehler, Vorg\xE4"
           "nger frame = 10, Nachfolger frame = 12, )",
           {std::move(stop)});
    }
};

TEST_F(BlockStopTest, EndsTheCollectionOfABlockThatIsBeingCopied)
{
    for (auto* const stop :
         {expStopFrameBlockTransfer, expStopLiveMode, expStopRecordMode, expAbortRecording}) {
        s.camera().integer("Width").value(16);
        s.camera().integer("Height").value(16);
        ASSERT_EQ(connect(), 0);
        ASSERT_EQ(initialize(), 0);
        ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
        receiveGap();
        stopAtGap([=] { EXPECT_EQ(stop(kCamera), 0); });
        expectEnded(collect());
        ASSERT_EQ(expDisconnectGrabber(kCamera), 0);
    }
}

TEST_F(BlockStopTest, EndsTheCollectionOfABlockWhenTheNextTransferHasBegun)
{
    start();
    receiveGap();
    stopAtGap([] {
        EXPECT_EQ(expStopFrameBlockTransfer(kCamera), 0);
        EXPECT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    });
    expectEnded(collect());
    ASSERT_EQ(request(0, 1), 0);
    feed({900});
    EXPECT_EQ(collect().frames, 1);
}

TEST_F(BlockStopTest, ABlockStaysTheHostsUntilTheNextStart)
{
    start();
    ASSERT_EQ(request(0, 1), 0);
    s.pipelineFeed().feedFrame(frame(1, 0xAA));
    const Block block = collect();
    ASSERT_NE(block.data, nullptr);
    ASSERT_EQ(expStopFrameBlockTransfer(kCamera), 0);
    s.loseLink();
    EXPECT_EQ(expStopFrameBlockTransfer(kCamera), 0); // frees nothing once more
    EXPECT_EQ(block.data[255], 0xAA);
    EXPECT_EQ(std::count(block.data + 256, block.data + kBlockSize, 0), kBlockSize - 256);
}

TEST_F(BlockStopTest, GivesAWholeBlockOrNoneHoweverTheThreadsMeet)
{
    prepare();
    for (int i = 0; i < 12; ++i) {
        ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
        ASSERT_EQ(request(0, 1), 0);
        s.pipelineFeed().feedFrame(frame(1, 0xAA));
        Block block{};
        std::thread collecting([&] { block = collect(); });
        for (int pause = 0; pause < i * 20; ++pause) {
            std::this_thread::yield();
        }
        ASSERT_EQ(expStopFrameBlockTransfer(kCamera), 0);
        collecting.join();
        if (block.status == kEnded) {
            expectEnded(block);
            continue;
        }
        EXPECT_EQ(block.status, 0U);
        EXPECT_EQ(block.frames, 1);
        ASSERT_NE(block.data, nullptr);
        EXPECT_EQ(block.data[255], 0xAA);
        EXPECT_EQ(block.data[kBlockSize - 1], 0);
        s.forget();
    }
}

} // namespace
