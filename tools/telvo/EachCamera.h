#ifndef TELVO_TOOLS_TELVO_EACHCAMERA_H
#define TELVO_TOOLS_TELVO_EACHCAMERA_H

#include "CameraAddress.h"
#include "ToolError.h"

#include <cstddef>
#include <future>
#include <optional>
#include <string>
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
    running.reserve(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        running.push_back(
            std::async(std::launch::async, [&items, &work, i] { return work(i, items[i]); }));
    }
    for (const std::future<Result>& each : running) {
        each.wait();
    }
    std::vector<Result> results;
    results.reserve(items.size());
    for (std::future<Result>& each : running) {
        results.push_back(each.get());
    }
    return results;
}

/// What came of the work with one of several cameras.
template <typename Result>
struct Verdict {
    std::optional<Result> result; // none: it failed
    std::string failure;          // empty: it did not
};

/// The same where a Failure with one camera is none of the others'.
template <typename Result, typename Item, typename Work>
std::vector<Verdict<Result>> tryEach(const std::vector<Item>& items, const Work& work)
{
    return forEach<Verdict<Result>>(items, [&](std::size_t i, const Item& item) {
        try {
            return Verdict<Result>{work(i, item), ""};
        } catch (const Failure& failure) {
            return Verdict<Result>{std::nullopt, failure.what()};
        }
    });
}

template <typename Result>
std::vector<std::string> failuresOf(const std::vector<Verdict<Result>>& verdicts)
{
    std::vector<std::string> failures;
    failures.reserve(verdicts.size());
    for (const Verdict<Result>& verdict : verdicts) {
        failures.push_back(verdict.failure);
    }
    return failures;
}

/// Throws the failure of the only camera; of several, tells each and throws ExitStatus.
/// @param failures  one for each camera; empty: none
void requireNone(const std::vector<std::string>& failures,
                 const std::vector<CameraAddress>& cameras);

} // namespace telvo

#endif
