#include "CaptureOptions.h"

#include <cctype>

namespace telvo
{

void CaptureOptions::addTo(CLI::App& command, const std::vector<std::string_view>& settings)
{
    for (const std::string_view name : settings) {
        const Setting& setting = findSetting(name);
        const std::string option = name == "frame-rate" ? "--fps" : "--" + std::string(name);
        std::string help(setting.help);
        help.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(help.front())));
        command.add_option(option, mValues[&setting], help)->type_name("VALUE");
    }
    command.add_option("--set", mSets, "Any other setting; 'telvo get --help' lists them")
        ->type_name("NAME=VALUE")
        ->take_all();
}

std::vector<Assignment> CaptureOptions::assignments() const
{
    std::vector<Assignment> result;
    for (const auto& [setting, text] : mValues) {
        if (!text.empty()) {
            result.push_back(makeAssignment(*setting, text));
        }
    }
    for (const std::string& text : mSets) {
        result.push_back(parseAssignment(text));
    }
    return result;
}

} // namespace telvo
