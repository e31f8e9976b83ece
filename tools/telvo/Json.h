/// Results as JSON, for programs that read them.
#ifndef TELVO_TOOLS_TELVO_JSON_H
#define TELVO_TOOLS_TELVO_JSON_H

#include "Command.h"
#include "Setting.h"

#include <nlohmann/json.hpp>
#include <string>

namespace telvo
{

using Json = nlohmann::ordered_json;

/// Adds --json, which asks for the result as JSON in place of text. The flag outlives the command.
void addJsonOption(const Command& command, bool& json);

/// Prints it, indented. What is no UTF-8 in a text is replaced.
void printJson(const Json& json);

/// "250" as the number, "on" and "off" as true and false, any other text as itself.
Json jsonValue(const std::string& value);

/// Value, and as far as they are known limits and unit.
Json jsonOf(const SettingText& setting);

} // namespace telvo

#endif
