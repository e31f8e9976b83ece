#include "ProgressBar.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace telvo
{

namespace
{

constexpr std::uint64_t kBarWidth = 30; // characters
constexpr std::chrono::milliseconds kBarInterval{100};

} // namespace

ProgressBar::ProgressBar(std::ostream& out, bool enabled, std::string label, std::uint64_t total)
    : mOut(out),
      mEnabled(enabled),
      mLabel(std::move(label)),
      mTotal(std::max<std::uint64_t>(1, total))
{
}

ProgressBar::~ProgressBar()
{
    if (mDrawn != 0) {
        mOut << '\r' << std::string(mDrawn, ' ') << '\r' << std::flush;
    }
}

void ProgressBar::show(std::uint64_t done, const std::string& note)
{
    const Clock::time_point now = Clock::now();
    if (!mEnabled || now < mNextDraw) {
        return;
    }
    mNextDraw = now + kBarInterval;
    const std::uint64_t filled = std::min(done, mTotal) * kBarWidth / mTotal;
    const std::string line = mLabel + " [" + std::string(filled, '#') +
                             std::string(kBarWidth - filled, '-') + "] " + std::to_string(done) +
                             '/' + std::to_string(mTotal) + note;
    const std::size_t rest = mDrawn > line.size() ? mDrawn - line.size() : 0;
    mOut << '\r' << line << std::string(rest, ' ') << std::flush;
    mDrawn = std::max(mDrawn, line.size());
}

} // namespace telvo
