#include "Playback.h"

#include <gtest/gtest.h>

namespace camera
{
namespace
{

using namespace std::chrono_literals;
using Status = gige::wire::GvcpStatus;

class PlaybackTest : public testing::Test
{
  protected:
    PlaybackTest() { record(10); }

    void record(std::uint32_t frames)
    {
        mRecorder.start({.frameRate = 1000, .framesPerSequence = frames}, 0s);
        mRecorder.advance(1s);
    }
    /// Sent frame numbers and their positions; -1 for the info frame.
    std::vector<std::pair<int, int>> sent()
    {
        std::vector<std::pair<int, int>> all;
        while (const auto picture = mPlayback.next()) {
            const int number = picture->frame ? static_cast<int>(picture->frame->number) : -1;
            all.emplace_back(number, static_cast<int>(picture->position));
        }
        return all;
    }

    Recorder mRecorder;
    Playback mPlayback{mRecorder};
};

using Sent = std::vector<std::pair<int, int>>;

TEST_F(PlaybackTest, TakesRequestsOnlyWhileItRuns)
{
    EXPECT_EQ(mPlayback.requestInfo(), Status::AccessDenied);
    EXPECT_EQ(mPlayback.requestFrame(0, 0), Status::AccessDenied);
    EXPECT_EQ(mPlayback.requestRange(0, 0, 1), Status::AccessDenied);
    mPlayback.start();
    EXPECT_EQ(mPlayback.requestInfo(), Status::Success);
    mPlayback.stop();
    EXPECT_EQ(sent(), Sent{});
}

TEST_F(PlaybackTest, SendsWhatWasAskedInItsOrder)
{
    mPlayback.start();
    EXPECT_EQ(mPlayback.requestRange(0, 3, 5), Status::Success);
    EXPECT_EQ(mPlayback.requestInfo(), Status::Success);
    EXPECT_EQ(mPlayback.requestFrame(0, 9), Status::Success);
    EXPECT_EQ(sent(), (Sent{{3, 0}, {4, 1}, {5, 2}, {-1, 0}, {9, 0}}));
}

TEST_F(PlaybackTest, ANewRangeTakesThePlaceOfAllThatWaits)
{
    mPlayback.start();
    EXPECT_EQ(mPlayback.requestRange(0, 0, 5), Status::Success);
    EXPECT_TRUE(mPlayback.next().has_value());
    EXPECT_EQ(mPlayback.requestRange(0, 7, 8), Status::Success);
    EXPECT_EQ(sent(), (Sent{{7, 0}, {8, 1}}));
}

TEST_F(PlaybackTest, RefusesFramesThatAreNotThere)
{
    mPlayback.start();
    EXPECT_EQ(mPlayback.requestFrame(0, 10), Status::InvalidParameter);
    EXPECT_EQ(mPlayback.requestFrame(1, 0), Status::InvalidParameter);
    EXPECT_EQ(mPlayback.requestRange(0, 0, 10), Status::InvalidParameter);
    EXPECT_EQ(mPlayback.requestRange(0, 5, 4), Status::InvalidParameter);
}

TEST_F(PlaybackTest, RefusesMoreThanMayWait)
{
    mPlayback.start();
    for (int i = 0; i < 64; ++i) {
        ASSERT_EQ(mPlayback.requestInfo(), Status::Success);
    }
    EXPECT_EQ(mPlayback.requestInfo(), Status::AccessDenied);
    EXPECT_EQ(mPlayback.requestFrame(0, 0), Status::AccessDenied);
    EXPECT_EQ(mPlayback.requestRange(0, 0, 0), Status::Success);
}

TEST_F(PlaybackTest, PassesOverFramesThatANewerRecordingLacks)
{
    mPlayback.start();
    EXPECT_EQ(mPlayback.requestRange(0, 1, 9), Status::Success);
    EXPECT_TRUE(mPlayback.next().has_value());
    EXPECT_EQ(mPlayback.requestInfo(), Status::Success);
    record(2);
    EXPECT_EQ(sent(), (Sent{{-1, 0}}));
}

} // namespace
} // namespace camera
