#ifndef TELVO_TESTS_SOAK_CALLWATCH_H
#define TELVO_TESTS_SOAK_CALLWATCH_H

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

/// Ends the process, with status 1 and a line that says why, when a call does not return in its
/// limit. For calls of one thread. mLock guards the call at hand.
class CallWatch
{
  public:
    CallWatch() : mThread(&CallWatch::run, this) {}
    ~CallWatch();
    CallWatch(const CallWatch&) = delete;
    CallWatch& operator=(const CallWatch&) = delete;

    template <typename Call>
    auto within(std::chrono::seconds limit, const std::string& name, Call call)
    {
        begin(name, limit);
        const auto result = call();
        begin({}, {});
        return result;
    }

  private:
    using Clock = std::chrono::steady_clock;

    /// @param name  empty: no call is at hand
    void begin(const std::string& name, std::chrono::seconds limit);
    void run();

    std::mutex mLock;
    std::condition_variable mChanged;
    std::string mName;
    Clock::time_point mDeadline;
    bool mStop = false;
    std::thread mThread;
};

#endif
