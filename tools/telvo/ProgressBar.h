#ifndef TELVO_TOOLS_TELVO_PROGRESSBAR_H
#define TELVO_TOOLS_TELVO_PROGRESSBAR_H

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <string>

namespace telvo
{

/// One line that is drawn over itself: "live [#######-------------] 18/50". Nothing is written when
/// it is not enabled. It is redrawn at most ten times a second; its end wipes it.
class ProgressBar
{
  public:
    /// @param out      borrowed until the bar's end
    /// @param enabled  whether somebody watches: out is a terminal
    ProgressBar(std::ostream& out, bool enabled, std::string label, std::uint64_t total);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// @param note  shown behind the numbers
    void show(std::uint64_t done, const std::string& note = "");

  private:
    using Clock = std::chrono::steady_clock;

    std::ostream& mOut;
    bool mEnabled;
    std::string mLabel;
    std::uint64_t mTotal;
    std::size_t mDrawn = 0;        // characters on the line now
    Clock::time_point mNextDraw{}; // the epoch: the first call draws
};

} // namespace telvo

#endif
