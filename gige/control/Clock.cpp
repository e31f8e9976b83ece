#include "Clock.h"

#include <cstddef>
#include <new>

namespace gige::control
{

namespace
{

class SystemClock final : public Clock
{
  public:
    [[nodiscard]] TimePoint now() const override { return std::chrono::steady_clock::now(); }

    void wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
              TimePoint until) override
    {
        changed.wait_until(lock, until);
    }
};

} // namespace

Clock& systemClock()
{
    // Never destroyed: a host may disconnect in an exit handler that runs after the destructors of
    // our statics.
    alignas(SystemClock) static std::byte memory[sizeof(SystemClock)];
    static auto* const clock = new (memory) SystemClock;
    return *clock;
}

} // namespace gige::control
