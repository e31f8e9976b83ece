#include "PreviewFeed.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using telvo::ClientId;
using telvo::PreviewFeed;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<ClientId> due(PreviewFeed& feed, std::uint64_t number)
{
    std::vector<ClientId> clients;
    for (const PreviewFeed::Viewer& viewer : feed.takeDue(number)) {
        clients.push_back(viewer.client);
    }
    return clients;
}

TEST(PreviewFeed, SendsNothingThatNobodyWants)
{
    PreviewFeed feed;
    EXPECT_THAT(due(feed, 1), IsEmpty());
    feed.seen(1, 1);
    EXPECT_THAT(due(feed, 2), IsEmpty());
}

TEST(PreviewFeed, SendsThePagesNextPictureWhenItHasSeenTheLast)
{
    PreviewFeed feed;
    feed.wish(1, {.width = 640});
    EXPECT_THAT(due(feed, 1), ElementsAre(1));
    EXPECT_THAT(due(feed, 2), IsEmpty()); // dropped
    EXPECT_THAT(due(feed, 3), IsEmpty());
    feed.seen(1, 1);
    EXPECT_THAT(due(feed, 4), ElementsAre(1));
}

TEST(PreviewFeed, LetsASlowPageHoldUpNobodyElse)
{
    PreviewFeed feed;
    feed.wish(1, {.width = 640});
    feed.wish(2, {.width = 320});
    EXPECT_THAT(due(feed, 1), ElementsAre(1, 2));
    feed.seen(2, 1);
    EXPECT_THAT(due(feed, 2), ElementsAre(2));
}

TEST(PreviewFeed, IsNotFooledByANumberThatIsNotAwaited)
{
    PreviewFeed feed;
    feed.wish(1, {.width = 640});
    EXPECT_THAT(due(feed, 7), ElementsAre(1));
    feed.seen(1, 6);
    feed.seen(1, 8);
    EXPECT_THAT(due(feed, 8), IsEmpty());
}

TEST(PreviewFeed, EndsWithThePageOrItsWish)
{
    PreviewFeed feed;
    feed.wish(1, {.width = 640});
    feed.wish(2, {.width = 640});
    feed.forget(1);
    feed.wish(2, {.width = 0});
    EXPECT_THAT(due(feed, 1), IsEmpty());
}

} // namespace
