/// A feature's value and limits as text, and an edited text as a value.
#ifndef TELVO_GIGE_UI_FEATURETEXT_H
#define TELVO_GIGE_UI_FEATURETEXT_H

#include "Feature.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace gige::ui
{

/// The value in the form that the user edits, without unit; empty when there is none.
std::string valueText(const FeatureInfo& info, const FeatureState& state);
/// The value with its unit, or what stands in its place: "not available", "TIMEOUT".
std::string shownValue(const FeatureInfo& info, const FeatureState& state);
/// "1 to 1068, in steps of 4"; empty when nothing limits the value.
std::string limitsText(const FeatureInfo& info, const FeatureState& state);
/// "integer", "integer, read only", "command, not available"
std::string accessText(const FeatureInfo& info, const FeatureState& state);
/// What the user chooses from instead of typing: entries of an enumeration, "true" and "false".
std::vector<std::string> choicesOf(const FeatureInfo& info, const FeatureState& state);

/// The value that a text stands for, or one sentence that says why it is refused. Nothing is sent.
std::variant<FeatureValue, std::string>
parseValue(const FeatureInfo& info, const FeatureState& state, std::string_view text);

} // namespace gige::ui

#endif
