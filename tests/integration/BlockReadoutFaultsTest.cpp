#include "DebugLog.h"
#include "Recording.h"

#include "FrameRenderer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>

namespace
{

using camera::FeatureId;
using camera::FrameFault;
using camera::FrameFaultKind;

constexpr FrameRange kBlock{.sequence = 0, .first = 0, .count = 20};
constexpr std::array<std::uint32_t, 3> kFirstMiddleLast{0, 10, 19};

std::size_t countLines(const std::vector<std::string>& lines, const std::string& part)
{
    return static_cast<std::size_t>(
        std::count_if(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.find(part) != std::string::npos;
        }));
}

class BlockReadoutFaults : public RecordedCameraTest
{
  protected:
    void openBlocks(const TelvoConnectionSettings& settings = incompleteFrameSettings())
    {
        ASSERT_NO_FATAL_FAILURE(open(recordedCamera(40), settings));
        ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    }
    testing::AssertionResult readsBlock() { return readsRecorded(host, *camera, kBlock); }

    DebugLog log;
};

TEST_F(BlockReadoutFaults, AFrameThatEndsInTheMiddleMakesTheBlockBeAskedForAgain)
{
    ASSERT_NO_FATAL_FAILURE(openBlocks());
    for (const std::uint32_t position : kFirstMiddleLast) {
        camera->faults().add(
            FrameFault{.kind = FrameFaultKind::StopMiddle, .position = position, .amount = 2});
        EXPECT_TRUE(readsBlock()) << "with frame " << position << " cut off";
        EXPECT_TRUE(contains(log.take(), "=============> Internal error IMAGE_ERROR, acquired " +
                                             std::to_string(position) + " frames"));
    }
}

TEST_F(BlockReadoutFaults, ALostFrameMakesTheBlockBeAskedForAgain)
{
    ASSERT_NO_FATAL_FAILURE(openBlocks(lostFrameSettings()));
    for (const std::uint32_t position : kFirstMiddleLast) {
        camera->faults().add(FrameFault{.kind = FrameFaultKind::Lose, .position = position});
        EXPECT_TRUE(readsBlock()) << "with frame " << position << " lost";
        EXPECT_TRUE(contains(log.take(), "\n  External error TIMEOUT Only aquired 19 frames"));
    }
}

TEST_F(BlockReadoutFaults, FramesLostAgainAndAgainMakeTheCameraSlower)
{
    ASSERT_NO_FATAL_FAILURE(openBlocks(lostFrameSettings()));
    camera->faults().add(FrameFault{.kind = FrameFaultKind::Lose, .position = 19, .times = 5});
    EXPECT_TRUE(readsBlock());
    EXPECT_EQ(lastWritten(*camera, FeatureId::InternalDataRate), 4U); // 3 as configured
}

TEST_F(BlockReadoutFaults, ExcessFramesMakeTheBlockBeAskedForAgain)
{
    ASSERT_NO_FATAL_FAILURE(openBlocks());
    for (const std::uint32_t position : kFirstMiddleLast) {
        camera->faults().add(FrameFault{.kind = FrameFaultKind::Repeat, .position = position});
        camera->faults().add(FrameFault{.kind = FrameFaultKind::Repeat, .position = 5});
        ASSERT_EQ(requestBlock(host, kBlock), 0);
        // By the time that the second one is told of, the first one is counted.
        EXPECT_TRUE(eventually([&] {
            return contains(log.take(),
                            "=============> fehler CQuorReadoutThread::Function - Ignore excess "
                            "frame (count = 19), acquired 22 frames, requested were 20");
        })) << "with frame "
            << position << " repeated";
        EXPECT_TRUE(collectsRecorded(host, *camera, kBlock));
        EXPECT_EQ(countLines(log.take(), "more frames than ordered (20) Reorder frames!"), 1U);
    }
}

TEST_F(BlockReadoutFaults, AFrameBehindTheNextMakesTheBlockBeAskedForAgain)
{
    ASSERT_NO_FATAL_FAILURE(openBlocks(lostFrameSettings()));
    for (const std::uint32_t position : {0U, 10U, 18U}) {
        camera->faults().add(FrameFault{.kind = FrameFaultKind::Reorder, .position = position});
        EXPECT_TRUE(readsBlock()) << "with frame " << position << " behind the next";
        EXPECT_TRUE(contains(log.take(), "\n  External error TIMEOUT Only aquired 19 frames"));
    }
}

TEST_F(BlockReadoutFaults, ALostPacketMakesTheBlockBeAskedForAgain)
{
    ASSERT_NO_FATAL_FAILURE(openBlocks());
    for (const std::uint32_t packet : {0U, 1U, 2U, 3U, 4U}) { // leader, three of data, trailer
        camera->faults().add(camera::PacketFault{.packetId = packet});
        EXPECT_TRUE(readsBlock()) << "with packet " << packet << " lost";
        EXPECT_TRUE(contains(log.take(), "=============> Internal error IMAGE_ERROR, "
                                         "acquired 0 frames"));
    }
}

TEST_F(BlockReadoutFaults, RepeatedReorderedAndDelayedPacketsDoNoHarm)
{
    TelvoConnectionSettings settings = patientSettings();
    settings.packetSize = 1500;
    ASSERT_NO_FATAL_FAILURE(openBlocks(settings));
    camera->faults().setPacketRates(
        {.repeat = 0.1, .reorder = 0.1, .delay = 0.01, .pause = std::chrono::microseconds(500)});
    for (int i = 0; i < 10; ++i) {
        EXPECT_TRUE(readsBlock());
    }
    EXPECT_EQ(countLines(log.take(), "Request frames"), 10U);
}

TEST_F(BlockReadoutFaults, ACameraThatFallsSilentIsAskedAgain)
{
    ASSERT_NO_FATAL_FAILURE(openBlocks());
    for (const std::uint32_t position : kFirstMiddleLast) {
        camera->faults().add(FrameFault{
            .kind = FrameFaultKind::Silence, .position = position, .amount = 2, .pause = 600ms});
        EXPECT_TRUE(readsBlock()) << "with silence in frame " << position;
        EXPECT_TRUE(contains(log.take(), "=============> Internal error IMAGE_ERROR, acquired " +
                                             std::to_string(position) + " frames"));
    }
}

TEST_F(BlockReadoutFaults, ASerialLineThatTakesTooFewBytesIsGivenUpForFeatures)
{
    ASSERT_NO_FATAL_FAILURE(openBlocks());
    EXPECT_TRUE(readsBlock());
    log.take();
    camera->faults().limitSerial(36);
    EXPECT_TRUE(readsBlock());
    const auto lines = log.take();
    EXPECT_EQ(countLines(lines, "36 only bytes written instead of requested 37"), 3U);
    EXPECT_TRUE(contains(lines, "Readout mode fallback: Non serial read!"));
    camera->faults().clear();
    const auto serial = camera->log().valuesWritten(FeatureId::SerialPort0TransmitLength);
    EXPECT_TRUE(readsRecorded(host, *camera, {.first = 20, .count = 20}));
    EXPECT_EQ(camera->log().valuesWritten(FeatureId::SerialPort0TransmitLength), serial);
    EXPECT_EQ(lastWritten(*camera, FeatureId::StreamEndNumber), 39U);
}

TEST_F(BlockReadoutFaults, ARangeThatIsRefusedInOneOrderIsSetInTheOther)
{
    ASSERT_NO_FATAL_FAILURE(openBlocks(featureSettings()));
    camera->faults().requireOrderedRange(true);
    for (const std::uint32_t first : {20U, 0U, 10U, 30U}) {
        EXPECT_TRUE(readsRecorded(host, *camera, {.first = first, .count = 10}));
    }
    const auto writes = camera->log().writes();
    EXPECT_TRUE(std::any_of(writes.begin(), writes.end(), [](const camera::FeatureWrite& write) {
        return write.feature == FeatureId::StreamEndNumber &&
               write.status != gige::wire::GvcpStatus::Success;
    }));
}

TEST_F(BlockReadoutFaults, ACounterThatJumpsIsReportedAndDelivered)
{
    struct Jump {
        std::uint32_t position;
        std::size_t gaps; // at the frame and behind it
    };
    ASSERT_NO_FATAL_FAILURE(openBlocks());
    for (const Jump& jump : {Jump{0, 1}, Jump{10, 2}, Jump{19, 1}}) {
        camera->faults().add(FrameFault{
            .kind = FrameFaultKind::JumpCounter, .position = jump.position, .amount = 7});
        ASSERT_EQ(requestBlock(host, kBlock), 0);
        const Block block = collectBlock(host, *camera);
        auto stamp = *camera->recordedFrame(0, jump.position);
        stamp.number += 7;
        const auto frame = camera::renderFrame(camera->recordedView(), stamp);
        auto expected = recordedBytes(*camera, kBlock);
        std::copy(frame.begin(), frame.end(), &expected[jump.position * frame.size()]);
        EXPECT_TRUE(sameFrames(block.bytes, expected, frame.size()));
        const auto lines = log.take();
        EXPECT_EQ(countLines(lines, "Sequenzfehler, Vorg\xE4"
                                    "nger frame = "),
                  jump.gaps);
        EXPECT_TRUE(contains(
            lines, "======> CQuorGrabber::getRecordedFrameBlockResult: Frame Nr. " +
                       std::to_string(jump.position) +
                       " im Block hat Framcounter = " + std::to_string(jump.position + 7)));
    }
}

TEST_F(BlockReadoutFaults, NowAndThenALostPacketIsHealedByAskingAgain)
{
    TelvoConnectionSettings settings = incompleteFrameSettings();
    settings.packetSize = 576; // six packets of data in a frame
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(1000), settings));
    camera->faults().setPacketRates({.lose = 1.0 / 20'000});
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    std::size_t healed = 0;
    for (std::uint32_t block = 0; block < 500 && healed < 2; ++block) {
        const FrameRange range{.first = 100 * (block % 10), .count = 100};
        ASSERT_TRUE(readsRecorded(host, *camera, range));
        healed += countLines(log.take(), "Internal error IMAGE_ERROR");
    }
    EXPECT_GE(healed, 2U);
}

class BlockReadoutUnderLoss : public RecordedCameraTest, public testing::WithParamInterface<double>
{
};

TEST_P(BlockReadoutUnderLoss, DeliversEveryByteWithResends)
{
    camera::CameraOptions options = recordedCamera(0);
    options.memoryBytes = 60 * 320 * 240;
    options.settings[FeatureId::Width] = 320;
    options.settings[FeatureId::Height] = 240;
    TelvoConnectionSettings settings = patientSettings();
    settings.packetSize = 1500;
    settings.maximumPendingResends = 1000;
    ASSERT_NO_FATAL_FAILURE(open(options, settings));
    ASSERT_EQ(recordedFrames(*camera, 0), 60U);
    camera->faults().setPacketRates({.lose = GetParam()});
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    for (std::uint32_t first = 0; first < 60; first += 20) {
        EXPECT_TRUE(readsRecorded(host, *camera, {.first = first, .count = 20}));
    }
    EXPECT_GT(camera->log().counters().resentPackets, 0U);
}

INSTANTIATE_TEST_SUITE_P(, BlockReadoutUnderLoss, testing::Values(0.01, 0.1), [](const auto& loss) {
    return std::to_string(std::lround(loss.param * 100)) + "Percent";
});

} // namespace
