/// Keys that the user presses; one source per system.
#ifndef TELVO_TOOLS_TELVO_KEYBOARD_H
#define TELVO_TOOLS_TELVO_KEYBOARD_H

#include <memory>
#include <optional>

namespace telvo
{

/// Standard input, key by key: at a terminal without waiting for Enter and without an echo, while
/// an object of this class lives. One at a time.
class Keyboard
{
  public:
    Keyboard();
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    /// The next key that was pressed; none: none was, or no more can be.
    std::optional<char> next();

  private:
    struct System;
    std::unique_ptr<System> mSystem;
};

} // namespace telvo

#endif
