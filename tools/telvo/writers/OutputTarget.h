#ifndef TELVO_TOOLS_TELVO_WRITERS_OUTPUTTARGET_H
#define TELVO_TOOLS_TELVO_WRITERS_OUTPUTTARGET_H

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace telvo
{

/// What the system says of a file, and what to do: "No space left on device; make room or …".
std::string reasonAndAdvice(const std::error_code& error);

/// What lies at a path at which something is to be written; links are followed.
enum class TargetKind : std::uint8_t {
    Free, ///< nothing
    File, ///< a regular file
    Folder,
    Stream, ///< a FIFO, a device: written to as it is, never replaced
};

/// What becomes of a regular file that is there already.
enum class IfThere : std::uint8_t {
    Refuse,
    Replace,
    Continue, ///< it is written to in place, from its start on until seek() says otherwise
};

/// Throws Failure for a link that leads nowhere, and where the path cannot be followed.
TargetKind kindOf(const std::filesystem::path& path);

/// Throws Failure where a file may not be written to the path.
void requireWritable(const std::filesystem::path& path, IfThere ifThere);

/// Throws Failure unless so many bytes fit where the path is, or will be.
void requireSpace(const std::filesystem::path& path, std::uint64_t bytes);

/// Makes the folder and those above it. Throws Failure.
void makeFolder(const std::filesystem::path& folder);

/// A folder that is made unless it is there, with those above it. Unless it is kept, what was made
/// is removed again, but nothing into which something was put meanwhile.
class NewFolder
{
  public:
    NewFolder() = default; ///< makes none
    /// Throws Failure.
    explicit NewFolder(const std::filesystem::path& folder);
    ~NewFolder();
    NewFolder(NewFolder&&) noexcept = default;
    NewFolder& operator=(NewFolder&& other) noexcept
    {
        mMade.swap(other.mMade);
        return *this;
    }

    void keep() { mMade.clear(); }

  private:
    std::vector<std::filesystem::path> mMade; // the innermost first
};

/// Throws Failure if there is anything in the folder.
void requireEmpty(const std::filesystem::path& folder);

} // namespace telvo

#endif
