#ifndef TELVO_TOOLS_TELVO_PANEL_DOWNLOADFOLDER_H
#define TELVO_TOOLS_TELVO_PANEL_DOWNLOADFOLDER_H

#include "Json.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace telvo
{

/**
 * The one folder in which the panel's downloads lie. A page names a file in it, never a path.
 * Any thread.
 */
class DownloadFolder
{
  public:
    explicit DownloadFolder(std::filesystem::path folder) : mFolder(std::move(folder)) {}

    /// What is shown of it.
    std::string text() const { return mFolder.string(); }

    /// The formats in which this build writes.
    static std::vector<std::string> formats();

    /// Where a download is to go. Throws Failure for a name that is more than a plain one.
    /// @param format  "tiff"
    std::filesystem::path placeFor(const std::string& name, const std::string& format) const;

    /// All finished downloads, those alone that have their description beside them.
    Json list() const;

    /// A file of the list, or its description.
    std::optional<std::filesystem::path> find(const std::string& name) const;

  private:
    std::filesystem::path mFolder;
};

} // namespace telvo

#endif
