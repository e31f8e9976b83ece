#ifndef TELVO_TOOLS_TELVO_EACHCAMERA_H
#define TELVO_TOOLS_TELVO_EACHCAMERA_H

#include <cstddef>
#include <future>
#include <vector>

namespace telvo
{

/**
 * Works with several cameras at once, each on a thread of its own.
 * @param work  called with each item's place and the item
 * @return what it returned, in the items' order; throws what it threw for the first, once all are
 *         done
 */
template <typename Result, typename Item, typename Work>
std::vector<Result> forEach(const std::vector<Item>& items, const Work& work)
{
    std::vector<std::future<Result>> running;
    for (std::size_t i = 0; i < items.size(); ++i) {
        running.push_back(
            std::async(std::launch::async, [&items, &work, i] { return work(i, items[i]); }));
    }
    for (const std::future<Result>& each : running) {
        each.wait();
    }
    std::vector<Result> results;
    for (std::future<Result>& each : running) {
        results.push_back(each.get());
    }
    return results;
}

} // namespace telvo

#endif
