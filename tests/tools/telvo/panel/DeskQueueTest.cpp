#include "DeskQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;
using testing::ElementsAre;
using testing::IsEmpty;

DeskTask command(ClientId client, std::int64_t id)
{
    return {client, id, StopRequest{}};
}

DeskTask frame(ClientId client, std::int64_t id, bool keep = false)
{
    return {client, id, FrameRequest{.keep = keep}};
}

std::vector<std::int64_t> idsOf(const std::vector<DeskTask>& tasks)
{
    std::vector<std::int64_t> ids;
    for (const DeskTask& task : tasks) {
        ids.push_back(task.id);
    }
    return ids;
}

/// All that is in it, in its order.
std::vector<std::int64_t> drain(DeskQueue& queue)
{
    std::vector<std::int64_t> ids;
    while (const auto task = queue.take(DeskQueue::Clock::now(), {})) {
        ids.push_back(task->id);
    }
    return ids;
}

TEST(DeskQueue, KeepsTheOrder)
{
    DeskQueue queue;
    for (std::int64_t id = 1; id <= 3; ++id) {
        EXPECT_THAT(queue.put(command(1, id)), IsEmpty());
    }
    EXPECT_THAT(drain(queue), ElementsAre(1, 2, 3));
}

TEST(DeskQueue, LetsANewerFrameOfAPageTakeThePlaceOfWaitingOnes)
{
    DeskQueue queue;
    queue.put(frame(1, 1));
    queue.put(command(1, 2));
    queue.put(frame(2, 3)); // another page's
    EXPECT_THAT(idsOf(queue.put(frame(1, 4))), ElementsAre(1));
    EXPECT_THAT(drain(queue), ElementsAre(2, 3, 4));
}

TEST(DeskQueue, PutsThumbnailsBehindAllElseAndKeepsThem)
{
    DeskQueue queue;
    queue.put(frame(1, 1, true));
    queue.put(frame(1, 2, true));
    queue.put(frame(1, 3));
    EXPECT_THAT(idsOf(queue.put(frame(1, 4))), ElementsAre(3));
    queue.put(command(1, 5));
    EXPECT_THAT(drain(queue), ElementsAre(4, 5, 1, 2));
}

TEST(DeskQueue, ForgetsWhatAClosedPageWantedToSeeButNotWhatItDid)
{
    DeskQueue queue;
    queue.put(frame(1, 1));
    queue.put(frame(1, 2, true));
    queue.put(command(1, 3));
    queue.put(frame(2, 4));
    queue.forget(1);
    EXPECT_THAT(drain(queue), ElementsAre(3, 4));
}

TEST(DeskQueue, RefusesMoreThanAnyPageNeeds)
{
    DeskQueue queue;
    for (std::size_t i = 0; i < DeskQueue::kMostTasks; ++i) {
        EXPECT_THAT(queue.put(command(1, 1)), IsEmpty());
    }
    EXPECT_THAT(idsOf(queue.put(command(1, 2))), ElementsAre(2));
}

} // namespace
