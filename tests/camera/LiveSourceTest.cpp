#include "LiveSource.h"

#include <gtest/gtest.h>

namespace camera
{
namespace
{

using namespace std::chrono_literals;

TEST(LiveSource, GivesTheNewestImageOnceAndLeavesOutThoseBefore)
{
    LiveSource live(false);
    live.start(1s, 100, Recorder());
    EXPECT_EQ(live.take(1035ms), (Exposure{.number = 3, .leftOut = 3, .time = 1030ms}));
    EXPECT_EQ(live.take(1039ms), std::nullopt);
    EXPECT_EQ(live.nextExposure(), 1040ms);
    EXPECT_EQ(live.take(1040ms), (Exposure{.number = 4, .leftOut = 0, .time = 1040ms}));
}

TEST(LiveSource, ExposesWheneverAnImageIsTakenIfUnpaced)
{
    LiveSource live(true);
    live.start(0s, 1, Recorder());
    EXPECT_EQ(live.take(5ms), (Exposure{.number = 0, .leftOut = 0, .time = 5ms}));
    EXPECT_EQ(live.take(5ms), (Exposure{.number = 1, .leftOut = 0, .time = 5ms}));
}

TEST(LiveSource, CountsOnAfterARecording)
{
    LiveSource live(false);
    live.start(0s, 100, Recorder());
    live.endPreview(1s, 100, 70);
    EXPECT_EQ(live.take(1s), (Exposure{.number = 70, .leftOut = 0, .time = 1s}));
}

TEST(LiveSource, PreviewsTheNewestExposureOfARecordingOnce)
{
    Recorder recorder;
    recorder.start({.frameRate = 100, .framesPerSequence = 50}, 0s);
    LiveSource live(false);
    live.beginPreview();
    recorder.advance(25ms);
    ASSERT_TRUE(live.takePreview(recorder).has_value());
    EXPECT_EQ(live.takePreview(recorder), std::nullopt);
    recorder.advance(30ms);
    const auto preview = live.takePreview(recorder);
    ASSERT_TRUE(preview.has_value());
    EXPECT_EQ(preview->number, 3U);
}

TEST(LiveSource, StartedDuringARecordingPreviewsWhatComesNext)
{
    Recorder recorder;
    recorder.start({.frameRate = 100, .framesPerSequence = 50}, 0s);
    recorder.advance(25ms);
    LiveSource live(false);
    live.start(25ms, 100, recorder);
    EXPECT_EQ(live.takePreview(recorder), std::nullopt);
}

} // namespace
} // namespace camera
