#ifndef TELVO_TOOLS_TELVO_WRITERS_SYSTEMFILE_H
#define TELVO_TOOLS_TELVO_WRITERS_SYSTEMFILE_H

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <system_error>

namespace telvo
{

/// A file as the system has it, unbuffered; closed at the end. What fails throws
/// std::system_error.
class SystemFile
{
  public:
    /// Makes a file that was not there. None: there is one of that name.
    static std::optional<SystemFile> create(const std::filesystem::path& path);
    /// Opens what is there to write to it; a file keeps its contents. None: a FIFO without reader.
    static std::optional<SystemFile> open(const std::filesystem::path& path);

    SystemFile(SystemFile&& other) noexcept;
    SystemFile& operator=(SystemFile&& other) = delete;
    ~SystemFile();

    /// All of it, at the present position.
    void write(std::span<const std::uint8_t> bytes);
    /// @return bytes read at the present position, fewer only at the end
    std::size_t read(std::span<std::uint8_t> bytes);
    /// From the start; beyond the end, too.
    void seek(std::uint64_t position);
    std::uint64_t size() const;
    void resize(std::uint64_t size);
    /// Takes the space for a file of this size, whose size stays; where that cannot be had in
    /// advance, nothing.
    void reserve(std::uint64_t size);
    /// Keeps other processes of this tool from claiming it. False: one has it.
    bool claim();
    /// Returns when the device has it all.
    void sync();
    /// The last chance of an error.
    void close();

  private:
    explicit SystemFile(std::intptr_t handle) : mHandle(handle) {}

    std::intptr_t mHandle; // kClosed: none
};

/// Gives a file another name in its folder, in one step. @return false: the name is taken
bool renameToFree(const std::filesystem::path& from, const std::filesystem::path& to);

/// The same where a file of that name is replaced.
void renameOver(const std::filesystem::path& from, const std::filesystem::path& to);

/// Returns when the device has all that was written to files of this file system.
void syncFileSystemOf(const std::filesystem::path& folder);

/// Whether the file at the path and this process's standard output are one.
bool isStandardOutput(const std::filesystem::path& path);

/**
 * Marks a folder as one that this process writes to. The mark ends with the object and with the
 * process, however that ends.
 */
class FolderClaim
{
  public:
    /// None: another process has it.
    static std::optional<FolderClaim> take(const std::filesystem::path& folder);

    FolderClaim(FolderClaim&& other) noexcept;
    FolderClaim& operator=(FolderClaim&& other) = delete;
    ~FolderClaim();

  private:
    explicit FolderClaim(std::intptr_t handle) : mHandle(handle) {}

    std::intptr_t mHandle;
};

} // namespace telvo

#endif
