#include "FlashCard.h"

#include <gtest/gtest.h>

namespace camera
{
namespace
{

using namespace std::chrono_literals;

TEST(FlashCard, IsBusyAsLongAsTheRecordingsBytesTake)
{
    Recorder recorder;
    recorder.start({.view = {.width = 100, .height = 10}, .frameRate = 100, .framesPerSequence = 5},
                   0s);
    recorder.advance(1s);
    FlashCard card(50'000); // 5 frames of 1000 bytes
    EXPECT_TRUE(card.copy(recorder, 10s));
    EXPECT_TRUE(card.isBusy(10s + 99ms));
    EXPECT_FALSE(card.isBusy(10s + 100ms));
}

TEST(FlashCard, CopiesNothingWithoutAFinishedRecording)
{
    Recorder recorder;
    FlashCard card(1);
    EXPECT_FALSE(card.copy(recorder, 0s));
    recorder.start({.framesPerSequence = 5}, 0s);
    EXPECT_FALSE(card.copy(recorder, 0s));
    EXPECT_FALSE(card.isBusy(0s));
}

TEST(FlashCard, IsFreeOnceItIsStopped)
{
    FlashCard card(1);
    card.occupy(5s);
    EXPECT_TRUE(card.isBusy(4s));
    card.stop();
    EXPECT_FALSE(card.isBusy(4s));
}

} // namespace
} // namespace camera
