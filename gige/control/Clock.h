#ifndef TELVO_GIGE_CONTROL_CLOCK_H
#define TELVO_GIGE_CONTROL_CLOCK_H

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace gige::control
{

/// Time, and the waiting in it. Whatever waits for a device is handed a clock, so that its tests
/// let time pass instead of waiting themselves.
class Clock
{
  public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Duration = std::chrono::steady_clock::duration;

    virtual ~Clock() = default;

    [[nodiscard]] virtual TimePoint now() const = 0;
    /// Waits to be notified, until this time at most; may return before either.
    virtual void wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
                      TimePoint until) = 0;

    /// Waits until the condition holds, which `changed` tells.
    /// @return false: the time passed, and it does not hold
    template <typename Condition>
    bool waitUntil(std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
                   TimePoint until, Condition holds)
    {
        while (!holds()) {
            if (now() >= until) {
                return false;
            }
            wait(lock, changed, until);
        }
        return true;
    }
};

/// The machine's, which never jumps.
Clock& systemClock();

} // namespace gige::control

#endif
