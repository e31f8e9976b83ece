#include "Recorder.h"
#include "TriggerWindow.h"

#include <gtest/gtest.h>

namespace camera
{
namespace
{

using namespace std::chrono_literals;

RecordSettings single(std::uint32_t places)
{
    return {.frameRate = 1000, .framesPerSequence = places};
}

RecordSettings continuous(std::uint32_t places, std::uint32_t trailer, std::uint32_t sequences = 1)
{
    return {.frameRate = 1000,
            .continuous = true,
            .sequences = sequences,
            .framesPerSequence = places,
            .trailer = trailer};
}

TEST(Recorder, HoldsNothingBeforeTheFirstRecording)
{
    const Recorder recorder;
    EXPECT_FALSE(recorder.hasRecorded());
    EXPECT_EQ(recorder.allFrames(), 0U);
    EXPECT_EQ(recorder.stopPointer(0), 0U);
    EXPECT_FALSE(recorder.frame(0, 0));
}

TEST(Recorder, TakesFramesAtTheRateUntilItIsStopped)
{
    Recorder recorder;
    recorder.start(single(1000), 1s);
    recorder.stop(1s + 9ms);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(recorder.frames(0), 10U);
    EXPECT_EQ(recorder.frame(0, 9)->number, 9U);
    EXPECT_EQ(recorder.frame(0, 9)->time, 1'009'000U);
    EXPECT_TRUE(recorder.frame(0, 9)->last);
    EXPECT_FALSE(recorder.frame(0, 8)->last);
    EXPECT_FALSE(recorder.frame(0, 10));
    EXPECT_EQ(recorder.stopPointer(0), 10U);
}

TEST(Recorder, SingleModeEndsWhenTheMemoryIsFull)
{
    Recorder recorder;
    recorder.start(single(5), 0s);
    recorder.advance(3ms);
    EXPECT_TRUE(recorder.isRecording());
    recorder.advance(1s);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(recorder.frames(0), 5U);
}

TEST(Recorder, ContinuousModeKeepsTheNewest)
{
    Recorder recorder;
    recorder.start(continuous(10, 0), 0s);
    recorder.stop(24ms); // frames 0..24
    EXPECT_EQ(recorder.frames(0), 10U);
    EXPECT_EQ(recorder.frame(0, 0)->number, 15U);
    EXPECT_EQ(recorder.frame(0, 9)->number, 24U);
    EXPECT_TRUE(recorder.frame(0, 9)->last);
    EXPECT_EQ(recorder.stopPointer(0), 5U);
}

TEST(Recorder, TakesTheTrailerAfterTheTrigger)
{
    Recorder recorder;
    recorder.start(continuous(100, 3), 0s);
    recorder.trigger(4ms); // frames 0..4 lie before it
    EXPECT_TRUE(recorder.isTrailerActive());
    recorder.advance(1s);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_FALSE(recorder.isTrailerActive());
    EXPECT_EQ(recorder.frames(0), 8U);
    EXPECT_EQ(recorder.frame(0, 4)->flags, kFlagRecording);
    EXPECT_EQ(recorder.frame(0, 5)->flags, kFlagRecording | kFlagTrigger | kFlagTrailer);
    EXPECT_EQ(recorder.frame(0, 6)->flags, kFlagRecording | kFlagTrailer);
}

TEST(Recorder, WithoutTrailerTheTriggerEndsTheSequence)
{
    Recorder recorder;
    recorder.start(continuous(100, 0), 0s);
    recorder.trigger(4ms);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(recorder.frames(0), 5U);
}

TEST(Recorder, FillsOneSequenceATrigger)
{
    Recorder recorder;
    recorder.start(continuous(100, 2, 4), 0s);
    for (int i = 1; i <= 3; ++i) {
        recorder.trigger(i * 10ms);
        recorder.advance(i * 10ms + 5ms);
        EXPECT_TRUE(recorder.isRecording());
        EXPECT_EQ(recorder.currentSequence(), static_cast<std::uint32_t>(i));
    }
    recorder.trigger(40ms);
    recorder.advance(1s);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(recorder.frames(0), 13U); // 0..10, and two of the trailer
    EXPECT_EQ(recorder.frames(3), 10U); // from 33 ms to 42 ms
    EXPECT_EQ(recorder.frame(3, 0)->number, 0U);
    EXPECT_EQ(recorder.frame(3, 0)->sequence, 3U);
    EXPECT_EQ(recorder.allFrames(), 13U + 10 + 10 + 10);
    EXPECT_EQ(recorder.stopPointer(4), 0U);
}

TEST(Recorder, ATriggerDuringTheTrailerDoesNothing)
{
    Recorder recorder;
    recorder.start(continuous(100, 5), 0s);
    recorder.trigger(0ms);
    recorder.trigger(2ms);
    recorder.advance(1s);
    EXPECT_EQ(recorder.frames(0), 6U);
}

TEST(Recorder, SingleModeTakesABurstATrigger)
{
    Recorder recorder;
    RecordSettings settings = single(100);
    settings.waitForTrigger = true;
    settings.burst = 3;
    recorder.start(settings, 0s);
    recorder.advance(10ms);
    EXPECT_EQ(recorder.frames(0), 0U);
    recorder.trigger(10ms);
    recorder.advance(20ms);
    EXPECT_EQ(recorder.frames(0), 3U);
    EXPECT_EQ(recorder.frame(0, 0)->flags, kFlagRecording | kFlagTrigger);
    EXPECT_EQ(recorder.frame(0, 0)->time, 11'000U);
    recorder.trigger(30ms);
    recorder.advance(40ms);
    EXPECT_EQ(recorder.frames(0), 6U);
    EXPECT_EQ(recorder.frame(0, 3)->number, 3U);
}

TEST(Recorder, RecordsOnlyWhileTheInputIsActive)
{
    Recorder recorder;
    RecordSettings settings = single(100);
    settings.whileTriggerActive = true;
    recorder.start(settings, 0s);
    recorder.setTriggerActive(5ms, true);
    recorder.setTriggerActive(8ms, false);
    recorder.advance(20ms);
    EXPECT_EQ(recorder.frames(0), 3U); // at 6, 7 and 8 ms
}

TEST(Recorder, TriggersByContent)
{
    Recorder recorder;
    RecordSettings settings = continuous(100, 4);
    settings.contentTrigger = [](const FrameStamp& stamp) { return stamp.number == 7; };
    recorder.start(settings, 0s);
    recorder.advance(1s);
    EXPECT_EQ(recorder.frames(0), 12U);
}

TEST(Recorder, ANewRateActsFromTheNextFrameOn)
{
    Recorder recorder;
    recorder.start(single(100), 0s);
    recorder.setFrameRate(2ms, 100); // frames at 0, 1, 2 and then 3 ms
    recorder.advance(12ms);
    EXPECT_EQ(recorder.frames(0), 4U);
    recorder.advance(13ms);
    EXPECT_EQ(recorder.frames(0), 5U);
}

TEST(TriggerWindow, ReleasesWhenTheBallComesIn)
{
    const SceneView view{};
    // In frame 0 the ball covers this window in the corner.
    const TriggerWindow window{.left = 14, .top = 34, .width = 12, .height = 12, .threshold = 200};
    EXPECT_TRUE(window.releases(view, 0, 0));
    EXPECT_FALSE(window.releases(view, 0, 20));
    TriggerWindow dark = window;
    dark.darker = true;
    EXPECT_FALSE(dark.releases(view, 0, 0));
    EXPECT_TRUE(dark.releases(view, 0, 20));
}

TEST(TriggerWindow, OutsideTheImageIsDark)
{
    const TriggerWindow window{.left = 5000, .top = 0, .width = 10, .height = 10};
    EXPECT_EQ(window.mean(SceneView{}, 0, 0), 0U);
}

} // namespace
} // namespace camera
