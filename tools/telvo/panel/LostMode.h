#ifndef TELVO_TOOLS_TELVO_PANEL_LOSTMODE_H
#define TELVO_TOOLS_TELVO_PANEL_LOSTMODE_H

#include "DeskMode.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace telvo
{

/// The link was lost: looks for the camera every second, and connects it where it answers, which
/// may be at another address.
class LostMode : public DeskMode
{
  public:
    struct Ways {
        std::function<void()> search;      // asks whether the camera is there
        std::function<bool()> hasAnswered; // since the last call
        /// Connects. @return the mode that the camera is in then. Throws Failure.
        std::function<std::unique_ptr<DeskMode>()> connect;
    };

    explicit LostMode(Ways ways) : mWays(std::move(ways)) {}

    Step step() override;
    Json state() const override;

  private:
    using Clock = std::chrono::steady_clock;

    const Ways mWays;
    Clock::time_point mNextSearch{};
    std::string mReason; // why the last try failed; empty: none was made yet
};

} // namespace telvo

#endif
