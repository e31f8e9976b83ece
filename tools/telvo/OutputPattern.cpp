#include "OutputPattern.h"

#include "ToolError.h"
#include "Utf8Path.h"

#include <algorithm>
#include <array>
#include <regex>
#include <string>
#include <string_view>

namespace telvo
{

namespace
{

constexpr std::array<std::string_view, 3> kPlaces{"{ip}", "{serial}", "{name}"};

/// Letters of no file name on one system or the other.
constexpr std::string_view kForbidden = "/\\:*?\"<>|";

std::string asFileName(std::string text)
{
    for (char& letter : text) {
        const bool isControl = static_cast<unsigned char>(letter) < ' ';
        letter = isControl || kForbidden.find(letter) != std::string_view::npos ? '_' : letter;
    }
    return text;
}

void fill(std::string& text, std::string_view place, const std::string& value)
{
    for (auto at = text.find(place); at != std::string::npos;
         at = text.find(place, at + value.size())) {
        text.replace(at, place.size(), value);
    }
}

[[noreturn]] void refuse(const std::string& place, const std::string& text)
{
    throw UsageError(place + " in '" + text +
                     "' stands for nothing; there are {ip}, {serial} and {name}");
}

} // namespace

void requireKnownPlaces(const std::filesystem::path& path)
{
    static const std::regex place("\\{[A-Za-z]*\\}");
    const std::string text = path.string();
    for (std::sregex_iterator each(text.begin(), text.end(), place), end; each != end; ++each) {
        const std::string found = each->str();
        if (std::ranges::find(kPlaces, found) == kPlaces.end()) {
            refuse(found, text);
        }
    }
}

bool isPattern(const std::filesystem::path& path)
{
    const std::string text = path.string();
    for (const std::string_view place : kPlaces) {
        if (text.find(place) != std::string::npos) {
            return true;
        }
    }
    return false;
}

std::filesystem::path pathFor(const std::filesystem::path& pattern, const CameraAddress& camera)
{
    const std::array values{camera.ip, camera.device.info.serialNumber,
                            camera.device.info.userDefinedName};
    std::string text = pattern.string();
    for (std::size_t i = 0; i < kPlaces.size(); ++i) {
        fill(text, kPlaces[i], asFileName(values[i]));
    }
    return utf8Path(text);
}

} // namespace telvo
