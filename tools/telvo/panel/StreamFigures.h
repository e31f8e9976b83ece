#ifndef TELVO_TOOLS_TELVO_PANEL_STREAMFIGURES_H
#define TELVO_TOOLS_TELVO_PANEL_STREAMFIGURES_H

#include <chrono>
#include <cstdint>
#include <optional>

namespace telvo
{

/**
 * What becomes of the pictures that a camera sends, told by their numbers and by when they were
 * looked for. A number that is passed over counts as lost only if nobody looked too seldom to have
 * seen it: of pictures that come faster than they are looked for, only the newest is had.
 */
class StreamFigures
{
  public:
    using Clock = std::chrono::steady_clock;

    /// One was looked for in vain.
    void lookedInVain(Clock::time_point now);
    /// @param number  the camera's own, which wraps after 65535
    void came(std::uint16_t number, std::size_t bytes, Clock::time_point now);

    /// Pictures that the camera sends in a second; 0: not known yet.
    double rate() const { return mRate; }
    double megabitsPerSecond() const { return mMegabitsPerSecond; }
    std::uint64_t lost() const { return mLost; }

  private:
    void look(Clock::time_point now);
    void summarise(Clock::time_point now);

    std::optional<std::uint16_t> mNumber; // of the last picture
    Clock::time_point mLastPicture{};
    Clock::time_point mLastLook{};
    Clock::duration mLongestPause{}; // between looks, since the last picture
    Clock::time_point mBegin{};      // of what the rate is measured over
    std::uint64_t mSent = 0;         // since then
    std::uint64_t mBytes = 0;
    double mRate = 0;
    double mMegabitsPerSecond = 0;
    std::uint64_t mLost = 0;
};

} // namespace telvo

#endif
