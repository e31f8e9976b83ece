#include "Recording.h"

#include <gtest/gtest.h>

namespace
{

using camera::FeatureId;

/// Without mend these would wait for ever; a busy machine has time.
constexpr auto kAtOnce = 3000ms;

class MissingFeatures : public RecordedCameraTest
{
  protected:
    void openWithout(std::set<FeatureId> features)
    {
        camera::CameraOptions options = recordedCamera(30);
        options.missing = std::move(features);
        ASSERT_NO_FATAL_FAILURE(open(options, featureSettings()));
    }

    void expectStopAtOnce()
    {
        std::int32_t stopped = -1;
        EXPECT_LT(timeOf([&] { stopped = expStopLiveMode(host.id()); }), kAtOnce);
        EXPECT_EQ(stopped, 0);
    }
};

TEST_F(MissingFeatures, WithoutAStateAStopOfLiveModeEndsAtOnce)
{
    ASSERT_NO_FATAL_FAILURE(openWithout({FeatureId::CameraState}));
    ASSERT_EQ(expStartLiveMode(host.id()), 0);
    EXPECT_FALSE(host.nextImage().empty());
    expectStopAtOnce();
    ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
    EXPECT_TRUE(readsRecorded(host, *camera, {.count = 30}));
    expectStopAtOnce();
}

TEST_F(MissingFeatures, WithoutThoseOfARecordingItsOperationsFailAtOnceAndLiveModeGoesOn)
{
    ASSERT_NO_FATAL_FAILURE(
        openWithout({FeatureId::CameraState, FeatureId::RecordStart, FeatureId::RecordStop,
                     FeatureId::StreamSequenceStart, FeatureId::StreamSingleFrame,
                     FeatureId::StreamGetInfoFrame, FeatureId::RecordNumberOfFrames}));
    const auto time = timeOf([&] {
        std::uint32_t word = 0;
        std::uint64_t header = 0;
        std::uint8_t byte = 0;
        EXPECT_EQ(expStartRecordMode(host.id()), -1);
        EXPECT_EQ(expGetFramePointer(0, &header, &byte, &byte, host.id()), nullptr);
        EXPECT_EQ(expGetRecordInfoFramePointer(&word, &word, &word, &word, host.id()), nullptr);
        EXPECT_EQ(expGetNumberOfAllRecordedFrames(&word, host.id()), -1);
        ASSERT_EQ(expStartFrameBlockTransfer(host.id()), 0);
        EXPECT_EQ(requestBlock(host, {.count = 30}), -1);
        EXPECT_EQ(collectBlock(host, *camera).status, 0xFFFFFFFF);
        EXPECT_EQ(expStopFrameBlockTransfer(host.id()), 0);
    });
    EXPECT_LT(time, kAtOnce);
    ASSERT_EQ(expStartLiveMode(host.id()), 0);
    EXPECT_FALSE(host.nextImage().empty());
    expectStopAtOnce();
}

TEST_F(MissingFeatures, ACameraThatWasNotInitialisedStartsNoModeAndLeavesNoneToStop)
{
    camera = std::make_unique<camera::VirtualCamera>(recordedCamera(30));
    ASSERT_FALSE(camera->start());
    ASSERT_EQ(host.connect(*camera), 0);
    const std::size_t writes = camera->log().writes().size();
    const auto time = timeOf([&] {
        for (auto* const start :
             {expStartFrameBlockTransfer, expStartLiveMode, expStartRecordMode}) {
            EXPECT_EQ(start(host.id()), -1);
            EXPECT_EQ(expStopFrameBlockTransfer(host.id()), 0);
        }
    });
    EXPECT_LT(time, kAtOnce);
    EXPECT_EQ(camera->log().writes().size(), writes);
}

} // namespace
