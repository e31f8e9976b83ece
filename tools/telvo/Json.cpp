#include "Json.h"

#include <iostream>

namespace telvo
{

void addJsonOption(const Command& command, bool& json)
{
    command.flag("--json", json, "Print the result as JSON");
}

void printJson(const Json& json)
{
    std::cout << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

Json jsonValue(const std::string& value)
{
    if (value == "on" || value == "off") {
        return value == "on";
    }
    Json number = Json::parse(value, nullptr, false);
    return number.is_number() ? number : Json(value);
}

Json jsonOf(const SettingText& setting)
{
    Json json{{"value", jsonValue(setting.value)}};
    if (!setting.unit.empty()) {
        json["unit"] = setting.unit;
    }
    if (!setting.limits.empty()) {
        json["limits"] = setting.limits;
    }
    return json;
}

} // namespace telvo
