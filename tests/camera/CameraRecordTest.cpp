#include "FrameRenderer.h"
#include "RawHost.h"
#include "VirtualCamera.h"

#include <array>
#include <gtest/gtest.h>

#include <thread>

namespace camera
{
namespace
{

using namespace std::chrono_literals;

constexpr std::uint32_t kStateIdle32 = 0;
constexpr std::uint32_t kStateLive32 = 1;
constexpr std::uint32_t kStateRecording32 = 2;
constexpr std::uint32_t kStateFlashWrite32 = 3;

struct RecordSetup {
    explicit RecordSetup(CameraOptions options) : camera(std::move(options))
    {
        EXPECT_FALSE(camera.start());
        host.openStream();
        host.writeRegister(0x0D08, 0); // no packet delay
        host.write(FeatureId::Width, 64);
        host.write(FeatureId::Height, 32); // 2048 bytes
        host.write(FeatureId::AcquisitionFrameRateRaw, 1000);
    }
    explicit RecordSetup(const std::string& address)
        : RecordSetup(CameraOptions{.address = address})
    {
    }
    bool waitFor(FeatureId feature, std::uint32_t value)
    {
        const auto limit = std::chrono::steady_clock::now() + 10s;
        while (host.read(feature) != value) {
            if (std::chrono::steady_clock::now() > limit) {
                return false;
            }
            std::this_thread::sleep_for(5ms);
        }
        return true;
    }
    void record(std::chrono::milliseconds time)
    {
        EXPECT_EQ(host.execute(FeatureId::RecordStart), 0U);
        std::this_thread::sleep_for(time);
        EXPECT_EQ(host.execute(FeatureId::RecordStop), 0U);
    }

    VirtualCamera camera;
    RawHost host{camera.options().address};
};

std::uint32_t little(const std::vector<std::uint8_t>& bytes, std::size_t at)
{
    return std::uint32_t{bytes[at]} | (std::uint32_t{bytes[at + 1]} << 8) |
           (std::uint32_t{bytes[at + 2]} << 16) | (std::uint32_t{bytes[at + 3]} << 24);
}

TEST(CameraRecord, RecordsWithoutAnyPreview)
{
    RecordSetup setup("127.0.4.80");
    EXPECT_EQ(setup.host.execute(FeatureId::RecordStart), 0U);
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), kStateRecording32);
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(setup.host.execute(FeatureId::RecordStop), 0U);
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), kStateIdle32);
    EXPECT_GE(setup.host.read(FeatureId::RecordNumberOfFrames), 50U);
    EXPECT_EQ(setup.host.read(FeatureId::RecordLastRecWidth), 64U);
    EXPECT_EQ(setup.host.read(FeatureId::RecordLastRecHeight), 32U);
}

TEST(CameraRecord, ShowsWhatItRecords)
{
    RecordSetup setup("127.0.4.81");
    setup.host.execute(FeatureId::AcquisitionStart);
    setup.host.execute(FeatureId::RecordStart);
    ReceivedBlock block;
    do {
        block = setup.host.receiveBlock();
        ASSERT_TRUE(block.hasTrailer);
    } while ((block.image[7] & kFlagRecording) == 0);
    setup.host.execute(FeatureId::RecordStop);
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), kStateLive32);
    auto recorded = setup.camera.recordedBytes(0, little(block.image, 0));
    recorded.at(15) = 0; // that it would be the last one was not known yet
    EXPECT_EQ(block.image, recorded);
}

TEST(CameraRecord, SendsSingleFramesTrueToEveryByte)
{
    RecordSetup setup("127.0.4.82");
    setup.record(30ms);
    setup.host.startPlayback();
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), kStateIdle32);
    const std::uint32_t last = setup.host.read(FeatureId::RecordNumberOfFrames) - 1;
    for (const std::uint32_t index : {0U, 7U, last}) {
        EXPECT_EQ(setup.host.write(FeatureId::StreamSingleFrame, index), 0U);
        const ReceivedBlock block = setup.host.receiveBlock();
        ASSERT_TRUE(block.hasTrailer);
        EXPECT_EQ(block.image, setup.camera.recordedBytes(0, index));
        EXPECT_EQ(little(block.image, 0), index);
        EXPECT_EQ(block.image[15], index == last ? 1 : 0);
    }
    EXPECT_EQ(setup.host.write(FeatureId::StreamSingleFrame, last + 1), 0x8002U);
}

TEST(CameraRecord, SendsARangeByFeaturesAndBySerial)
{
    RecordSetup setup("127.0.4.83");
    setup.record(60ms);
    setup.host.startPlayback();
    const auto expectRange = [&setup](std::uint32_t first, std::uint32_t last) {
        for (std::uint32_t index = first; index <= last; ++index) {
            const ReceivedBlock block = setup.host.receiveBlock();
            ASSERT_TRUE(block.hasTrailer);
            ASSERT_EQ(block.image, setup.camera.recordedBytes(0, index));
        }
        EXPECT_TRUE(setup.host.receivePacket(50ms).empty());
    };
    EXPECT_EQ(setup.host.write(FeatureId::StreamEndNumber, 29), 0U);
    EXPECT_EQ(setup.host.write(FeatureId::StreamStartNumber, 10), 0U);
    EXPECT_EQ(setup.host.execute(FeatureId::StreamSequenceStart), 0U);
    expectRange(10, 29);
    EXPECT_EQ(setup.host.writeSerial(":GW07b000000009:GW07a800000003:GW07f8"), 37U);
    expectRange(3, 9);
}

TEST(CameraRecord, FramesOfARangeWaitForTheCable)
{
    RecordSetup setup(CameraOptions{.address = "127.0.4.99", .linkRate = 10'000'000});
    setup.record(30ms);
    setup.host.startPlayback();
    setup.host.write(FeatureId::StreamStartNumber, 0);
    setup.host.write(FeatureId::StreamEndNumber, 9);
    const auto start = std::chrono::steady_clock::now();
    setup.host.execute(FeatureId::StreamSequenceStart);
    for (std::uint32_t index = 0; index < 10; ++index) {
        EXPECT_EQ(setup.host.receiveBlock().image, setup.camera.recordedBytes(0, index));
    }
    // Each takes 110 + 1478 + 718 + 84 bytes on the cable; the last trailer is at its start here.
    EXPECT_GE(std::chrono::steady_clock::now() - start, 19ms);
    EXPECT_EQ(setup.camera.log().counters().leftOut, 0U);
}

TEST(CameraRecord, RefusesARangeThatWasNotRecorded)
{
    RecordSetup setup("127.0.4.84");
    setup.record(20ms);
    EXPECT_EQ(setup.host.execute(FeatureId::StreamSequenceStart), 0x8006U); // not in playback
    setup.host.startPlayback();
    EXPECT_EQ(setup.host.write(FeatureId::StreamEndNumber, 5000), 0x8002U);
    EXPECT_EQ(setup.host.write(FeatureId::StreamStartNumber, 5), 0U);
    EXPECT_EQ(setup.host.execute(FeatureId::StreamSequenceStart), 0x8002U); // 5 to 0
    setup.host.writeSerial(":GW07b000FFFFFF:GW07a800000000:GW07f8");
    EXPECT_TRUE(setup.host.receivePacket(100ms).empty());
    EXPECT_GT(setup.host.read(FeatureId::SerialPort0ReceiveLength), 0U); // ":ER"
}

TEST(CameraRecord, AnOrderedRangeTakesTheNumbersOneWayOnly)
{
    RecordSetup setup("127.0.4.85");
    setup.record(30ms);
    setup.camera.faults().requireOrderedRange(true);
    EXPECT_EQ(setup.host.write(FeatureId::StreamStartNumber, 10), 0x8002U);
    EXPECT_EQ(setup.host.write(FeatureId::StreamEndNumber, 15), 0U);
    EXPECT_EQ(setup.host.write(FeatureId::StreamStartNumber, 10), 0U);
    EXPECT_EQ(setup.host.write(FeatureId::StreamEndNumber, 5), 0x8002U);
}

TEST(CameraRecord, TellsItsRecordingInTheInfoFrame)
{
    RecordSetup setup("127.0.4.86");
    setup.host.write(FeatureId::RecordMode, 1);
    setup.host.write(FeatureId::RecordNumberOfSequences, 4);
    setup.host.write(FeatureId::ExtTriggerEnable, 1);
    setup.host.write(FeatureId::RecordTrailer, 5);
    setup.host.execute(FeatureId::RecordStart);
    for (std::uint32_t sequence = 0; sequence < 3; ++sequence) {
        std::this_thread::sleep_for(10ms);
        EXPECT_TRUE(setup.camera.trigger());
        ASSERT_TRUE(setup.waitFor(FeatureId::RecordCurrentSequenceNumber, sequence + 1));
    }
    std::this_thread::sleep_for(10ms);
    setup.host.execute(FeatureId::RecordStop);
    setup.host.startPlayback();
    EXPECT_EQ(setup.host.execute(FeatureId::StreamGetInfoFrame), 0U);
    const ReceivedBlock block = setup.host.receiveBlock();
    ASSERT_EQ(block.image.size(), 2048U);
    EXPECT_EQ(little(block.image, 96), 0x90000002U | (3U << 8) | (31U << 15));
    std::uint32_t all = 0;
    for (std::uint32_t sequence = 0; sequence < 4; ++sequence) {
        setup.host.write(FeatureId::StreamSequenceSelector, sequence);
        const std::uint32_t frames = setup.host.read(FeatureId::RecordNumberOfFramesPerSequence);
        EXPECT_EQ(little(block.image, 32 + 4 * sequence), frames);
        EXPECT_GT(frames, 0U);
        all += frames;
        setup.host.write(FeatureId::StreamSingleFrame, frames - 1);
        EXPECT_EQ(setup.host.receiveBlock().image,
                  setup.camera.recordedBytes(sequence, frames - 1));
    }
    EXPECT_EQ(little(block.image, 32 + 16), 0U);
    EXPECT_EQ(setup.host.read(FeatureId::RecordNumberOfFrames), all);
}

TEST(CameraRecord, TheMemoryBoundsARecording)
{
    RecordSetup setup(CameraOptions{.address = "127.0.4.87", .memoryBytes = 2048 * 40});
    EXPECT_EQ(setup.host.read(FeatureId::RecordMaxFramesPerSequence), 40U);
    setup.host.execute(FeatureId::RecordStart);
    ASSERT_TRUE(setup.waitFor(FeatureId::CameraState, kStateIdle32));
    EXPECT_EQ(setup.host.read(FeatureId::RecordNumberOfFrames), 40U);
}

TEST(CameraRecord, CountsBeyond65536Frames)
{
    RecordSetup setup("127.0.4.88");
    setup.host.write(FeatureId::AcquisitionFrameRateRaw, 200'000);
    setup.record(600ms);
    const std::uint32_t frames = setup.host.read(FeatureId::RecordNumberOfFrames);
    ASSERT_GT(frames, 70'000U);
    setup.host.startPlayback();
    setup.host.write(FeatureId::StreamSingleFrame, 65'536);
    const ReceivedBlock block = setup.host.receiveBlock();
    ASSERT_TRUE(block.hasTrailer);
    EXPECT_EQ(little(block.image, 0), 65'536U);
    EXPECT_EQ(block.image[4] | (block.image[5] << 8), 0);
}

TEST(CameraRecord, GoesOnWhileTheHostIsAway)
{
    RecordSetup setup("127.0.4.89");
    setup.host.execute(FeatureId::AcquisitionStart);
    setup.host.execute(FeatureId::RecordStart);
    setup.host.writeRegister(0x0A00, 0);
    RawHost back("127.0.4.89");
    EXPECT_EQ(back.read(FeatureId::CameraState), kStateRecording32);
    back.openStream();
    back.execute(FeatureId::AcquisitionStart);
    const ReceivedBlock preview = back.receiveBlock();
    ASSERT_TRUE(preview.hasTrailer);
    EXPECT_NE(preview.image[7] & kFlagRecording, 0);
    back.execute(FeatureId::RecordStop);
    EXPECT_EQ(back.read(FeatureId::CameraState), kStateLive32);
}

TEST(CameraRecord, StoppingTheAcquisitionEndsTheRecording)
{
    RecordSetup setup("127.0.4.90");
    setup.host.execute(FeatureId::AcquisitionStart);
    setup.host.execute(FeatureId::RecordStart);
    setup.host.execute(FeatureId::AcquisitionStop);
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), kStateIdle32);
    EXPECT_GT(setup.host.read(FeatureId::RecordNumberOfFrames), 0U);
}

TEST(CameraRecord, WritesItsFlashCardAfterARecording)
{
    RecordSetup setup(CameraOptions{.address = "127.0.4.91", .flashBytesPerSecond = 100'000});
    setup.host.write(FeatureId::FlashCardWriteAfterRecordEnable, 1);
    setup.record(20ms); // at least 40 kB: 400 ms
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), kStateFlashWrite32);
    const std::uint32_t frames = setup.host.read(FeatureId::RecordNumberOfFrames);
    ASSERT_TRUE(setup.waitFor(FeatureId::CameraState, kStateIdle32));
    EXPECT_EQ(setup.host.read(FeatureId::RecordNumberOfFrames), frames);
}

TEST(CameraRecord, InStandbyATriggerBeginsTheNextRecording)
{
    RecordSetup setup("127.0.4.92");
    setup.host.write(FeatureId::RecordMode, 1);
    setup.host.write(FeatureId::ExtTriggerEnable, 1);
    EXPECT_FALSE(setup.camera.trigger());
    setup.host.write(FeatureId::RecordStandby, 1);
    setup.record(10ms);
    EXPECT_TRUE(setup.camera.trigger());
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), kStateRecording32);
}

TEST(CameraRecord, InStandbyASingleRecordingNeedsNoSecondTrigger)
{
    RecordSetup setup("127.0.4.79");
    setup.host.write(FeatureId::RecordStandby, 1);
    setup.record(10ms);
    setup.host.write(FeatureId::RecordBurstCnt, 3);
    setup.host.write(FeatureId::ExtTriggerEnable, 1);
    EXPECT_TRUE(setup.camera.trigger());
    EXPECT_TRUE(setup.waitFor(FeatureId::RecordNumberOfFrames, 3));
}

TEST(CameraRecord, TheTriggerInputKnowsItsEdge)
{
    RecordSetup setup("127.0.4.93");
    setup.host.write(FeatureId::RecordMode, 1);
    setup.host.write(FeatureId::ExtTriggerEnable, 1);
    setup.host.write(FeatureId::ExtTriggerPolarity, 0); // falling
    setup.host.execute(FeatureId::RecordStart);
    EXPECT_FALSE(setup.camera.setTriggerInput(true));
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), kStateRecording32);
    EXPECT_TRUE(setup.camera.setTriggerInput(false));
    EXPECT_EQ(setup.host.read(FeatureId::CameraState), kStateIdle32);
}

TEST(CameraRecord, TheImageContentTriggers)
{
    RecordSetup setup("127.0.4.94");
    setup.host.write(FeatureId::RecordMode, 1);
    setup.host.write(FeatureId::RecordTrailer, 10);
    setup.host.write(FeatureId::IBWidth, 64);
    setup.host.write(FeatureId::IBHeight, 32);
    setup.host.write(FeatureId::IBThreshold, 0); // always bright enough
    setup.host.write(FeatureId::IBEnable, 1);
    setup.host.execute(FeatureId::RecordStart);
    ASSERT_TRUE(setup.waitFor(FeatureId::CameraState, kStateIdle32));
    EXPECT_EQ(setup.host.read(FeatureId::RecordNumberOfFrames), 11U);
}

TEST(CameraRecord, RecordsFromPowerOn)
{
    VirtualCamera camera({.address = "127.0.4.95", .recordAtPowerOn = true});
    ASSERT_FALSE(camera.start());
    RawHost host("127.0.4.95");
    EXPECT_EQ(host.read(FeatureId::CameraState), kStateRecording32);
}

TEST(CameraRecord, StampsTheTimeOfDayWhenAsked)
{
    RecordSetup setup("127.0.4.96");
    setup.host.write(FeatureId::IRIGBEnable, 1);
    setup.record(5ms);
    const auto stamp = setup.camera.recordedFrame(0, 0);
    ASSERT_TRUE(stamp);
    EXPECT_NE(stamp->flags & kFlagIrigB, 0);
    const std::uint64_t day = (stamp->time >> 37) & 0x1FF;
    EXPECT_GE(day, 1U);
    EXPECT_LE(day, 366U);
}

TEST(CameraRecord, LosesAndRepeatsFramesInARange)
{
    RecordSetup setup("127.0.4.97");
    setup.record(20ms);
    setup.host.startPlayback();
    setup.camera.faults().add(FrameFault{.kind = FrameFaultKind::Lose, .position = 1});
    setup.camera.faults().add(FrameFault{.kind = FrameFaultKind::Repeat, .position = 3});
    setup.host.writeSerial(":GW07b000000004:GW07a800000000:GW07f8");
    std::array<std::uint32_t, 5> numbers{};
    for (std::uint32_t& number : numbers) {
        number = little(setup.host.receiveBlock().image, 0);
    }
    EXPECT_EQ(numbers, (std::array<std::uint32_t, 5>{0, 2, 3, 3, 4}));
}

TEST(CameraRecord, SendsAFrameOfARangeBehindTheNext)
{
    RecordSetup setup("127.0.4.78");
    setup.record(20ms);
    setup.host.startPlayback();
    for (const std::uint32_t position : {1U, 4U}) { // behind the last comes none
        setup.camera.faults().add(
            FrameFault{.kind = FrameFaultKind::Reorder, .position = position});
    }
    setup.host.writeSerial(":GW07b000000004:GW07a800000000:GW07f8");
    std::array<std::uint32_t, 5> numbers{};
    for (std::uint32_t& number : numbers) {
        number = little(setup.host.receiveBlock().image, 0);
    }
    EXPECT_EQ(numbers, (std::array<std::uint32_t, 5>{0, 2, 1, 3, 4}));
}

} // namespace
} // namespace camera
