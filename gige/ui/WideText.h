#ifndef TELVO_GIGE_UI_WIDETEXT_H
#define TELVO_GIGE_UI_WIDETEXT_H

#include <string>
#include <string_view>

namespace gige::ui
{

/// Texts as the system's windows take and give them.
std::wstring wideText(std::string_view utf8);
std::string utf8Text(std::wstring_view wide);

} // namespace gige::ui

#endif
