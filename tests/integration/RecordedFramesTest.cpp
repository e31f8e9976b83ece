#include "DebugLog.h"
#include "Recording.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

using camera::FeatureId;
using camera::FrameFault;
using camera::FrameFaultKind;
using camera::VirtualCamera;

struct InfoFrame {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t recordMode = 4711;
    std::uint32_t sequences = 4711;
    std::vector<std::uint32_t> stopPointers{};
};

InfoFrame infoFrame(const Host& host)
{
    InfoFrame info;
    const std::uint8_t* const bytes = expGetRecordInfoFramePointer(
        &info.width, &info.height, &info.recordMode, &info.sequences, host.id());
    for (std::size_t at = 32; bytes != nullptr && at < 96; at += 4) {
        info.stopPointers.push_back(static_cast<std::uint32_t>(
            bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 | bytes[at + 3] << 24));
    }
    return info;
}

/// What the library tells about a frame.
struct SingleFrame {
    std::vector<std::uint8_t> bytes{};
    std::uint64_t header = 0;
    std::uint8_t flags = 0;
    std::uint8_t extra = 9;
};

SingleFrame singleFrame(const Host& host, std::int64_t number)
{
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    expGetWidth(&width, host.id());
    expGetHeight(&height, host.id());
    SingleFrame frame;
    const std::uint8_t* const bytes =
        expGetFramePointer(number, &frame.header, &frame.flags, &frame.extra, host.id());
    if (bytes != nullptr) {
        frame.bytes.assign(bytes, bytes + std::size_t{width} * height);
    }
    return frame;
}

class RecordedFrames : public RecordedCameraTest
{
  protected:
    std::vector<std::uint8_t> recorded(std::uint32_t index) const
    {
        return camera->recordedBytes(0, index);
    }
};

TEST_F(RecordedFrames, InfoFrameTellsOfOneSequence)
{
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(30)));
    const InfoFrame info = infoFrame(host);
    EXPECT_EQ(info.width, 64U);
    EXPECT_EQ(info.height, 48U);
    EXPECT_EQ(info.recordMode, 0U);
    EXPECT_EQ(info.sequences, 1U);
    std::vector<std::uint32_t> stopPointers(16);
    stopPointers[0] = 30;
    EXPECT_EQ(info.stopPointers, stopPointers);
    std::uint32_t frames = 0;
    EXPECT_EQ(expGetCurrentNumberOfFramesInSequence(&frames, host.id()), 0);
    EXPECT_EQ(frames, 30U);
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t offsetX = 4711;
    std::uint32_t offsetY = 4711;
    std::int64_t count = 0;
    std::int64_t reserved = 4711;
    expGetRecordInfo(&offsetX, &offsetY, &width, &height, &count, &reserved, nullptr, host.id());
    EXPECT_EQ(width, 64U);
    EXPECT_EQ(height, 48U);
    EXPECT_EQ(offsetX, 0U);
    EXPECT_EQ(offsetY, 0U);
    EXPECT_EQ(count, 30);
    EXPECT_EQ(reserved, 0);
}

TEST_F(RecordedFrames, FourSequencesAreToldAndRead)
{
    ASSERT_NO_FATAL_FAILURE(openFourSequences(4 * 100'000));
    const InfoFrame info = infoFrame(host);
    EXPECT_EQ(info.recordMode, 1U);
    EXPECT_EQ(info.sequences, 4U);
    std::vector<std::uint32_t> stopPointers(16);
    for (std::uint32_t sequence = 0; sequence < 4; ++sequence) {
        stopPointers[sequence] = recordedFrames(*camera, sequence);
    }
    EXPECT_EQ(info.stopPointers, stopPointers);
    for (std::uint32_t sequence = 0; sequence < 4; ++sequence) {
        std::uint32_t selected = sequence;
        ASSERT_EQ(expSetCurrentStreamSequence(&selected, host.id()), 0);
        EXPECT_EQ(selected, sequence);
        std::uint32_t frames = 0;
        EXPECT_EQ(expGetCurrentNumberOfFramesInSequence(&frames, host.id()), 0);
        EXPECT_EQ(frames, stopPointers[sequence]);
        EXPECT_TRUE(singleFrame(host, 3).bytes == camera->recordedBytes(sequence, 3));
    }
    std::uint32_t beyond = 20;
    EXPECT_EQ(expSetCurrentStreamSequence(&beyond, host.id()), 0);
    EXPECT_EQ(beyond, 15U);
}

TEST_F(RecordedFrames, ComeOneByOneWithTheirHeaders)
{
    camera::CameraOptions options = recordedCamera(30);
    options.settings[FeatureId::IRIGBEnable] = 1; // times of day, which need all 56 bits
    ASSERT_NO_FATAL_FAILURE(open(options));
    for (std::uint32_t index = 0; index < 30; ++index) {
        const SingleFrame frame = singleFrame(host, index);
        const auto stamp = camera->recordedFrame(0, index);
        ASSERT_TRUE(stamp);
        EXPECT_TRUE(sameFrames(frame.bytes, recorded(index), frame.bytes.size()));
        EXPECT_EQ(frame.header, stamp->time);
        EXPECT_EQ(frame.flags, 0xFF & ~(camera::kFlagRecording | camera::kFlagIrigB));
        EXPECT_EQ(frame.extra, index == 29 ? 1 : 0);
    }
}

TEST_F(RecordedFrames, ALostPacketIsAskedForAgainAtASlowerPace)
{
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(30), incompleteFrameSettings()));
    DebugLog log;
    camera->faults().add(camera::PacketFault{.packetId = 2, .blocks = 2});
    EXPECT_TRUE(singleFrame(host, 5).bytes == recorded(5));
    const auto lines = log.take();
    EXPECT_TRUE(contains(lines, "Internal error get single frame 5 IMAGE_ERROR Retries 0"));
    EXPECT_TRUE(contains(lines, "Internal error get single frame 5 IMAGE_ERROR Retries 1"));
    const std::vector<std::uint32_t> steps{200, 400};
    const auto written = camera->log().valuesWritten(FeatureId::GevSCPD);
    EXPECT_NE(std::search(written.begin(), written.end(), steps.begin(), steps.end()),
              written.end());
}

TEST_F(RecordedFrames, ALostFrameIsAskedForAgain)
{
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(30), lostFrameSettings()));
    DebugLog log;
    camera->faults().add(FrameFault{.kind = FrameFaultKind::Lose});
    EXPECT_TRUE(singleFrame(host, 5).bytes == recorded(5));
    EXPECT_TRUE(contains(log.take(), "External error get single frame 5 TIMEOUT Retries 0"));
}

TEST_F(RecordedFrames, AFrameDamagedInEveryTryIsGivenAtLast)
{
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(30), incompleteFrameSettings()));
    camera->faults().add(
        FrameFault{.kind = FrameFaultKind::StopMiddle, .amount = 2, .times = camera::kForever});
    const SingleFrame frame = singleFrame(host, 5);
    const auto whole = recorded(5);
    ASSERT_EQ(frame.bytes.size(), whole.size());
    EXPECT_TRUE(std::equal(whole.begin(), whole.begin() + 1464, frame.bytes.begin()));
    EXPECT_EQ(frame.header, camera->recordedFrame(0, 5)->time);
    EXPECT_EQ(camera->log().valuesWritten(FeatureId::StreamSingleFrame).size(), 8U);
}

TEST_F(RecordedFrames, OneBehindTheLastIsNotGiven)
{
    TelvoConnectionSettings settings = patientSettings();
    settings.requestTimeout = 100;
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(30), settings));
    EXPECT_TRUE(singleFrame(host, 30).bytes.empty());
    EXPECT_FALSE(singleFrame(host, 29).bytes.empty());
}

TEST_F(RecordedFrames, AGeometryThatHasGrownLeavesRoomBehindTheFrame)
{
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(30)));
    std::uint32_t width = 1280;
    std::uint32_t height = 1024;
    ASSERT_EQ(expSetWidth(&width, host.id()), 0);
    ASSERT_EQ(expSetHeight(&height, host.id()), 0);
    const SingleFrame frame = singleFrame(host, 5);
    ASSERT_EQ(frame.bytes.size(), 1280U * 1024);
    const auto whole = recorded(5);
    ASSERT_EQ(whole.size(), 64U * 48);
    EXPECT_TRUE(std::equal(whole.begin(), whole.end(), frame.bytes.begin()));
    EXPECT_EQ(std::count(frame.bytes.begin() + 64 * 48, frame.bytes.end(), 0),
              1280 * 1024 - 64 * 48);
}

TEST_F(RecordedFrames, AreNotGivenInLiveModeWhichGoesOnUndisturbed)
{
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(30)));
    ASSERT_EQ(expStartLiveMode(host.id()), 0);
    EXPECT_TRUE(singleFrame(host, 5).bytes.empty());
    EXPECT_TRUE(infoFrame(host).stopPointers.empty());
    EXPECT_TRUE(camera->log().valuesWritten(FeatureId::StreamSingleFrame).empty());
    std::uint8_t status = 0;
    std::uint8_t last = 0;
    EXPECT_TRUE(
        eventually([&] { return expGetPreviewImage(&status, &last, host.id()) != nullptr; }));
    EXPECT_EQ(expStopLiveMode(host.id()), 0);
    EXPECT_TRUE(singleFrame(host, 5).bytes == recorded(5));
}

TEST_F(RecordedFrames, AnInfoFrameThatDoesNotComeInThreeTriesIsGivenUp)
{
    TelvoConnectionSettings settings = patientSettings();
    settings.requestTimeout = 250;
    ASSERT_NO_FATAL_FAILURE(open(recordedCamera(30), settings));
    camera->faults().add(FrameFault{.kind = FrameFaultKind::Lose});
    EXPECT_EQ(infoFrame(host).width, 64U);
    camera->faults().add(FrameFault{.kind = FrameFaultKind::Lose, .times = 3});
    EXPECT_TRUE(infoFrame(host).stopPointers.empty());
    EXPECT_EQ(infoFrame(host).width, 64U);
}

} // namespace
