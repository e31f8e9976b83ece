// How the readout thread answers stream errors: clearing, pacing the camera, asking once more.
#include "BlockTransferTest.h"

#include <algorithm>

namespace
{

const std::string kRetrieve = "PvPipeline.RetrieveNextBuffer ";
const std::string kRelease = "PvPipeline.ReleaseBuffer";
const std::string kCleared = " times mPipeline->RetrieveNextBuffer()/ReleaseBuffer() for clearing";

class ReadoutErrorTest : public BlockTransferTest
{
  protected:
    /// Asks for the frames from 0 on, of which `acquired` have come.
    void begin(std::uint32_t count, std::uint32_t acquired)
    {
        ASSERT_EQ(request(0, count), 0);
        for (std::uint32_t i = 0; i < acquired; ++i) {
            feed({static_cast<std::uint16_t>(i)});
        }
        s.forget();
    }

    std::function<void()> arrive(int frames)
    {
        return [this, frames] {
            for (int i = 0; i < frames; ++i) {
                s.pipelineFeed().feedFrame(frame(1));
            }
        };
    }

    /// The values written to a feature by the worker since the last call.
    Texts workersWrites(const std::string& feature)
    {
        Texts calls = s.takeWorkerCalls();
        std::erase_if(calls, [&](const std::string& call) {
            return !call.starts_with(feature + ".SetValue ");
        });
        return calls;
    }
};

Texts repeated(int last)
{
    return {"log \nRequest frames: 0 - " + std::to_string(last),
            "StreamEndNumber.SetValue " + std::to_string(last), "StreamStartNumber.SetValue 0",
            "StreamSequenceStart.Execute", kRetrieve + "INFINITE"};
}

std::string internalError(int acquired)
{
    return "log =============> Internal error IMAGE_ERROR, acquired " + std::to_string(acquired) +
           " frames";
}

std::string afterInternal(const std::string& counts)
{
    return "log =============> After internal error, " + counts + kCleared;
}

std::string externalError(int acquired)
{
    return "log \n  External error TIMEOUT Only aquired " + std::to_string(acquired) + " frames";
}

std::string afterExternal(const std::string& counts)
{
    return "log =============> After external error, " + counts + kCleared;
}

Texts sentDelay(const std::string& delay)
{
    return {"Get GevSCPD", "GevSCPD.SetValue " + delay, "Sleep 100",
            "log -- GEN setInterPacketDelay " + delay};
}

Texts sentRate(const std::string& rate)
{
    return {"Get InternalDataRate", "InternalDataRate.IsAvailable",
            "log -- GEN SetOutputDatarate Value: " + rate, "InternalDataRate.SetValue " + rate};
}

TEST_F(ReadoutErrorTest, InternalErrorClearsAndAsksForTheWholeBlockAgain)
{
    start();
    begin(2, 1);
    feedError(Code::ImageError);
    EXPECT_EQ(s.takeWorkerCalls(), Texts{internalError(1)} + times(11, {kRetrieve + "4"}) +
                                       Texts{afterInternal("11 / 0")} + repeated(1));
}

TEST_F(ReadoutErrorTest, ExternalErrorClearsAndAsksForTheWholeBlockAgain)
{
    start();
    begin(2, 1);
    feedFailure(Code::Timeout);
    EXPECT_EQ(s.takeWorkerCalls(),
              Texts{externalError(1)} + times(11, {kRetrieve + "4"}) + repeated(1));
}

TEST_F(ReadoutErrorTest, AsksAgainOverTheSerialLine)
{
    start(serial());
    begin(2, 1);
    feedFailure(Code::NetworkError);
    EXPECT_EQ(s.takeWorkerCalls(),
              (Texts{"log \n  External error NETWORK_ERROR Only aquired 1 frames"} +
               times(11, {kRetrieve + "4"}) +
               Texts{"log \nRequest frames: 0 - 1",
                     "log Write data :GW07b000000001:GW07a800000000:GW07f8 Count 37",
                     "PvSerialPortIPEngine.Write :GW07b000000001:GW07a800000000:GW07f8",
                     "log 37 bytes written", kRetrieve + "INFINITE"}));
}

TEST_F(ReadoutErrorTest, TheBlockIsRebuiltFromItsFirstFrame)
{
    start();
    begin(3, 2);
    feedError(Code::ResendsFailure);
    feed({50, 51, 52});
    const Block block = collect();
    EXPECT_EQ(block.status, 0U);
    EXPECT_EQ(block.frames, 3);
    ASSERT_NE(block.data, nullptr);
    EXPECT_EQ(block.data[4], 50);
    EXPECT_EQ(block.data[kFrameSize + 4], 51);
    EXPECT_EQ(block.data[2 * kFrameSize + 4], 52);
}

TEST_F(ReadoutErrorTest, ABlockIsAskedForAgainAsOftenAsItTakes)
{
    start();
    begin(1, 0);
    for (int i = 0; i < 40; ++i) {
        feedError(Code::ImageError);
        feedFailure(Code::Timeout);
    }
    const Texts lines = s.takeWorkerLog();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "\nRequest frames: 0 - 0\r\n"), 80);
    feed({9});
    EXPECT_EQ(collect().frames, 1);
}

TEST_F(ReadoutErrorTest, AnAbortLeavesTheLoopOfErrors)
{
    start();
    begin(1, 0);
    feedError(Code::ImageError);
    expAbortCurrentFrameBlockRequest(kCamera);
    EXPECT_EQ(collect().status, 1U);
}

TEST_F(ReadoutErrorTest, ExternalErrorIsIgnoredWithoutARequest)
{
    start();
    feedFailure(Code::Timeout);
    EXPECT_EQ(s.takeWorkerCalls(), Texts{kRetrieve + "INFINITE"});
}

TEST_F(ReadoutErrorTest, ExternalErrorIsIgnoredAfterTheBlock)
{
    start();
    begin(1, 1);
    feedFailure(Code::Timeout);
    EXPECT_EQ(s.takeWorkerCalls(), Texts{kRetrieve + "INFINITE"});
}

TEST_F(ReadoutErrorTest, BuffersWithErrorsReturnOnceHalfOfThePipelineIsKeptBack)
{
    ASSERT_EQ(connect(), 0);
    ASSERT_EQ(initialize(), 0); // 1280 x 1024: twelve buffers
    ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
    ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    begin(1, 0);
    for (int i = 0; i < 5; ++i) {
        feedError(Code::ImageError);
    }
    const Texts calls = s.takeWorkerCalls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), kRelease), 0);
    feedError(Code::ImageError);
    EXPECT_EQ(s.takeWorkerCalls(), Texts{internalError(0)} + times(6, {kRelease}) +
                                       times(11, {kRetrieve + "4"}) +
                                       Texts{afterInternal("11 / 0")} + repeated(0));
}

// Clearing

TEST_F(ReadoutErrorTest, ClearingWaitsLongerAndPausesWhileFramesAreMissing)
{
    start();
    begin(4, 1);
    at(kRetrieve + "4", {arrive(1)});
    feedFailure(Code::Timeout);
    Texts pauses;
    for (const char* const misses : {"5", "6", "7", "8", "9"}) {
        pauses = pauses + Texts{kRetrieve + "12",
                                std::string("log =============> due to external error, sleep ( ") +
                                    misses + " )",
                                std::string("Sleep ") + misses};
    }
    EXPECT_EQ(s.takeWorkerCalls(),
              (Texts{externalError(1)} + Texts{kRetrieve + "4", kRelease} +
               times(5, {kRetrieve + "12"}) + pauses +
               Texts{kRetrieve + "12", afterExternal("12 / 1")} + repeated(3)));
}

TEST_F(ReadoutErrorTest, ClearingAfterAnInternalErrorPausesWithItsOwnLine)
{
    start();
    begin(4, 1);
    at(kRetrieve + "4", {arrive(1)});
    feedError(Code::ImageError);
    Texts pauses;
    for (const char* const misses : {"5", "6", "7", "8", "9"}) {
        pauses =
            pauses + Texts{kRetrieve + "12",
                           std::string("log =============> due to external after internal error, "
                                       "sleep ( ") +
                               misses + " )",
                           std::string("Sleep ") + misses};
    }
    EXPECT_EQ(s.takeWorkerCalls(),
              (Texts{internalError(1)} + Texts{kRetrieve + "4", kRelease} +
               times(5, {kRetrieve + "12"}) + pauses +
               Texts{kRetrieve + "12", afterInternal("12 / 1")} + repeated(3)));
}

TEST_F(ReadoutErrorTest, ClearingIsShortOnceAllFramesAreHere)
{
    start();
    begin(3, 1);
    at(kRetrieve + "4", {arrive(2)});
    feedFailure(Code::Timeout);
    EXPECT_EQ(s.takeWorkerCalls(),
              (Texts{externalError(1)} +
               Texts{kRetrieve + "4", kRelease, kRetrieve + "12", kRelease} +
               times(11, {kRetrieve + "2"}) + Texts{afterExternal("13 / 2")} + repeated(2)));
}

TEST_F(ReadoutErrorTest, ClearingCountsItsMissesAnewAfterEachBuffer)
{
    start();
    begin(2, 1);
    at(kRetrieve + "4", {[] {}, [] {}, [] {}, arrive(1)});
    feedFailure(Code::Timeout);
    EXPECT_EQ(s.takeWorkerCalls(), Texts{externalError(1)} + times(4, {kRetrieve + "4"}) +
                                       Texts{kRelease} + times(11, {kRetrieve + "2"}) +
                                       Texts{afterExternal("15 / 1")} + repeated(1));
}

TEST_F(ReadoutErrorTest, ClearingMakesAtLeastFiftyPasses)
{
    start();
    begin(2, 1);
    at(kRetrieve + "4", {arrive(50)});
    feedFailure(Code::Timeout);
    EXPECT_EQ(s.takeWorkerCalls(), (Texts{externalError(1), kRetrieve + "4", kRelease} +
                                    times(49, {kRetrieve + "2", kRelease}) +
                                    Texts{afterExternal("50 / 50")} + repeated(1)));
}

TEST_F(ReadoutErrorTest, ClearingMakesFivePassesForEveryFrameOrderedLessThoseAcquired)
{
    start();
    begin(12, 1);
    at(kRetrieve + "4", {arrive(59)});
    feedError(Code::ImageError);
    EXPECT_EQ(s.takeWorkerCalls(),
              (Texts{internalError(1), kRetrieve + "4", kRelease} +
               times(10, {kRetrieve + "12", kRelease}) + times(48, {kRetrieve + "2", kRelease}) +
               Texts{afterInternal("59 / 59")} + repeated(11)));
}

// Pacing

TEST_F(ReadoutErrorTest, TheFirstExternalErrorAfterAnInternalOneWidensTheInterPacketDelay)
{
    start(settings(0, 40));
    begin(2, 0);
    feedError(Code::ImageError);
    s.forget();
    feedFailure(Code::Timeout);
    EXPECT_EQ(s.takeWorkerCalls(), sentDelay("240") + Texts{externalError(0)} +
                                       times(11, {kRetrieve + "4"}) + repeated(1));
    feedFailure(Code::Timeout);
    EXPECT_EQ(s.takeWorkerCalls(),
              Texts{externalError(0)} + times(11, {kRetrieve + "4"}) + repeated(1));
}

TEST_F(ReadoutErrorTest, TheInterPacketDelayFallsBackToTheOutputDelayAbove5000)
{
    start(settings(0, 4700));
    begin(2, 0);
    for (int i = 0; i < 3; ++i) {
        feedError(Code::ImageError);
        feedFailure(Code::Timeout);
    }
    EXPECT_EQ(workersWrites("GevSCPD"),
              (Texts{"GevSCPD.SetValue 4900", "GevSCPD.SetValue 4700", "GevSCPD.SetValue 4900"}));
}

TEST_F(ReadoutErrorTest, TheInterPacketDelayMayReach5000)
{
    start(settings(0, 4800));
    begin(2, 0);
    for (int i = 0; i < 2; ++i) {
        feedError(Code::ImageError);
        feedFailure(Code::Timeout);
    }
    EXPECT_EQ(workersWrites("GevSCPD"), (Texts{"GevSCPD.SetValue 5000", "GevSCPD.SetValue 4800"}));
}

TEST_F(ReadoutErrorTest, ExternalErrorsRaiseTheDataRateAfterMoreThanThreeInARow)
{
    start();
    begin(2, 0);
    for (int i = 0; i < 4; ++i) {
        feedFailure(Code::Timeout);
    }
    EXPECT_EQ(workersWrites("InternalDataRate"), Texts{});
    feedFailure(Code::Timeout);
    EXPECT_EQ(s.takeWorkerCalls(),
              sentRate("4") + Texts{externalError(0)} + times(11, {kRetrieve + "4"}) + repeated(1));
    for (int i = 0; i < 3; ++i) { // the one that raised it counts
        feedFailure(Code::Timeout);
    }
    EXPECT_EQ(workersWrites("InternalDataRate"), Texts{});
    feedFailure(Code::Timeout);
    EXPECT_EQ(workersWrites("InternalDataRate"), Texts{"InternalDataRate.SetValue 5"});
}

TEST_F(ReadoutErrorTest, InternalErrorsCountTowardsTheDataRate)
{
    start();
    begin(2, 0);
    for (int i = 0; i < 3; ++i) {
        feedError(Code::ImageError);
    }
    feedFailure(Code::Timeout); // the fourth error: widens the delay
    EXPECT_EQ(workersWrites("InternalDataRate"), Texts{});
    feedFailure(Code::Timeout);
    EXPECT_EQ(workersWrites("InternalDataRate"), Texts{"InternalDataRate.SetValue 4"});
}

TEST_F(ReadoutErrorTest, ACompleteBlockForgetsTheErrorsBeforeIt)
{
    start();
    begin(1, 0);
    for (int i = 0; i < 4; ++i) {
        feedFailure(Code::Timeout);
    }
    feed({1});
    ASSERT_EQ(collect().status, 0U);
    begin(1, 0);
    for (int i = 0; i < 4; ++i) {
        feedFailure(Code::Timeout);
    }
    EXPECT_EQ(workersWrites("InternalDataRate"), Texts{});
    feedFailure(Code::Timeout);
    EXPECT_EQ(workersWrites("InternalDataRate"), Texts{"InternalDataRate.SetValue 4"});
}

TEST_F(ReadoutErrorTest, BeyondTheHighestDataRateTheThreadLeavesTheSerialLineForGood)
{
    start(settings(1, 40, 14));
    begin(2, 0);
    for (int i = 0; i < 8; ++i) {
        feedFailure(Code::Timeout);
    }
    EXPECT_EQ(workersWrites("InternalDataRate"), Texts{"InternalDataRate.SetValue 15"});
    feedFailure(Code::Timeout);
    EXPECT_EQ(s.takeWorkerCalls(), sentDelay("2000") + sentRate("14") + Texts{externalError(0)} +
                                       times(11, {kRetrieve + "4"}) + repeated(1));
    EXPECT_EQ(request(5, 1), 0);
    EXPECT_EQ(s.takeCalls(),
              (Texts{"log \nRequest frames: 5 - 5", "StreamEndNumber.SetValue 5",
                     "StreamStartNumber.SetValue 5", "StreamSequenceStart.Execute"}));
}

TEST_F(ReadoutErrorTest, ARepeatThatTheCameraRefusesIsNotPending)
{
    start();
    begin(2, 0);
    s.answerAlways("StreamEndNumber.SetValue", Code::Busy);
    feedFailure(Code::Timeout);
    s.forget();
    feedFailure(Code::Timeout);
    EXPECT_EQ(s.takeWorkerCalls(), Texts{kRetrieve + "INFINITE"});
}

} // namespace
