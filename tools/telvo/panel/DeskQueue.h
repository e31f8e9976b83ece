#ifndef TELVO_TOOLS_TELVO_PANEL_DESKQUEUE_H
#define TELVO_TOOLS_TELVO_PANEL_DESKQUEUE_H

#include "Clients.h"
#include "Request.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <stop_token>
#include <vector>

namespace telvo
{

/// A page's request on its way to a camera.
struct DeskTask {
    ClientId client;
    std::int64_t id;
    CameraCommand command;
};

/**
 * What is still to be done with a camera, in the order in which it was asked for. Frames that are
 * to be kept (thumbnails) come behind all others, and of the frames that a page asks for while it
 * scrubs only the newest counts. Any thread puts, one takes; mLock guards all members.
 */
class DeskQueue
{
  public:
    using Clock = std::chrono::steady_clock;

    /// A page that asks for more at once is not served.
    static constexpr std::size_t kMostTasks = 4096;

    /// @return tasks that are not done any more: those whose place this one takes; the task itself
    ///         where there are too many
    std::vector<DeskTask> put(DeskTask task);

    /// The next one; none until then, or once the stop is requested.
    std::optional<DeskTask> take(Clock::time_point until, const std::stop_token& stop);

    /// Drops the tasks of a page that is closed, but for those that change something.
    void forget(ClientId client);

    bool isEmpty() const;

  private:
    static std::optional<DeskTask> takeFrom(std::deque<DeskTask>& tasks);

    mutable std::mutex mLock;
    std::condition_variable_any mChanged;
    std::deque<DeskTask> mTasks;
    std::deque<DeskTask> mThumbnails;
};

} // namespace telvo

#endif
