#ifndef TELVO_GIGE_UI_TERMINALSCREEN_H
#define TELVO_GIGE_UI_TERMINALSCREEN_H

#include "Keys.h"
#include "Waker.h"

#include <memory>
#include <optional>
#include <string>
#include <termios.h>
#include <vector>

namespace gige::ui
{

struct ScreenLine {
    std::string text{};         ///< UTF-8, fit to be shown
    bool isHighlighted = false; ///< the selected one
    bool isBold = false;
};

struct ScreenSize {
    std::size_t width;
    std::size_t height;
};

/// The terminal that controls this process, as a screen of its own: what was there before comes
/// back when the object goes. One thread's, but for wake().
class TerminalScreen
{
  public:
    /// @return null: there is none, or it belongs to another process group at the moment
    static std::unique_ptr<TerminalScreen> open();
    ~TerminalScreen();
    TerminalScreen(const TerminalScreen&) = delete;
    TerminalScreen& operator=(const TerminalScreen&) = delete;

    ScreenSize size() const;
    /// Shows the lines from the top on; cuts what does not fit.
    void show(const std::vector<ScreenLine>& lines);
    /// The next key. None: woken, or some time has passed, in which the size may have changed.
    std::optional<Key> readKey();
    /// Makes a waiting readKey() return. Any thread.
    void wake() { mWaker.wake(); }

  private:
    TerminalScreen(int descriptor, const termios& before);

    void write(const std::string& text) const;
    void awaitInputOrNews();
    /// The rest of a key. @return false: there is none
    bool awaitInput();
    bool readInput();

    int mDescriptor;
    termios mBefore;
    net::Waker mWaker;
    std::string mShown; // as written
    std::string mInput; // read, but not taken as keys yet
    bool mIsGone = false;
};

} // namespace gige::ui

#endif
