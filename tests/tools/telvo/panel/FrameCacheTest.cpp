#include "FrameCache.h"
#include "FramesAhead.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using telvo::FrameCache;
using telvo::FramesAhead;
using telvo::GrayImage;
using testing::ElementsAre;
using testing::IsEmpty;

GrayImage frameOf(std::uint8_t value)
{
    GrayImage image(10, 10);
    image.pixels.assign(100, value);
    return image;
}

TEST(FrameCache, DropsWhatWasNotWantedForLongest)
{
    FrameCache cache(300);
    cache.put({0, 1}, frameOf(1));
    cache.put({0, 2}, frameOf(2));
    cache.put({0, 3}, frameOf(3));
    ASSERT_NE(cache.find({0, 1}), nullptr); // wanted again
    cache.put({0, 4}, frameOf(4));
    EXPECT_EQ(cache.find({0, 2}), nullptr);
    EXPECT_EQ(cache.find({0, 1})->pixels[0], 1);
    EXPECT_EQ(cache.find({0, 4})->pixels[0], 4);
}

TEST(FrameCache, TellsSequencesApart)
{
    FrameCache cache(1000);
    cache.put({0, 1}, frameOf(1));
    cache.put({1, 1}, frameOf(2));
    EXPECT_EQ(cache.find({0, 1})->pixels[0], 1);
    EXPECT_EQ(cache.find({1, 1})->pixels[0], 2);
    EXPECT_FALSE(cache.has({2, 1}));
}

TEST(FrameCache, KeepsAFrameThatIsLargerThanAllItMayHold)
{
    FrameCache cache(50);
    EXPECT_EQ(cache.put({0, 1}, frameOf(7)).pixels[0], 7);
    EXPECT_EQ(cache.put({0, 2}, frameOf(8)).pixels[0], 8);
    EXPECT_FALSE(cache.has({0, 1}));
}

std::vector<std::uint32_t> allAhead(FramesAhead& ahead, const FrameCache& cache)
{
    std::vector<std::uint32_t> frames;
    while (const auto place = ahead.next(cache)) {
        frames.push_back(place->frame);
    }
    return frames;
}

TEST(FramesAhead, GoOnInTheDirectionOfTheLastStep)
{
    const FrameCache cache(0);
    FramesAhead ahead;
    ahead.wanted({0, 100}, 1000);
    ahead.wanted({0, 98}, 1000);
    EXPECT_THAT(allAhead(ahead, cache),
                ElementsAre(96, 94, 92, 90, 88, 86, 84, 82, 99, 97, 100, 96));
}

TEST(FramesAhead, AreTheNeighboursAfterAJump)
{
    const FrameCache cache(0);
    FramesAhead ahead;
    ahead.wanted({0, 0}, 1000);
    ahead.wanted({0, 500}, 1000);
    EXPECT_THAT(allAhead(ahead, cache),
                ElementsAre(501, 502, 503, 504, 505, 506, 507, 508, 501, 499, 502, 498));
}

TEST(FramesAhead, StayInTheSequenceAndLeaveOutWhatIsThere)
{
    FrameCache cache(1000);
    cache.put({0, 8}, frameOf(0));
    FramesAhead ahead;
    ahead.wanted({0, 7}, 10);
    EXPECT_THAT(allAhead(ahead, cache), ElementsAre(9, 6, 9, 5));
    ahead.wanted({1, 0}, 1);
    EXPECT_THAT(allAhead(ahead, cache), IsEmpty());
}

} // namespace
