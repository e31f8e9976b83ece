// One recorded frame by its number, read into the single image buffer.
#include "GrabberTest.h"

namespace
{

const FrameFeed::Bytes kFrame{0xFF, 0xFF, 0xFF, 0xFF, 0x34, 0x12, 0xFF, 0x5A, 0x01,
                              0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF, 0x77};

class SingleFrameTest : public InitializedGrabberTest
{
  protected:
    void read(std::int64_t frame)
    {
        data = expGetFramePointer(frame, &header, &flags, &extra, kCamera);
    }

    void expectNothing() const
    {
        EXPECT_EQ(data, nullptr);
        EXPECT_EQ(header, 99U);
        EXPECT_EQ(flags, 99);
        EXPECT_EQ(extra, 99);
    }

    const std::uint8_t* data = nullptr;
    std::uint64_t header = 99;
    std::uint8_t flags = 99;
    std::uint8_t extra = 99;
};

Texts attempt(const std::string& frame)
{
    return {"PvStream.QueueBuffer", "StreamSingleFrame.SetValue " + frame,
            "PvStream.RetrieveBuffer INFINITE"};
}

Texts internalError(int attempt, const std::string& delay)
{
    return {"log Internal error get single frame 7 IMAGE_ERROR Retries " + std::to_string(attempt),
            "GevSCPD.SetValue " + delay, "Sleep 100", "log -- GEN setInterPacketDelay " + delay};
}

TEST_F(SingleFrameTest, IsAskedForByItsNumberAndDecoded)
{
    s.streamFeed().feedFrame(kFrame);
    read(7);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(header, 0x00CDAB8967452301U);
    EXPECT_EQ(flags, 0xA5);
    EXPECT_EQ(extra, 0xEF);
    EXPECT_EQ(data[0], 0xFF);
    EXPECT_EQ(data[16], 0x77);
    EXPECT_EQ(s.takeCalls(), attempt("7"));
}

TEST_F(SingleFrameTest, TakesNumbersOf64Bits)
{
    s.camera().integer("StreamSingleFrame").range(0, 1LL << 40);
    s.streamFeed().feedError(Code::ImageError);
    s.streamFeed().feedFailure(Code::Timeout);
    s.streamFeed().feedFrame(kFrame);
    read(5'000'000'000);
    EXPECT_NE(data, nullptr);
    EXPECT_EQ(s.camera().integer("StreamSingleFrame").value(), 5'000'000'000);
    EXPECT_EQ(s.takeLog(),
              (Texts{"Internal error get single frame 5000000000 IMAGE_ERROR Retries 0\r\n",
                     "-- GEN setInterPacketDelay 2200\r\n",
                     "External error get single frame 5000000000 TIMEOUT Retries 1\r\n"}));
}

TEST_F(SingleFrameTest, SharesItsBufferWithTheInfoFrame)
{
    s.streamFeed().feedFrame(kFrame);
    read(7);
    ASSERT_NE(data, nullptr);
    s.streamFeed().feedFrame(FrameFeed::Bytes(100, 0x44));
    std::uint32_t out = 0;
    EXPECT_EQ(expGetRecordInfoFramePointer(&out, &out, &out, &out, kCamera), data);
    EXPECT_EQ(data[16], 0x44);
}

TEST_F(SingleFrameTest, InternalErrorsWidenTheInterPacketDelayAndTheEighthFrameIsGivenAllTheSame)
{
    for (int i = 0; i < 7; ++i) {
        s.streamFeed().feedError(Code::ImageError);
    }
    s.streamFeed().feedError(Code::ImageError, kFrame);
    read(7);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(header, 0x00CDAB8967452301U);
    EXPECT_EQ(flags, 0xA5);
    EXPECT_EQ(extra, 0xEF);
    EXPECT_EQ(data[16], 0x77);
    EXPECT_EQ(s.takeCallsWithoutLookups(),
              attempt("7") + internalError(0, "2200") + attempt("7") + internalError(1, "2400") +
                  attempt("7") + internalError(2, "2600") + attempt("7") +
                  internalError(3, "2800") + attempt("7") + internalError(4, "3000") +
                  attempt("7") + internalError(5, "3200") + attempt("7") +
                  internalError(6, "3400") + attempt("7") + internalError(7, "3600"));
}

TEST_F(SingleFrameTest, GivesUpAfterEightExternalErrors)
{
    Texts calls;
    for (int i = 0; i < 8; ++i) {
        s.streamFeed().feedFailure(Code::Timeout);
        calls = calls + attempt("7") +
                Texts{"log External error get single frame 7 TIMEOUT Retries " + std::to_string(i),
                      "PvStream.AbortQueuedBuffers", "PvStream.RetrieveBuffer INFINITE"};
    }
    s.streamFeed().feedFrame(kFrame); // would be the ninth
    read(7);
    expectNothing();
    EXPECT_EQ(s.takeCalls(), calls);
}

TEST_F(SingleFrameTest, GoesOnWithTheNextTryAfterAnExternalError)
{
    s.streamFeed().feedFailure(Code::NetworkError);
    s.streamFeed().feedFrame(kFrame);
    read(7);
    EXPECT_NE(data, nullptr);
    EXPECT_EQ(s.takeCalls(),
              (attempt("7") +
               Texts{"log External error get single frame 7 NETWORK_ERROR Retries 0",
                     "PvStream.AbortQueuedBuffers", "PvStream.RetrieveBuffer INFINITE"} +
               attempt("7")));
}

TEST_F(SingleFrameTest, AnAttemptWhoseBufferIsNotQueuedFailsSilently)
{
    s.answerAlways("PvStream.QueueBuffer", Code::Busy);
    read(7);
    expectNothing();
    EXPECT_EQ(s.takeCalls(), (times(8, {"PvStream.QueueBuffer"})));
}

TEST_F(SingleFrameTest, IsRetrievedEvenIfTheCameraRefusesTheNumber)
{
    s.answer("StreamSingleFrame.SetValue", {Code::OutOfRange});
    s.streamFeed().feedFailure(Code::Timeout);
    s.streamFeed().feedFrame(kFrame);
    read(7);
    EXPECT_NE(data, nullptr);
    EXPECT_EQ(s.takeLog(), (Texts{"External error get single frame 7 TIMEOUT Retries 0\r\n"}));
}

TEST_F(SingleFrameTest, IsNotReadWithTheLinkLost)
{
    s.notifyLinkLost();
    s.forget();
    s.streamFeed().feedFrame(kFrame);
    read(7);
    expectNothing();
    EXPECT_EQ(s.takeCalls(), Texts{});
}

TEST_F(SingleFrameTest, LinkLossEndsTheTries)
{
    s.onCall([this](const std::string& call) {
        if (call == "StreamSingleFrame.SetValue 7") {
            s.notifyLinkLost();
        }
    });
    s.streamFeed().feedFailure(Code::Timeout);
    s.streamFeed().feedFrame(kFrame);
    read(7);
    s.onCall(nullptr);
    expectNothing();
    EXPECT_EQ(s.takeCalls(),
              (Texts{"PvStream.QueueBuffer", "StreamSingleFrame.SetValue 7",
                     "log Connection to device lost!", "PvStream.RetrieveBuffer INFINITE",
                     "log External error get single frame 7 TIMEOUT Retries 0",
                     "PvStream.AbortQueuedBuffers", "PvStream.RetrieveBuffer INFINITE"}));
}

TEST_F(SingleFrameTest, NeedsTheFeature)
{
    s.camera().remove("StreamSingleFrame");
    rebind();
    read(7);
    expectNothing();
    EXPECT_EQ(s.takeCalls(), Texts{});
}

} // namespace
