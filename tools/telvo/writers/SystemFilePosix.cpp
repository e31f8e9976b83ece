#include "SystemFile.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <limits>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace telvo
{

namespace
{

constexpr std::intptr_t kClosed = -1;
constexpr mode_t kMode = 0666; // less what the user's mask takes away

int descriptor(std::intptr_t handle)
{
    return static_cast<int>(handle);
}

[[noreturn]] void fail()
{
    throw std::system_error(errno, std::generic_category());
}

void require(bool done)
{
    if (!done) {
        fail();
    }
}

/// File systems without a rename that leaves a taken name alone can make a second name.
bool linkToFree(const std::filesystem::path& from, const std::filesystem::path& to)
{
    if (link(from.c_str(), to.c_str()) != 0) {
        require(errno == EEXIST);
        return false;
    }
    require(unlink(from.c_str()) == 0);
    return true;
}

/// A file system that knows no locks leaves two processes to the files' own names.
bool isClaimed(int file)
{
    const bool isOurs = flock(file, LOCK_EX | LOCK_NB) == 0;
    require(isOurs || errno == EWOULDBLOCK || errno == EOPNOTSUPP || errno == ENOLCK);
    return isOurs || errno != EWOULDBLOCK;
}

} // namespace

std::optional<SystemFile> SystemFile::create(const std::filesystem::path& path)
{
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kMode);
    if (file < 0) {
        require(errno == EEXIST);
        return std::nullopt;
    }
    return SystemFile(file);
}

std::optional<SystemFile> SystemFile::open(const std::filesystem::path& path)
{
    // A reader that has gone is an error to tell, not the end of a process with a camera.
    std::signal(SIGPIPE, SIG_IGN);
    struct stat status {
    };
    const bool isFile = stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    // Without this a FIFO blocks until somebody reads it, and Ctrl-C goes unheard.
    const int file =
        ::open(path.c_str(), (isFile ? O_RDWR : O_WRONLY) | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (file < 0) {
        require(errno == ENXIO && S_ISFIFO(status.st_mode));
        return std::nullopt;
    }
    SystemFile opened(file);
    require(fcntl(file, F_SETFL, fcntl(file, F_GETFL) & ~O_NONBLOCK) == 0);
    return opened;
}

SystemFile::SystemFile(SystemFile&& other) noexcept : mHandle(std::exchange(other.mHandle, kClosed))
{
}

SystemFile::~SystemFile()
{
    if (mHandle != kClosed) {
        ::close(descriptor(mHandle));
    }
}

void SystemFile::write(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor(mHandle), bytes.data(), bytes.size());
        require(written > 0 || (written < 0 && errno == EINTR));
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
}

std::size_t SystemFile::read(std::span<std::uint8_t> bytes)
{
    std::size_t total = 0;
    while (total < bytes.size()) {
        const ssize_t size =
            ::read(descriptor(mHandle), bytes.data() + total, bytes.size() - total);
        if (size == 0) {
            break;
        }
        require(size > 0 || errno == EINTR);
        total += static_cast<std::size_t>(std::max<ssize_t>(size, 0));
    }
    return total;
}

void SystemFile::seek(std::uint64_t position)
{
    require(lseek(descriptor(mHandle), static_cast<off_t>(position), SEEK_SET) >= 0);
}

std::uint64_t SystemFile::size() const
{
    struct stat status {
    };
    require(fstat(descriptor(mHandle), &status) == 0);
    return static_cast<std::uint64_t>(status.st_size);
}

void SystemFile::resize(std::uint64_t size)
{
    require(ftruncate(descriptor(mHandle), static_cast<off_t>(size)) == 0);
}

void SystemFile::reserve(std::uint64_t size)
{
    require(fallocate(descriptor(mHandle), FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size)) == 0 ||
            errno == EOPNOTSUPP || errno == ENOSYS);
}

bool SystemFile::claim()
{
    return isClaimed(descriptor(mHandle));
}

void SystemFile::sync()
{
    // Pipes and terminals have nothing to wait for.
    require(fsync(descriptor(mHandle)) == 0 || errno == EINVAL || errno == EROFS ||
            errno == ENOTSUP);
}

void SystemFile::close()
{
    require(::close(descriptor(std::exchange(mHandle, kClosed))) == 0);
}

bool renameToFree(const std::filesystem::path& from, const std::filesystem::path& to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno == EINVAL || errno == ENOSYS) {
        return linkToFree(from, to);
    }
    require(errno == EEXIST);
    return false;
}

void renameOver(const std::filesystem::path& from, const std::filesystem::path& to)
{
    require(rename(from.c_str(), to.c_str()) == 0);
}

void syncFileSystemOf(const std::filesystem::path& folder)
{
    const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    require(file >= 0);
    const bool done = syncfs(file) == 0;
    const int reason = errno;
    ::close(file);
    errno = reason;
    require(done);
}

bool isStandardOutput(const std::filesystem::path& path)
{
    struct stat file {
    };
    struct stat output {
    };
    return stat(path.c_str(), &file) == 0 && fstat(STDOUT_FILENO, &output) == 0 &&
           file.st_dev == output.st_dev && file.st_ino == output.st_ino;
}

std::optional<FolderClaim> FolderClaim::take(const std::filesystem::path& folder)
{
    const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    require(file >= 0);
    FolderClaim claim(file);
    return isClaimed(file) ? std::optional(std::move(claim)) : std::nullopt;
}

FolderClaim::FolderClaim(FolderClaim&& other) noexcept
    : mHandle(std::exchange(other.mHandle, kClosed))
{
}

FolderClaim::~FolderClaim()
{
    if (mHandle != kClosed) {
        ::close(descriptor(mHandle));
    }
}

} // namespace telvo
