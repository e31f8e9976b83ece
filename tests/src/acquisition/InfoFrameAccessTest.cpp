// The camera's description of its recording, read into the single image buffer.
#include "GrabberTest.h"

#include <initializer_list>

namespace
{

constexpr std::uint32_t k1280x1024 = 0x01FFCF00; // width and height fields of the descriptor

struct StopPointer {
    std::size_t sequence;
    std::uint32_t value;
};

void put(FrameFeed::Bytes& bytes, std::size_t offset, std::uint32_t value)
{
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[offset + i] = static_cast<std::uint8_t>(value >> 8 * i);
    }
}

FrameFeed::Bytes infoFrame(std::uint32_t descriptor,
                           std::initializer_list<StopPointer> stopPointers = {})
{
    FrameFeed::Bytes bytes(100);
    for (const StopPointer& pointer : stopPointers) {
        put(bytes, 32 + 4 * pointer.sequence, pointer.value);
    }
    put(bytes, 96, descriptor);
    return bytes;
}

class InfoFrameTest : public InitializedGrabberTest
{
  protected:
    void read()
    {
        data = expGetRecordInfoFramePointer(&width, &height, &recordMode, &sequences, kCamera);
    }

    void read(const FrameFeed::Bytes& bytes)
    {
        s.streamFeed().feedFrame(bytes);
        read();
    }

    void expectNothing() const
    {
        EXPECT_EQ(data, nullptr);
        EXPECT_EQ(width, 99U);
        EXPECT_EQ(height, 99U);
        EXPECT_EQ(recordMode, 99U);
        EXPECT_EQ(sequences, 99U);
    }

    const std::uint8_t* data = nullptr;
    std::uint32_t width = 99;
    std::uint32_t height = 99;
    std::uint32_t recordMode = 99;
    std::uint32_t sequences = 99;
};

const Texts kAttempt{"PvStream.QueueBuffer", "StreamGetInfoFrame.Execute",
                     "PvStream.RetrieveBuffer INFINITE"};
const Texts kTakeBack{"PvStream.AbortQueuedBuffers", "PvStream.RetrieveBuffer INFINITE"};

Texts pacedTo(const std::string& delay)
{
    return {"GevSCPD.SetValue " + delay, "Sleep 100", "log -- GEN setInterPacketDelay " + delay};
}

Texts stopPointerLines()
{
    Texts lines;
    for (int i = 0; i < 16; ++i) {
        lines.push_back("log Stop pointer " + std::to_string(i) + ": 0");
    }
    return lines;
}

TEST_F(InfoFrameTest, IsAskedForRetrievedAndShownInFull)
{
    read(infoFrame(k1280x1024 | 0x90000002,
                   {{0, 100}, {1, 0xFFFFFFFF}, {2, 0xE0000000}, {3, 0x20000007}}));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(width, 1280U);
    EXPECT_EQ(height, 1024U);
    EXPECT_EQ(recordMode, 1U);
    EXPECT_EQ(sequences, 4U);
    EXPECT_EQ(data[32], 100);
    EXPECT_EQ(data[99], 0x91);
    EXPECT_EQ(s.takeCalls(), (Texts{
                                 "log Get info frame pointer",
                                 "PvStream.QueueBuffer",
                                 "StreamGetInfoFrame.Execute",
                                 "PvStream.RetrieveBuffer INFINITE",
                                 "log Checking stop pointers for 4 sequences.",
                                 "log Stop pointer 0: 100",
                                 "log Stop pointer 1: 536870911",
                                 "log Stop pointer 2: 0",
                                 "log Stop pointer 3: 7",
                                 "log Stop pointer 4: 0",
                                 "log Stop pointer 5: 0",
                                 "log Stop pointer 6: 0",
                                 "log Stop pointer 7: 0",
                                 "log Stop pointer 8: 0",
                                 "log Stop pointer 9: 0",
                                 "log Stop pointer 10: 0",
                                 "log Stop pointer 11: 0",
                                 "log Stop pointer 12: 0",
                                 "log Stop pointer 13: 0",
                                 "log Stop pointer 14: 0",
                                 "log Stop pointer 15: 0",
                                 "log Recorded image size 1280 x 1024 Record mode 1 Sequences 4",
                             }));
}

TEST_F(InfoFrameTest, WithoutRecordModeReportsOneSequence)
{
    read(infoFrame(0xF0000000));
    EXPECT_NE(data, nullptr);
    EXPECT_EQ(recordMode, 0U);
    EXPECT_EQ(sequences, 1U);
    EXPECT_EQ(width, 16U);
    EXPECT_EQ(height, 1U);
}

TEST_F(InfoFrameTest, ReportsSixteenSequencesForCode3)
{
    read(infoFrame(0xB0000002, {{15, 9}}));
    EXPECT_EQ(sequences, 16U);
}

TEST_F(InfoFrameTest, ReportsOneSequenceForCode5)
{
    read(infoFrame(0xD0000002, {{0, 9}}));
    EXPECT_EQ(sequences, 1U);
}

TEST_F(InfoFrameTest, ReportsNoSequencesWhenAnUnusedOneHasAStopPointer)
{
    read(infoFrame(k1280x1024 | 0x90000002, {{4, 1}}));
    EXPECT_NE(data, nullptr);
    EXPECT_EQ(sequences, 0U);
    EXPECT_EQ(width, 1280U);
    EXPECT_EQ(height, 1024U);
    EXPECT_EQ(recordMode, 1U);
    const Texts calls = s.takeCalls();
    ASSERT_EQ(calls.size(), 22U);
    EXPECT_EQ(calls[4], "log Checking stop pointers for 4 sequences.");
    EXPECT_EQ(calls[9], "log Stop pointer 4: 1");
    EXPECT_EQ(calls[21], "log Recorded image size 1280 x 1024 Record mode 1 Sequences 0");
}

TEST_F(InfoFrameTest, AcceptsAStopPointerOfTheLastUsedSequence)
{
    read(infoFrame(0x90000002, {{3, 0x1FFFFFFF}}));
    EXPECT_EQ(sequences, 4U);
}

TEST_F(InfoFrameTest, IgnoresTheUpperThreeBitsOfAStopPointer)
{
    read(infoFrame(0x90000002, {{4, 0xE0000000}}));
    EXPECT_EQ(sequences, 4U);
}

TEST_F(InfoFrameTest, InternalErrorWidensTheInterPacketDelayAndTriesAgainAtOnce)
{
    s.streamFeed().feedError(Code::ImageError);
    read(infoFrame(0));
    EXPECT_NE(data, nullptr);
    EXPECT_EQ(s.takeCallsWithoutLookups(),
              Texts{"log Get info frame pointer"} + kAttempt +
                  Texts{"log Internal error get info frame IMAGE_ERROR Retries 0"} +
                  pacedTo("2200") + kAttempt +
                  Texts{"log Checking stop pointers for 1 sequences."} + stopPointerLines() +
                  Texts{"log Recorded image size 16 x 1 Record mode 0 Sequences 1"});
}

TEST_F(InfoFrameTest, GivesUpAfterThreeInternalErrors)
{
    for (int i = 0; i < 3; ++i) {
        s.streamFeed().feedError(Code::ResendsFailure, infoFrame(k1280x1024));
    }
    read();
    expectNothing();
    EXPECT_EQ(
        s.takeCallsWithoutLookups(),
        Texts{"log Get info frame pointer"} + kAttempt +
            Texts{"log Internal error get info frame RESENDS_FAILURE Retries 0"} + pacedTo("2200") +
            kAttempt + Texts{"log Internal error get info frame RESENDS_FAILURE Retries 1"} +
            pacedTo("2400") + kAttempt +
            Texts{"log Internal error get info frame RESENDS_FAILURE Retries 2"} + pacedTo("2600"));
}

TEST_F(InfoFrameTest, InterPacketDelayStaysWidenedForTheNextRead)
{
    s.streamFeed().feedError(Code::ImageError);
    read(infoFrame(0));
    s.streamFeed().feedError(Code::ImageError);
    read(infoFrame(0));
    EXPECT_EQ(s.camera().integer("GevSCPD").value(), 2400);
}

TEST_F(InfoFrameTest, InterPacketDelayAbove5000FallsBackToTheDefault)
{
    TelvoConnectionSettings settings{};
    settings.useSettings = 1;
    settings.defaultInterPacketDelay = 4600;
    ASSERT_EQ(initialize(settings), 0);
    s.forget();
    for (int i = 0; i < 3; ++i) {
        s.streamFeed().feedError(Code::ImageError);
    }
    read();
    expectNothing();
    EXPECT_EQ(
        s.takeCallsWithoutLookups(),
        Texts{"log Get info frame pointer"} + kAttempt +
            Texts{"log Internal error get info frame IMAGE_ERROR Retries 0"} + pacedTo("4800") +
            kAttempt + Texts{"log Internal error get info frame IMAGE_ERROR Retries 1"} +
            pacedTo("5000") + kAttempt +
            Texts{"log Internal error get info frame IMAGE_ERROR Retries 2"} + pacedTo("4600"));
}

TEST_F(InfoFrameTest, ExternalErrorTakesTheBufferBackBeforeTheNextTry)
{
    s.streamFeed().feedFailure(Code::NetworkError);
    s.streamFeed().feedFailure(Code::Timeout);
    s.streamFeed().feedFailure(Code::NetworkError);
    read();
    expectNothing();
    EXPECT_EQ(s.takeCalls(),
              Texts{"log Get info frame pointer"} + kAttempt +
                  Texts{"log External error get info frame NETWORK_ERROR Retries 0"} + kTakeBack +
                  kAttempt + Texts{"log External error get info frame TIMEOUT Retries 1"} +
                  kTakeBack + kAttempt +
                  Texts{"log External error get info frame NETWORK_ERROR Retries 2"} + kTakeBack);
}

TEST_F(InfoFrameTest, AnAttemptWhoseBufferIsNotQueuedFailsSilently)
{
    s.answer("PvStream.QueueBuffer", {Code::Ok, Code::Busy, Code::StateError});
    read(infoFrame(0));
    expectNothing();
    EXPECT_EQ(s.takeCalls(),
              (Texts{"log Get info frame pointer"} + times(3, {"PvStream.QueueBuffer"})));
}

TEST_F(InfoFrameTest, NeedsTheFeature)
{
    s.camera().remove("StreamGetInfoFrame");
    rebind();
    read();
    expectNothing();
    EXPECT_EQ(s.takeCalls(), (Texts{"log Get info frame pointer", "log Function not available!"}));
}

TEST_F(InfoFrameTest, IsNotReadWithTheLinkLost)
{
    s.notifyLinkLost();
    s.forget();
    read(infoFrame(0));
    expectNothing();
    EXPECT_EQ(s.takeCalls(), (Texts{"log Get info frame pointer"}));
}

} // namespace
