#include "ZipArchive.h"

#include <minizip/unzip.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <string_view>
#include <vector>

namespace gige::genapi
{

namespace
{

constexpr std::size_t kChunk = std::size_t{64} << 10; // bytes unpacked at once
constexpr std::size_t kNameLimit = 256; // characters of a file name that are looked at
constexpr std::string_view kExtension = ".xml";

} // namespace

struct ZipArchive::Memory {
    std::span<const std::uint8_t> bytes;
    std::size_t position = 0;

    // The archive reader's file calls. The stream is this object; writing is never asked for.
    static void* open(void* opaque, const void* /*name*/, int /*mode*/) { return opaque; }

    static uLong read(void* /*opaque*/, void* stream, void* buffer, uLong size)
    {
        auto& memory = *static_cast<Memory*>(stream);
        const std::size_t count =
            std::min<std::size_t>(size, memory.bytes.size() - memory.position);
        std::memcpy(buffer, memory.bytes.data() + memory.position, count);
        memory.position += count;
        return static_cast<uLong>(count);
    }

    static ZPOS64_T tell(void* /*opaque*/, void* stream)
    {
        return static_cast<Memory*>(stream)->position;
    }

    static long seek(void* /*opaque*/, void* stream, ZPOS64_T offset, int origin)
    {
        auto& memory = *static_cast<Memory*>(stream);
        const std::size_t size = memory.bytes.size();
        const std::size_t base = origin == ZLIB_FILEFUNC_SEEK_CUR   ? memory.position
                                 : origin == ZLIB_FILEFUNC_SEEK_END ? size
                                                                    : 0;
        if (offset > size - base) {
            return -1;
        }
        memory.position = base + static_cast<std::size_t>(offset);
        return 0;
    }

    static int close(void* /*opaque*/, void* /*stream*/) { return 0; }
    static int error(void* /*opaque*/, void* /*stream*/) { return 0; }
};

ZipArchive::ZipArchive(std::span<const std::uint8_t> bytes)
    : mMemory(std::make_unique<Memory>(Memory{bytes}))
{
    zlib_filefunc64_def functions{};
    functions.zopen64_file = Memory::open;
    functions.zread_file = Memory::read;
    functions.ztell64_file = Memory::tell;
    functions.zseek64_file = Memory::seek;
    functions.zclose_file = Memory::close;
    functions.zerror_file = Memory::error;
    functions.opaque = mMemory.get();
    mHandle = unzOpen2_64("", &functions);
}

ZipArchive::~ZipArchive()
{
    if (mHandle != nullptr) {
        unzClose(mHandle);
    }
}

Status ZipArchive::selectDescription()
{
    unz_global_info64 info{};
    if (mHandle == nullptr || unzGetGlobalInfo64(mHandle, &info) != UNZ_OK) {
        return Status::ZipMalformed;
    }
    int found = unzGoToFirstFile(mHandle);
    while (found == UNZ_OK && info.number_entry != 1 && !isDescription()) {
        found = unzGoToNextFile(mHandle);
    }
    return found == UNZ_OK ? Status::Ok : Status::ZipMalformed;
}

bool ZipArchive::isDescription() const
{
    std::array<char, kNameLimit + 1> buffer{};
    if (unzGetCurrentFileInfo64(mHandle, nullptr, buffer.data(), kNameLimit, nullptr, 0, nullptr,
                                0) != UNZ_OK) {
        return false;
    }
    const std::string_view name = buffer.data();
    return name.size() >= kExtension.size() &&
           std::ranges::equal(
               name.substr(name.size() - kExtension.size()), kExtension, {},
               [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
}

Result<std::string> ZipArchive::read(std::size_t limit)
{
    if (mHandle == nullptr || unzOpenCurrentFile(mHandle) != UNZ_OK) {
        return Status::ZipMalformed;
    }
    Result<std::string> content = readOpenFile(limit);
    const bool isIntact = unzCloseCurrentFile(mHandle) == UNZ_OK; // the checksum is compared here
    return content && !isIntact ? Result<std::string>(Status::ZipMalformed) : std::move(content);
}

Result<std::string> ZipArchive::readOpenFile(std::size_t limit)
{
    std::string content;
    std::vector<char> chunk(kChunk);
    int count = 0;
    while ((count = unzReadCurrentFile(mHandle, chunk.data(), kChunk)) > 0) {
        content.append(chunk.data(), static_cast<std::size_t>(count));
        if (content.size() > limit) {
            return Status::DescriptionTooLarge;
        }
    }
    return count == 0 ? Result(std::move(content)) : Result<std::string>(Status::ZipMalformed);
}

} // namespace gige::genapi
