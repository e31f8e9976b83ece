#include "Settings.h"

#include <gtest/gtest.h>

namespace camera
{
namespace
{

TEST(Settings, StartWithTheWholeSensor)
{
    const CameraOptions options{.sensor = SensorSize{.width = 330, .height = 101}};
    const Settings settings(options);
    EXPECT_EQ(settings.get(FeatureId::Width), 320);
    EXPECT_EQ(settings.get(FeatureId::Height), 100);
    EXPECT_EQ(settings.get(FeatureId::SensorWidth), 330);
    EXPECT_EQ(settings.payloadSize(), 32000);
}

TEST(Settings, FitTheImageIntoADecimatedSensor)
{
    const CameraOptions options;
    Settings settings(options);
    settings.set(FeatureId::DecimationXY, 1);
    settings.settle();
    EXPECT_EQ(settings.view().width, 640U);
    EXPECT_EQ(settings.view().height, 512U);
    EXPECT_EQ(settings.view().decimation, 2U);
    EXPECT_EQ(settings.fastestFrameRate(), 4272);
}

TEST(Settings, KeepAnImageOnASensorTooSmallToDecimate)
{
    const CameraOptions options{.sensor = SensorSize{.width = 16, .height = 16}};
    Settings settings(options);
    settings.set(FeatureId::DecimationXY, 1);
    settings.settle();
    EXPECT_EQ(settings.get(FeatureId::Width), 16);
    EXPECT_EQ(settings.framesPerSequence(), (1U << 30) / (16 * 8));
}

TEST(Settings, JudgeSeveralValuesOnlyTogether)
{
    const CameraOptions options;
    Settings settings(options);
    settings.take({{FeatureId::OffsetX, 960}, {FeatureId::Width, 320}, {FeatureId::IBWidth, 900}});
    EXPECT_EQ(settings.get(FeatureId::OffsetX), 960);
    EXPECT_EQ(settings.get(FeatureId::Width), 320);
    EXPECT_EQ(settings.get(FeatureId::IBWidth), 320);
    EXPECT_EQ(settings.widestImage(), 320);
    EXPECT_EQ(settings.greatestOffsetX(), 960);
}

TEST(Settings, LimitTheExposureByTheImageRate)
{
    const CameraOptions options;
    Settings settings(options);
    settings.take({{FeatureId::AcquisitionFrameRateRaw, 1000}, {FeatureId::ExposureTimeRaw, 5000}});
    EXPECT_EQ(settings.longestExposure(), 999);
    EXPECT_EQ(settings.get(FeatureId::ExposureTimeRaw), 999);
}

TEST(Settings, DivideTheMemoryInContinuousModeOnly)
{
    const CameraOptions options{.memoryBytes = 16 * 1280 * 1024};
    Settings settings(options);
    settings.set(FeatureId::RecordNumberOfSequences, 4);
    EXPECT_EQ(settings.recording().sequences, 1U);
    EXPECT_EQ(settings.framesPerSequence(), 16U);
    settings.set(FeatureId::RecordMode, kRecordContinuous);
    EXPECT_EQ(settings.recording().sequences, 4U);
    EXPECT_EQ(settings.recording().framesPerSequence, 4U);
    EXPECT_EQ(settings.longestTrailer(), 3);
}

TEST(Settings, ShowTheTriggerWindowInLiveImagesOnly)
{
    const CameraOptions options;
    Settings settings(options);
    settings.set(FeatureId::IBWindowVisible, 1);
    EXPECT_EQ(settings.shownView().window, (SceneWindow{.width = 64, .height = 64}));
    EXPECT_EQ(settings.recording().view.window, SceneWindow{});
}

} // namespace
} // namespace camera
