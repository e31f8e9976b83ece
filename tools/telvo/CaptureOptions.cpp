#include "CaptureOptions.h"

#include "ToolError.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace telvo
{

std::array<std::string, 4> rectangleOf(const std::string& text)
{
    std::array<std::string, 4> parts;
    std::istringstream rest(text);
    const bool hasAll = std::ranges::all_of(
        parts, [&](std::string& part) { return std::getline(rest, part, ',') && !part.empty(); });
    if (!hasAll || !rest.eof()) {
        throw UsageError("'" + text + "' is not X,Y,W,H, such as 0,0,640,480");
    }
    return parts;
}

void CaptureOptions::addTo(const Command& command, const std::vector<std::string_view>& settings)
{
    for (const std::string_view name : settings) {
        const Setting& setting = findSetting(name);
        const std::string option = name == "frame-rate" ? "--fps" : "--" + std::string(name);
        std::string help(setting.help);
        help.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(help.front())));
        command.option(option, mValues[&setting], help).type("VALUE");
    }
    if (std::ranges::find(settings, "width") != settings.end()) {
        command.option("--roi", mRoi, "Place and size of the picture on the sensor, pixels")
            .type("X,Y,W,H");
    }
    command.option("--set", mSets, "Any other setting; 'telvo get --help' lists them")
        .type("NAME=VALUE")
        .repeated();
}

std::vector<Assignment> CaptureOptions::assignments() const
{
    std::vector<Assignment> result;
    for (const auto& [setting, text] : mValues) {
        if (!text.empty()) {
            result.push_back(makeAssignment(*setting, text));
        }
    }
    if (!mRoi.empty()) {
        constexpr std::array kParts{"offset-x", "offset-y", "width", "height"};
        const auto parts = rectangleOf(mRoi);
        for (std::size_t i = 0; i < kParts.size(); ++i) {
            result.push_back(makeAssignment(findSetting(kParts[i]), parts[i]));
        }
    }
    for (const std::string& text : mSets) {
        result.push_back(parseAssignment(text));
    }
    return result;
}

} // namespace telvo
