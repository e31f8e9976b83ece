#include "DebugLog.h"
#include "Recording.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace
{

using camera::FeatureId;

/// What the stop of a block transfer spends by its own rules: it looks for the camera's idle state
/// after 500 ms, and playback then sets the packet delay, with its pause of 100 ms.
constexpr auto kPrescribedStopTime = 600ms;

class BlockReadout : public RecordedCameraTest
{
  protected:
    /// Asks for 100 frames that take seconds, and waits until some have been sent.
    void beMidBlock()
    {
        camera->faults().setPacketRates({.delay = 1, .pause = 10ms});
        mBlocksBefore = camera->log().counters().blocks;
        ASSERT_EQ(requestBlock(host, {.count = 100}), 0);
        ASSERT_TRUE(eventually([&] { return framesSent() >= 2; }));
    }
    std::uint64_t framesSent() const { return camera->log().counters().blocks - mBlocksBefore; }

  private:
    std::uint64_t mBlocksBefore = 0;
};

class BlockReadoutBy : public BlockReadout,
                       public testing::WithParamInterface<TelvoConnectionSettings>
{
};

TEST_P(BlockReadoutBy, GivesAWholeRecording)
{
    camera::CameraOptions options = recordedCamera(2500);
    options.settings[FeatureId::AcquisitionFrameRateRaw] = 50'000;
    ASSERT_NO_FATAL_FAILURE(open(options, GetParam()));
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    std::uint32_t perBlock = 0;
    EXPECT_EQ(expGetFrameBlockSize(&perBlock, host.id()), 0);
    EXPECT_EQ(perBlock, 1000U);
    EXPECT_TRUE(readsWholeSequence(host, *camera, 0));
    const bool isSerial = GetParam().requestMode == 1;
    EXPECT_EQ(camera->log().valuesWritten(FeatureId::StreamSequenceStart).size(), isSerial ? 0 : 3);
}

TEST_P(BlockReadoutBy, GivesFourSequences)
{
    ASSERT_NO_FATAL_FAILURE(openFourSequences(4 * 100, GetParam()));
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    for (std::uint32_t sequence = 0; sequence < 4; ++sequence) {
        EXPECT_TRUE(readsWholeSequence(host, *camera, sequence));
    }
    // Sequence 0 is selected by the start alone: the camera still reads from the last one.
    ASSERT_EQ(requestBlock(host, {.sequence = 0, .first = 0, .count = 5}), 0);
    EXPECT_TRUE(collectsRecorded(host, *camera, {.sequence = 3, .first = 0, .count = 5}));
}

INSTANTIATE_TEST_SUITE_P(, BlockReadoutBy, testing::Values(patientSettings(), featureSettings()),
                         [](const auto& settings) {
                             return settings.param.requestMode == 1 ? "SerialLine" : "Features";
                         });

TEST_F(BlockReadout, TellsTheHeaderOfEachFrameInTheBlock)
{
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(30)));
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    ASSERT_EQ(requestBlock(host, {.first = 10, .count = 20}), 0);
    std::int64_t frames = 0;
    std::uint32_t status = 4711;
    const std::uint8_t* const block =
        expGetRecordedFrameBlockResult(nullptr, &frames, &status, host.id());
    ASSERT_NE(block, nullptr);
    for (std::uint32_t i = 0; i < 20; ++i) {
        std::uint64_t header = 0;
        std::uint8_t flags = 0;
        std::uint8_t extra = 9;
        EXPECT_EQ(expGetRecordedFrameBlockInfo(nullptr, i, &header, &flags, &extra, host.id()),
                  block + std::size_t{i} * 64 * 48);
        const auto stamp = camera->recordedFrame(0, 10 + i);
        EXPECT_EQ(header, stamp->time);
        EXPECT_EQ(flags, 0xFF & ~stamp->flags);
        EXPECT_EQ(extra, stamp->last ? 1 : 0);
    }
}

TEST_F(BlockReadout, TheFrameCounterMayWrap)
{
    camera::CameraOptions options = recordedCamera(0);
    options.memoryBytes = 66'000 * 16 * 16;
    options.settings = {{FeatureId::Width, 16},
                        {FeatureId::Height, 16},
                        {FeatureId::AcquisitionFrameRateRaw, 200'000}};
    ASSERT_NO_FATAL_FAILURE(open(options));
    ASSERT_EQ(recordedFrames(*camera, 0), 66'000U);
    DebugLog log;
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    EXPECT_TRUE(readsWholeSequence(host, *camera, 0));
    const auto lines = log.take();
    EXPECT_TRUE(std::none_of(lines.begin(), lines.end(), [](const std::string& line) {
        return line.find("Sequenzfehler") != std::string::npos;
    }));
}

TEST_F(BlockReadout, AnAbortEndsTheWaitInMidBlock)
{
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(200)));
    DebugLog log;
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    ASSERT_NO_FATAL_FAILURE(beMidBlock());
    std::thread other([&] {
        eventually([&] { return framesSent() >= 5; });
        EXPECT_EQ(expAbortCurrentFrameBlockRequest(host.id()), 0);
    });
    const Block aborted = collectBlock(host, *camera);
    EXPECT_LT(framesSent(), 100U);
    other.join();
    EXPECT_EQ(aborted.status, 1U);
    EXPECT_TRUE(aborted.bytes.empty());
    EXPECT_EQ(collectBlock(host, *camera).status, 1U); // until the next request
    // The frames on their way still come; after them a block can be asked for as before.
    camera->faults().clear();
    EXPECT_TRUE(eventually([&] { return contains(log.take(), "     Acquired 100 frames"); }));
    EXPECT_TRUE(readsRecorded(host, *camera, {.first = 100, .count = 100}));
}

TEST_F(BlockReadout, ALostLinkEndsTheWaitInMidBlockAtOnce)
{
    using Clock = std::chrono::steady_clock;
    static std::atomic<Clock::time_point> lostAt;
    lostAt = Clock::time_point{};
    TelvoConnectionSettings settings = patientSettings();
    settings.heartbeatTimeout = 1000;
    settings.heartbeatInterval = 200;
    settings.answerTimeout = 200;
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(200), settings));
    expSetChangedCallback([](std::int32_t) { lostAt = Clock::now(); }, host.id());
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    ASSERT_NO_FATAL_FAILURE(beMidBlock());
    camera->faults().setSilent(true);
    const Block lost = collectBlock(host, *camera);
    const auto ended = Clock::now();
    ASSERT_TRUE(eventually([] { return lostAt.load() != Clock::time_point{}; }));
    EXPECT_LT(ended - lostAt.load(), 2s);
    EXPECT_TRUE(lost.bytes.empty());
    EXPECT_EQ(lost.status, 1U);
    EXPECT_EQ(collectBlock(host, *camera).status, 4711U); // untouched
    EXPECT_EQ(requestBlock(host, {.count = 100}), 1);
    const std::size_t writes = camera->log().writes().size();
    EXPECT_EQ(expStopFrameBlockTransfer(host.id()), 0);
    EXPECT_EQ(camera->log().writes().size(), writes);
}

TEST_F(BlockReadout, AStopIsQuickWhileNothingIsAskedFor)
{
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(30)));
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    EXPECT_TRUE(readsRecorded(host, *camera, {.count = 30}));
    std::int32_t stopped = -1;
    const auto time = timeOf([&] { stopped = expStopFrameBlockTransfer(host.id()); });
    EXPECT_EQ(stopped, 0);
    EXPECT_LT(time - kPrescribedStopTime, 500ms);
    RecordProperty("stop_ms", static_cast<int>(time.count()));
}

TEST_F(BlockReadout, AStopInMidBlockLeavesTheCameraReadyForTheNextTransfer)
{
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(200)));
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    ASSERT_NO_FATAL_FAILURE(beMidBlock());
    std::int32_t stopped = -1;
    const auto time = timeOf([&] { stopped = expStopFrameBlockTransfer(host.id()); });
    EXPECT_EQ(stopped, 0);
    EXPECT_LT(time - kPrescribedStopTime, 500ms);
    camera->faults().clear();
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    EXPECT_TRUE(readsRecorded(host, *camera, {.first = 50, .count = 100}));
}

TEST_F(BlockReadout, AStopFromAnotherThreadEndsTheWaitInMidBlock)
{
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(200)));
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    ASSERT_NO_FATAL_FAILURE(beMidBlock());
    std::thread other([&] {
        eventually([&] { return framesSent() >= 5; });
        EXPECT_EQ(expStopFrameBlockTransfer(host.id()), 0);
    });
    const Block stopped = collectBlock(host, *camera);
    other.join();
    EXPECT_EQ(stopped.status, 0xFFFFFFFF);
    EXPECT_TRUE(stopped.bytes.empty());
    camera->faults().clear();
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    EXPECT_TRUE(readsRecorded(host, *camera, {.first = 50, .count = 100}));
}

TEST_F(BlockReadout, ADisconnectInMidBlockFreesTheCamera)
{
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(200)));
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    ASSERT_NO_FATAL_FAILURE(beMidBlock());
    std::int32_t disconnected = -1;
    const auto time = timeOf([&] { disconnected = host.disconnect(); });
    EXPECT_EQ(disconnected, 0);
    EXPECT_LT(time, 2000ms);
    EXPECT_EQ(lastWritten(*camera, FeatureId::GevSCPHostPort), 0U);
    EXPECT_EQ(lastWritten(*camera, FeatureId::GevCCP), 0U);
    EXPECT_EQ(host.connect(*camera), 0);
}

} // namespace
