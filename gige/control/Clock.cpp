#include "Clock.h"

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
    static SystemClock clock;
    return clock;
}

} // namespace gige::control
