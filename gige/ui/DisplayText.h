#ifndef TELVO_GIGE_UI_DISPLAYTEXT_H
#define TELVO_GIGE_UI_DISPLAYTEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace gige::ui
{

/// A device's text as UTF-8 that is safe to show: devices send UTF-8 or single-byte text, and may
/// send anything. Text that is no UTF-8 is taken for Latin-1; control characters become blanks, so
/// that no device drives the user's terminal.
std::string displayText(std::string_view bytes);

/// Characters of a UTF-8 text.
std::size_t characterCount(std::string_view text);

/// The text cut or filled with blanks to exactly so many characters.
std::string fitted(std::string_view text, std::size_t width);

/// The text broken at blanks into lines of at most so many characters; longer words are cut.
std::vector<std::string> wrapped(std::string_view text, std::size_t width);

} // namespace gige::ui

#endif
