#ifndef TELVO_TOOLS_TELVO_STATUSLINE_H
#define TELVO_TOOLS_TELVO_STATUSLINE_H

#include <chrono>
#include <string>

namespace telvo
{

/// One line on the terminal (standard error) that is drawn anew as things go on, and wiped at the
/// end. Nothing where standard error is no terminal.
class StatusLine
{
  public:
    StatusLine();
    ~StatusLine();
    StatusLine(const StatusLine&) = delete;
    StatusLine& operator=(const StatusLine&) = delete;

    /// Ten times a second at most.
    void show(const std::string& text);

  private:
    using Clock = std::chrono::steady_clock;

    bool mEnabled;
    std::size_t mDrawn = 0; // characters
    Clock::time_point mNextDraw;
};

} // namespace telvo

#endif
