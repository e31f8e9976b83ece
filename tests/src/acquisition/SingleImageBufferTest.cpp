// The single image buffer: whose stream it is read from, and how large it is for the host.
#include "GrabberTest.h"

#include <functional>

namespace
{

class SingleImageBufferTest : public InitializedGrabberTest
{
  protected:
    const std::uint8_t* readFrame()
    {
        std::uint64_t header = 0;
        std::uint8_t flags = 0;
        std::uint8_t extra = 0;
        return expGetFramePointer(7, &header, &flags, &extra, kCamera);
    }

    const std::uint8_t* readInfoFrame()
    {
        std::uint32_t out = 0;
        return expGetRecordInfoFramePointer(&out, &out, &out, &out, kCamera);
    }

    void expectNothingRead()
    {
        ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
        s.forget();
        s.streamFeed().feedFrame(FrameFeed::Bytes(100, 0x11));
        EXPECT_EQ(readFrame(), nullptr);
        EXPECT_EQ(s.takeCalls(), Texts{});
        EXPECT_EQ(readInfoFrame(), nullptr);
        EXPECT_EQ(s.takeCalls(), Texts{"log Get info frame pointer"});
    }

    /// The camera has a geometry that its limits allow, and the host reads it.
    void changeGeometry(std::int64_t width, std::int64_t height)
    {
        s.camera().integer("Width").range(1, 1LL << 31).value(width);
        s.camera().integer("Height").range(1, 1LL << 31).value(height);
        std::uint32_t read = 0;
        ASSERT_EQ(expGetWidth(&read, kCamera), 0);
        ASSERT_EQ(expGetHeight(&read, kCamera), 0);
        s.forget();
    }

    void feedFrame() { s.streamFeed().feedFrame(FrameFeed::Bytes(100, 0x22)); }
};

const Texts kFrameRead{"PvStream.QueueBuffer", "StreamSingleFrame.SetValue 7",
                       "PvStream.RetrieveBuffer INFINITE"};

Texts replacedBy(const std::string& size)
{
    return {"PvBuffer.Free", "PvBuffer.Alloc " + size,
            "log Allocate single image buffer, Buffersize " + size};
}

TEST_F(SingleImageBufferTest, IsNotReadInLiveMode)
{
    ASSERT_EQ(expStartLiveMode(kCamera), 0);
    expectNothingRead();
}

TEST_F(SingleImageBufferTest, IsNotReadInRecordMode)
{
    ASSERT_EQ(expStartRecordMode(kCamera), 0);
    expectNothingRead();
}

TEST_F(SingleImageBufferTest, IsNotReadDuringABlockTransfer)
{
    ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    expectNothingRead();
}

TEST_F(SingleImageBufferTest, IsNotReadWhileTheCameraCopiesItsRecordingToTheFlashCard)
{
    ASSERT_EQ(expEnableFlashWriteAfterRecordStop(1, kCamera), 0);
    ASSERT_EQ(expStartRecordMode(kCamera), 0);
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    ASSERT_EQ(expStopRecordMode(kCamera), 2); // in record mode still, without a thread
    s.forget();
    EXPECT_EQ(readFrame(), nullptr);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(SingleImageBufferTest, IsNotReadWhileALiveThreadRunsOnInPlayback)
{
    ASSERT_EQ(expStartLiveMode(kCamera), 0);
    ASSERT_EQ(initialize(), 0); // to playback; the thread goes on
    expectNothingRead();
}

TEST_F(SingleImageBufferTest, IsReadAgainAfterTheStop)
{
    for (const auto& start : {expStartLiveMode, expStartRecordMode, expStartFrameBlockTransfer}) {
        ASSERT_EQ(start(kCamera), 0);
        ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
        ASSERT_EQ(expStopLiveMode(kCamera), 0);
        feedFrame();
        EXPECT_NE(readFrame(), nullptr);
    }
}

TEST_F(SingleImageBufferTest, GrowsWithTheGeometryForAFrame)
{
    s.camera().integer("Width").value(64);
    s.camera().integer("Height").value(64);
    rebind();
    changeGeometry(1280, 1024);
    feedFrame();
    const std::uint8_t* const frame = readFrame();
    EXPECT_EQ(s.takeCalls(), replacedBy("1310720") + kFrameRead);
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame[99], 0x22);
    EXPECT_EQ(frame[1'310'719], 0);
    feedFrame();
    EXPECT_EQ(readFrame(), frame);
    EXPECT_EQ(s.takeCalls(), kFrameRead); // large enough now
}

TEST_F(SingleImageBufferTest, GrowsWithTheGeometryForAnInfoFrame)
{
    changeGeometry(2048, 2048);
    feedFrame();
    const std::uint8_t* const frame = readInfoFrame();
    const Texts calls = s.takeCalls();
    ASSERT_GE(calls.size(), 4U);
    EXPECT_EQ(Texts(calls.begin(), calls.begin() + 4),
              Texts{"log Get info frame pointer"} + replacedBy("4194304"));
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame[4'194'303], 0);
}

TEST_F(SingleImageBufferTest, GrowsWithAWidthThatTheHostSets)
{
    s.camera().integer("Width").range(16, 4096);
    std::uint32_t width = 4096;
    ASSERT_EQ(expSetWidth(&width, kCamera), 0);
    s.forget();
    feedFrame();
    EXPECT_NE(readFrame(), nullptr);
    EXPECT_EQ(s.takeCalls(), replacedBy("4194304") + kFrameRead);
}

TEST_F(SingleImageBufferTest, DoesNotShrink)
{
    changeGeometry(16, 16);
    feedFrame();
    EXPECT_NE(readFrame(), nullptr);
    EXPECT_EQ(s.takeCalls(), kFrameRead);
}

TEST_F(SingleImageBufferTest, IsNotReadForAGeometryThatHoldsNoFrame)
{
    for (const std::int64_t side : {65'537LL, 2'147'483'647LL, 0LL}) {
        changeGeometry(side, side);
        feedFrame();
        EXPECT_EQ(readFrame(), nullptr) << side;
        EXPECT_EQ(s.takeCalls(), Texts{}) << side;
        EXPECT_EQ(readInfoFrame(), nullptr) << side;
        EXPECT_EQ(s.takeCalls(), Texts{"log Get info frame pointer"}) << side;
    }
}

TEST_F(SingleImageBufferTest, IsNotReadWithoutMemoryForALargerOne)
{
    changeGeometry(2048, 2048);
    s.answer("PvBuffer.Alloc", {Code::NotEnoughMemory});
    feedFrame();
    EXPECT_EQ(readFrame(), nullptr);
    EXPECT_EQ(s.takeCalls(), replacedBy("4194304"));
    EXPECT_NE(readFrame(), nullptr); // the memory is there again
}

} // namespace
