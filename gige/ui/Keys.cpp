#include "Keys.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace gige::ui
{

namespace
{

constexpr char kEscape = '\x1B';

struct Sequence {
    std::string_view bytes;
    KeyCode code;
};

/// As xterm, the Linux console and those that follow them send them.
constexpr Sequence kSequences[] = {
    {"\x1B[A", KeyCode::Up},   {"\x1BOA", KeyCode::Up},      {"\x1B[B", KeyCode::Down},
    {"\x1BOB", KeyCode::Down}, {"\x1B[5~", KeyCode::PageUp}, {"\x1B[6~", KeyCode::PageDown},
    {"\x1B[H", KeyCode::Home}, {"\x1BOH", KeyCode::Home},    {"\x1B[1~", KeyCode::Home},
    {"\x1B[F", KeyCode::End},  {"\x1BOF", KeyCode::End},     {"\x1B[4~", KeyCode::End},
};

Key take(std::string& input, std::size_t bytes, KeyCode code)
{
    Key key{.code = code};
    if (code == KeyCode::Character) {
        key.text = input.substr(0, bytes);
    }
    input.erase(0, bytes);
    return key;
}

/// Bytes of a control sequence, `ESC [ parameters letter`; 0: it has not ended yet.
std::size_t controlSequenceLength(std::string_view input)
{
    const auto last = std::find_if(input.begin() + 2, input.end(),
                                   [](char one) { return one >= '@' && one <= '~'; });
    return last == input.end() ? 0 : static_cast<std::size_t>(last - input.begin()) + 1;
}

std::optional<Key> takeEscape(std::string& input, bool isComplete)
{
    for (const Sequence& sequence : kSequences) {
        if (std::string_view(input).starts_with(sequence.bytes)) {
            return take(input, sequence.bytes.size(), sequence.code);
        }
    }
    if (input.starts_with("\x1B[")) {
        if (const std::size_t length = controlSequenceLength(input); length != 0) {
            return take(input, length, KeyCode::Unknown);
        }
        return isComplete ? std::optional(take(input, input.size(), KeyCode::Unknown))
                          : std::nullopt;
    }
    const bool mayGoOn = input.size() == 1 || input == "\x1BO";
    if (mayGoOn && !isComplete) {
        return std::nullopt;
    }
    return take(input, 1, KeyCode::Escape);
}

std::size_t characterLength(char first)
{
    const auto byte = static_cast<std::uint8_t>(first);
    return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

KeyCode controlKey(char character)
{
    switch (character) {
    case '\r':
    case '\n':
        return KeyCode::Enter;
    case '\x08':
    case '\x7F':
        return KeyCode::Backspace;
    case '\x03': // Ctrl-C
    case '\x04': // Ctrl-D
        return KeyCode::Interrupt;
    default:
        return KeyCode::Unknown;
    }
}

} // namespace

std::optional<Key> takeKey(std::string& input, bool isComplete)
{
    if (input.empty()) {
        return std::nullopt;
    }
    const char first = input.front();
    if (first == kEscape) {
        return takeEscape(input, isComplete);
    }
    if ((first >= 0 && first < ' ') || first == '\x7F') {
        return take(input, 1, controlKey(first));
    }
    const std::size_t length = characterLength(first);
    if (length > input.size() && !isComplete) {
        return std::nullopt;
    }
    return take(input, std::min(length, input.size()), KeyCode::Character);
}

} // namespace gige::ui
