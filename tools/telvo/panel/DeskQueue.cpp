#include "DeskQueue.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace telvo
{

namespace
{

const FrameRequest* frameOf(const DeskTask& task)
{
    return std::get_if<FrameRequest>(&task.command);
}

/// Takes those out for which this holds.
template <typename Predicate>
std::vector<DeskTask> extract(std::deque<DeskTask>& tasks, Predicate predicate)
{
    const auto begin = std::stable_partition(tasks.begin(), tasks.end(), std::not_fn(predicate));
    std::vector<DeskTask> taken(std::make_move_iterator(begin),
                                std::make_move_iterator(tasks.end()));
    tasks.erase(begin, tasks.end());
    return taken;
}

} // namespace

std::vector<DeskTask> DeskQueue::put(DeskTask task)
{
    std::vector<DeskTask> dropped;
    {
        const std::lock_guard guard(mLock);
        const FrameRequest* const frame = frameOf(task);
        if (mTasks.size() + mThumbnails.size() >= kMostTasks) {
            dropped.push_back(std::move(task));
            return dropped;
        }
        if (frame != nullptr && frame->keep) {
            mThumbnails.push_back(std::move(task));
        } else {
            if (frame != nullptr) {
                dropped = extract(mTasks, [client = task.client](const DeskTask& other) {
                    return other.client == client && frameOf(other) != nullptr;
                });
            }
            mTasks.push_back(std::move(task));
        }
    }
    mChanged.notify_one();
    return dropped;
}

std::optional<DeskTask> DeskQueue::take(Clock::time_point until, const std::stop_token& stop)
{
    std::unique_lock guard(mLock);
    mChanged.wait_until(guard, stop, until,
                        [this] { return !mTasks.empty() || !mThumbnails.empty(); });
    if (stop.stop_requested()) {
        return std::nullopt;
    }
    auto task = takeFrom(mTasks);
    return task ? std::move(task) : takeFrom(mThumbnails);
}

void DeskQueue::forget(ClientId client)
{
    const auto isLook = [client](const DeskTask& task) {
        return task.client == client && frameOf(task) != nullptr;
    };
    const std::lock_guard guard(mLock);
    std::erase_if(mTasks, isLook);
    std::erase_if(mThumbnails, isLook);
}

bool DeskQueue::isEmpty() const
{
    const std::lock_guard guard(mLock);
    return mTasks.empty() && mThumbnails.empty();
}

std::optional<DeskTask> DeskQueue::takeFrom(std::deque<DeskTask>& tasks)
{
    if (tasks.empty()) {
        return std::nullopt;
    }
    std::optional<DeskTask> task(std::move(tasks.front()));
    tasks.pop_front();
    return task;
}

} // namespace telvo
