#ifndef TELVO_GIGE_UI_KEYS_H
#define TELVO_GIGE_UI_KEYS_H

#include <cstdint>
#include <optional>
#include <string>

namespace gige::ui
{

enum class KeyCode : std::uint8_t {
    Character, ///< see Key::text
    Enter,
    Escape,
    Backspace,
    Up,
    Down,
    PageUp,
    PageDown,
    Home,
    End,
    Interrupt, ///< Ctrl-C, Ctrl-D, or the terminal is gone
    Unknown,
};

struct Key {
    KeyCode code = KeyCode::Unknown;
    std::string text{}; ///< of a character, UTF-8
    bool operator==(const Key&) const = default;

    bool is(char character) const
    {
        return code == KeyCode::Character && text.size() == 1 && text[0] == character;
    }
};

/// Takes the first key off what a terminal has sent.
/// @param isComplete  nothing follows soon: an escape character alone is the key of that name
/// @return none: the input is empty, or the beginning of something
std::optional<Key> takeKey(std::string& input, bool isComplete);

} // namespace gige::ui

#endif
