#include "CameraCore.h"

#include <gtest/gtest.h>

#include <string>

namespace camera
{
namespace
{

using namespace std::chrono_literals;
using Status = gige::wire::GvcpStatus;

class CameraCoreTest : public testing::Test
{
  protected:
    CameraCoreTest() { openChannel(); }

    void openChannel()
    {
        StreamChannel channel;
        channel.destination.port = 5000;
        mCore.stream.setChannel(channel);
    }
    std::int64_t read(FeatureId id) { return mCore.read(featureOf(id)); }
    Status write(FeatureId id, std::int64_t value = 1) { return mCore.write(featureOf(id), value); }
    /// Number of the next block's frame; -1: there is none.
    std::int64_t nextFrame()
    {
        const auto block = mCore.stream.nextBlock(mCore.now());
        return block ? std::int64_t{block->stamp.number} : -1;
    }
    void recordThreeFrames()
    {
        (void)write(FeatureId::AcquisitionFrameRateRaw, 100);
        (void)write(FeatureId::RecordStart);
        mCore.advance(mCore.now() + 25ms);
        (void)write(FeatureId::RecordStop);
    }

    CameraOptions mOptions;
    Faults mFaults;
    CameraCore mCore{mOptions, mFaults};
};

TEST_F(CameraCoreTest, TakesFramesAsTimePasses)
{
    EXPECT_EQ(write(FeatureId::AcquisitionFrameRateRaw, 100), Status::Success);
    EXPECT_EQ(write(FeatureId::RecordStart), Status::Success);
    EXPECT_EQ(read(FeatureId::CameraState), kStateRecording);
    EXPECT_EQ(read(FeatureId::RecordNumberOfFrames), 1);
    mCore.advance(40ms);
    EXPECT_EQ(read(FeatureId::RecordNumberOfFrames), 5);
    EXPECT_EQ(mCore.limits(featureOf(FeatureId::StreamSingleFrame)).maximum, 4);
}

TEST_F(CameraCoreTest, LiveImagesCountOnFromTheRecording)
{
    EXPECT_EQ(write(FeatureId::AcquisitionStart), Status::Success);
    EXPECT_EQ(nextFrame(), 0);
    recordThreeFrames();
    EXPECT_EQ(nextFrame(), 3);
    EXPECT_EQ(nextFrame(), -1);
    EXPECT_EQ(mCore.stream.nextExposure(), 35ms);
}

TEST_F(CameraCoreTest, ARefusedValueIsNotSet)
{
    EXPECT_EQ(write(FeatureId::StreamSingleFrame, 0), Status::AccessDenied);
    recordThreeFrames();
    EXPECT_EQ(write(FeatureId::StreamSingleFrame, 2), Status::AccessDenied);
    EXPECT_EQ(read(FeatureId::StreamSingleFrame), 0);
    (void)write(FeatureId::AcquisitionSource, kSourceMemory);
    (void)write(FeatureId::AcquisitionStart);
    EXPECT_EQ(write(FeatureId::StreamSingleFrame, 2), Status::Success);
    EXPECT_EQ(read(FeatureId::StreamSingleFrame), 2);
    EXPECT_EQ(nextFrame(), 2);
}

TEST_F(CameraCoreTest, RefusesARangeOutOfOrderWhileAFaultDemandsIt)
{
    recordThreeFrames();
    mFaults.requireOrderedRange(true);
    EXPECT_EQ(write(FeatureId::StreamStartNumber, 1), Status::InvalidParameter);
    EXPECT_EQ(write(FeatureId::StreamEndNumber, 2), Status::Success);
    EXPECT_EQ(write(FeatureId::StreamStartNumber, 1), Status::Success);
    EXPECT_EQ(write(FeatureId::StreamEndNumber, 0), Status::InvalidParameter);
    EXPECT_EQ(read(FeatureId::StreamEndNumber), 2);
}

TEST_F(CameraCoreTest, TheEndOfARecordingMayStartTheFlashCard)
{
    EXPECT_EQ(write(FeatureId::FlashCardWriteAfterRecordEnable), Status::Success);
    EXPECT_EQ(write(FeatureId::AcquisitionStart), Status::Success);
    recordThreeFrames();
    EXPECT_EQ(read(FeatureId::CameraState), kStateFlashWrite);
    EXPECT_EQ(write(FeatureId::RecordStart), Status::AccessDenied);
    mCore.advance(1s); // 4 MB at 200 MB/s
    EXPECT_EQ(read(FeatureId::CameraState), kStateIdle);
}

TEST_F(CameraCoreTest, OneImageEndsASingleAcquisition)
{
    EXPECT_EQ(write(FeatureId::AcquisitionMode, kModeSingleFrame), Status::Success);
    EXPECT_EQ(write(FeatureId::AcquisitionStart), Status::Success);
    EXPECT_EQ(nextFrame(), 0);
    EXPECT_EQ(read(FeatureId::CameraState), kStateIdle);
    mCore.advance(10s);
    EXPECT_EQ(nextFrame(), -1);
}

TEST_F(CameraCoreTest, TheOnlyImageIsTheFirstHoweverLateItIsTaken)
{
    EXPECT_EQ(write(FeatureId::AcquisitionMode, kModeSingleFrame), Status::Success);
    EXPECT_EQ(write(FeatureId::AcquisitionStart), Status::Success);
    mCore.advance(10s);
    EXPECT_EQ(nextFrame(), 0);
    EXPECT_EQ(nextFrame(), -1);
}

TEST_F(CameraCoreTest, LosingItsHostEndsSendingButNotRecording)
{
    (void)write(FeatureId::AcquisitionStart);
    (void)write(FeatureId::TLParamsLocked, 1);
    (void)write(FeatureId::RecordStart);
    mCore.dropHost();
    EXPECT_EQ(read(FeatureId::CameraState), kStateRecording);
    EXPECT_EQ(read(FeatureId::TLParamsLocked), 0);
    EXPECT_EQ(nextFrame(), -1);
    openChannel();
    EXPECT_EQ(nextFrame(), -1);
}

TEST_F(CameraCoreTest, GetsWarmWithTime)
{
    EXPECT_EQ(read(FeatureId::Temperature), 38);
    mCore.advance(61s);
    EXPECT_EQ(read(FeatureId::Temperature), 40);
    mCore.advance(1h);
    EXPECT_EQ(read(FeatureId::Temperature), 45);
}

TEST_F(CameraCoreTest, TheSerialLineSelectsAndStartsARange)
{
    recordThreeFrames();
    (void)write(FeatureId::AcquisitionSource, kSourceMemory);
    (void)write(FeatureId::AcquisitionStart);
    const std::string command = ":GW07A80001:GW07B00002:GW07F8";
    mCore.serial.write(
        0, std::span(reinterpret_cast<const std::uint8_t*>(command.data()), command.size()));
    mFaults.limitSerial(22);
    (void)write(FeatureId::SerialPort0TransmitLength, static_cast<std::int64_t>(command.size()));
    EXPECT_EQ(read(FeatureId::SerialPort0TransmitLength), 22);
    EXPECT_EQ(nextFrame(), -1);
    mFaults.limitSerial(kForever);
    (void)write(FeatureId::SerialPort0TransmitLength, static_cast<std::int64_t>(command.size()));
    EXPECT_EQ(nextFrame(), 1);
    EXPECT_EQ(nextFrame(), 2);
    EXPECT_EQ(nextFrame(), -1);
}

} // namespace
} // namespace camera
