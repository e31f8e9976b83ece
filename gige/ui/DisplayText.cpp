#include "DisplayText.h"

#include <algorithm>
#include <cstdint>

namespace gige::ui
{

namespace
{

std::uint8_t byteAt(std::string_view text, std::size_t index)
{
    return static_cast<std::uint8_t>(text[index]);
}

bool isContinuation(char character)
{
    return (static_cast<std::uint8_t>(character) & 0xC0U) == 0x80;
}

/// Bytes of the UTF-8 sequence that begins with this byte; 0: none does.
std::size_t sequenceLength(std::uint8_t first)
{
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xC2 && first < 0xE0) {
        return 2;
    }
    if (first >= 0xE0 && first < 0xF0) {
        return 3;
    }
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

/// Too long a form of a character, half of a surrogate pair, or a number that is no character.
bool isForbidden(std::uint8_t first, std::uint8_t second)
{
    return (first == 0xE0 && second < 0xA0) || (first == 0xED && second >= 0xA0) ||
           (first == 0xF0 && second < 0x90) || (first == 0xF4 && second >= 0x90);
}

bool isUtf8(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = sequenceLength(byteAt(text, 0));
        if (length == 0 || length > text.size() ||
            !std::ranges::all_of(text.substr(1, length - 1), isContinuation) ||
            (length > 1 && isForbidden(byteAt(text, 0), byteAt(text, 1)))) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

std::string fromLatin1(std::string_view bytes)
{
    std::string text;
    for (const char character : bytes) {
        const auto byte = static_cast<std::uint8_t>(character);
        if (byte < 0x80) {
            text += character;
        } else {
            text += static_cast<char>(0xC0U | (byte >> 6U));
            text += static_cast<char>(0x80U | (byte & 0x3FU));
        }
    }
    return text;
}

/// The C1 controls, U+0080 to U+009F, too: some terminals obey them.
void blankControls(std::string& text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::uint8_t byte = byteAt(text, i);
        if (byte < 0x20 || byte == 0x7F) {
            text[i] = ' ';
        } else if (byte == 0xC2 && byteAt(text, i + 1) < 0xA0) {
            text.replace(i, 2, " ");
        }
    }
}

/// Bytes of the text's first characters, all of them if it has no more.
std::size_t bytesOf(std::string_view text, std::size_t characters)
{
    std::size_t end = 0;
    while (end < text.size() && (characters > 0 || isContinuation(text[end]))) {
        characters -= isContinuation(text[end]) ? 0U : 1U;
        ++end;
    }
    return end;
}

} // namespace

std::string displayText(std::string_view bytes)
{
    std::string text = isUtf8(bytes) ? std::string(bytes) : fromLatin1(bytes);
    blankControls(text);
    return text;
}

std::size_t characterCount(std::string_view text)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char character) { return !isContinuation(character); }));
}

std::string fitted(std::string_view text, std::size_t width)
{
    const std::string_view start = text.substr(0, bytesOf(text, width));
    return std::string(start) + std::string(width - characterCount(start), ' ');
}

std::vector<std::string> wrapped(std::string_view text, std::size_t width)
{
    std::vector<std::string> lines;
    while (!text.empty() && width > 0) {
        const std::size_t end = bytesOf(text, width);
        const std::size_t blank = end < text.size() ? text.rfind(' ', end) : end;
        const bool isBroken = blank != std::string_view::npos && blank > 0;
        lines.emplace_back(text.substr(0, isBroken ? blank : end));
        text.remove_prefix(isBroken ? blank : end);
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    }
    return lines;
}

} // namespace gige::ui
