#include "SystemFile.h"

#include <algorithm>
#include <utility>
#include <windows.h>

namespace telvo
{

namespace
{

constexpr std::intptr_t kClosed = -1;                    // INVALID_HANDLE_VALUE
constexpr std::size_t kMostBytes = std::size_t{1} << 30; // of one read or write
constexpr const wchar_t* kClaimName = L".writing";

HANDLE handleOf(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle); // NOLINT(performance-no-int-to-ptr): it was one
}

std::intptr_t numberOf(HANDLE handle)
{
    return reinterpret_cast<std::intptr_t>(handle);
}

void require(bool done)
{
    if (!done) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
    }
}

bool isTaken()
{
    const DWORD error = GetLastError();
    return error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS;
}

} // namespace

std::optional<SystemFile> SystemFile::create(const std::filesystem::path& path)
{
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                              CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        require(isTaken());
        return std::nullopt;
    }
    return SystemFile(numberOf(file));
}

std::optional<SystemFile> SystemFile::open(const std::filesystem::path& path)
{
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    require(file != INVALID_HANDLE_VALUE);
    return SystemFile(numberOf(file));
}

SystemFile::SystemFile(SystemFile&& other) noexcept : mHandle(std::exchange(other.mHandle, kClosed))
{
}

SystemFile::~SystemFile()
{
    if (mHandle != kClosed) {
        CloseHandle(handleOf(mHandle));
    }
}

void SystemFile::write(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const auto size = static_cast<DWORD>(std::min(bytes.size(), kMostBytes));
        DWORD written = 0;
        require(WriteFile(handleOf(mHandle), bytes.data(), size, &written, nullptr) != FALSE);
        bytes = bytes.subspan(written);
    }
}

std::size_t SystemFile::read(std::span<std::uint8_t> bytes)
{
    std::size_t total = 0;
    while (total < bytes.size()) {
        const auto size = static_cast<DWORD>(std::min(bytes.size() - total, kMostBytes));
        DWORD got = 0;
        require(ReadFile(handleOf(mHandle), bytes.data() + total, size, &got, nullptr) != FALSE);
        if (got == 0) {
            break;
        }
        total += got;
    }
    return total;
}

void SystemFile::seek(std::uint64_t position)
{
    LARGE_INTEGER distance{};
    distance.QuadPart = static_cast<LONGLONG>(position);
    require(SetFilePointerEx(handleOf(mHandle), distance, nullptr, FILE_BEGIN) != FALSE);
}

std::uint64_t SystemFile::size() const
{
    LARGE_INTEGER size{};
    require(GetFileSizeEx(handleOf(mHandle), &size) != FALSE);
    return static_cast<std::uint64_t>(size.QuadPart);
}

void SystemFile::resize(std::uint64_t size)
{
    seek(size);
    require(SetEndOfFile(handleOf(mHandle)) != FALSE);
}

void SystemFile::reserve(std::uint64_t size)
{
    FILE_ALLOCATION_INFO allocation{};
    allocation.AllocationSize.QuadPart = static_cast<LONGLONG>(size);
    require(SetFileInformationByHandle(handleOf(mHandle), FileAllocationInfo, &allocation,
                                       sizeof allocation) != FALSE ||
            GetLastError() != ERROR_DISK_FULL);
}

bool SystemFile::claim()
{
    return true; // nobody else could open it to write
}

void SystemFile::sync()
{
    require(FlushFileBuffers(handleOf(mHandle)) != FALSE);
}

void SystemFile::close()
{
    require(CloseHandle(handleOf(std::exchange(mHandle, kClosed))) != FALSE);
}

bool renameToFree(const std::filesystem::path& from, const std::filesystem::path& to)
{
    if (MoveFileExW(from.c_str(), to.c_str(), 0) != FALSE) {
        return true;
    }
    require(isTaken());
    return false;
}

void renameOver(const std::filesystem::path& from, const std::filesystem::path& to)
{
    require(MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE);
}

void syncFileSystemOf(const std::filesystem::path& /*folder*/)
{
    // Only an administrator may flush a volume. Each file was closed without an error.
}

bool isStandardOutput(const std::filesystem::path& /*path*/)
{
    return false; // the standard output has no name here
}

std::optional<FolderClaim> FolderClaim::take(const std::filesystem::path& folder)
{
    HANDLE file = CreateFileW((folder / kClaimName).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        require(isTaken() || GetLastError() == ERROR_SHARING_VIOLATION);
        return std::nullopt;
    }
    return FolderClaim(numberOf(file));
}

FolderClaim::FolderClaim(FolderClaim&& other) noexcept
    : mHandle(std::exchange(other.mHandle, kClosed))
{
}

FolderClaim::~FolderClaim()
{
    if (mHandle != kClosed) {
        CloseHandle(handleOf(mHandle));
    }
}

} // namespace telvo
