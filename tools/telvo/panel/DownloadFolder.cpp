#include "DownloadFolder.h"

#include "FileFormat.h"
#include "Sidecar.h"
#include "ToolError.h"
#include "VideoFileSink.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <string_view>
#include <system_error>

namespace telvo
{

namespace
{

namespace fs = std::filesystem;

constexpr std::size_t kLongestName = 100; // letters
constexpr const char* kDescription = ".json";
constexpr const char* kFolderDescription = "recording.json";

bool isPlainLetter(char letter)
{
    constexpr std::string_view kOthers = " ._-";
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= '0' && letter <= '9') || kOthers.find(letter) != std::string_view::npos;
}

/// No separator, drive or stream, nothing hidden, nothing that Windows would change.
bool isPlainName(const std::string& name)
{
    return !name.empty() && name.size() <= kLongestName && name.front() != '.' &&
           name.front() != ' ' && name.back() != '.' && name.back() != ' ' &&
           std::ranges::all_of(name, isPlainLetter);
}

/// Not a link, which could lead out of the folder.
bool isOwnFile(const fs::path& path)
{
    std::error_code error;
    return fs::is_regular_file(fs::symlink_status(path, error));
}

/// What begins the description, before its frames, which can be gigabytes. Null: it is none.
Json headOf(const fs::path& sidecar)
{
    if (!isSidecar(sidecar)) {
        return {};
    }
    std::ifstream file(sidecar, std::ios::binary);
    const auto dropFrames = [](int depth, Json::parse_event_t event, Json& parsed) {
        const bool isFrame =
            event == Json::parse_event_t::object_end && depth == 2 && parsed.contains("flag-byte");
        return !isFrame;
    };
    Json json = Json::parse(file, dropFrames, false);
    return json.is_object() ? json : Json();
}

std::uintmax_t bytesOf(const fs::path& path)
{
    std::error_code error;
    if (isOwnFile(path)) {
        return fs::file_size(path, error);
    }
    std::uintmax_t bytes = 0;
    for (const auto& entry : fs::directory_iterator(path, error)) {
        bytes += entry.is_regular_file(error) ? entry.file_size(error) : 0;
    }
    return bytes;
}

Json rowOf(const fs::path& output, const fs::path& sidecar)
{
    const Json about = headOf(sidecar);
    if (about.is_null()) {
        return {};
    }
    const Json check = about.value("counter-check", Json::object());
    const Json pictures = about.value("pictures", Json::object());
    const bool isFile = isOwnFile(output);
    const std::string name = output.filename().string();
    return {{"name", name},
            {"bytes", bytesOf(output)},
            {"format", pictures.value("file-format", Json())},
            {"frames", check.value("received", Json())},
            {"whole", check.value("whole", Json())},
            {"url", isFile ? Json("/download/" + name) : Json()},
            {"sidecar", isFile ? Json("/download/" + name + kDescription) : Json()}};
}

} // namespace

std::vector<std::string> DownloadFolder::formats()
{
    std::vector<std::string> names = formatNames();
    if (!canWriteVideo()) {
        std::erase_if(names,
                      [](const std::string& name) { return isVideo(parseFileFormat(name)); });
    }
    return names;
}

fs::path DownloadFolder::placeFor(const std::string& name, const std::string& format) const
{
    if (!isPlainName(name)) {
        throw Failure("a download's name takes 1 to 100 letters, digits, blanks, '.', '_' and '-', "
                      "and begins with a letter or digit");
    }
    return mFolder / (name + endingOf(parseFileFormat(format)));
}

Json DownloadFolder::list() const
{
    std::map<std::string, Json> rows; // by name
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(mFolder, error)) {
        const fs::path& path = entry.path();
        Json row;
        if (fs::is_directory(entry.symlink_status(error))) {
            row = rowOf(path, path / kFolderDescription);
        } else if (path.extension() == kDescription && isOwnFile(path)) {
            fs::path output = path;
            output.replace_extension();
            row = isOwnFile(output) ? rowOf(output, path) : Json();
        }
        if (!row.is_null()) {
            const std::string name = row["name"];
            rows[name] = std::move(row);
        }
    }
    Json list = Json::array();
    for (auto& [name, row] : rows) {
        list.push_back(std::move(row));
    }
    return list;
}

std::optional<fs::path> DownloadFolder::find(const std::string& name) const
{
    if (!isPlainName(name)) {
        return std::nullopt;
    }
    fs::path path = mFolder / name;
    fs::path sidecar = path;
    if (path.extension() != kDescription) {
        sidecar += kDescription;
    }
    // A file that somebody else put there is not the page's.
    const bool isDownload = isOwnFile(sidecar) && isSidecar(sidecar) && isOwnFile(path);
    return isDownload ? std::optional(std::move(path)) : std::nullopt;
}

} // namespace telvo
