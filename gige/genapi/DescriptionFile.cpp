#include "DescriptionFile.h"

#include "GenApiLimits.h"

#include <minizip/unzip.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace gige::genapi
{

namespace
{

constexpr std::array<std::uint8_t, 4> kZipStart{'P', 'K', 3, 4}; // local file header signature
constexpr std::size_t kChunk = std::size_t{64} << 10;            // bytes unpacked at once
constexpr std::size_t kNameLimit = 256; // characters of a file name that are looked at
constexpr std::string_view kExtension = ".xml";

/// A ZIP archive in memory, for reading.
class ZipArchive
{
  public:
    /// @param bytes  must outlive this object
    explicit ZipArchive(std::span<const std::uint8_t> bytes);
    ~ZipArchive();
    ZipArchive(const ZipArchive&) = delete;
    ZipArchive& operator=(const ZipArchive&) = delete;

    /// Goes to the only file, or to the first whose name ends in `.xml`. @return ZipMalformed
    Status selectDescription();

    /// The selected file, checked against its checksum.
    /// @param limit  bytes; of a longer file no more is unpacked, and the result is
    /// DescriptionTooLarge
    Result<std::string> read(std::size_t limit);

  private:
    struct Memory; // the bytes as a file that can be read and sought in

    bool isDescription() const;
    Result<std::string> readOpenFile(std::size_t limit);

    std::unique_ptr<Memory> mMemory;
    void* mHandle; // null when the bytes are no archive
};

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
        // Offsets come from the archive, which may be damaged.
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
    return content && !isIntact ? Status::ZipMalformed : std::move(content);
}

Result<std::string> ZipArchive::readOpenFile(std::size_t limit)
{
    std::string content;
    // Piece by piece: the size that the archive states is not to be trusted.
    std::vector<char> chunk(kChunk);
    int count = 0;
    while ((count = unzReadCurrentFile(mHandle, chunk.data(), kChunk)) > 0) {
        content.append(chunk.data(), static_cast<std::size_t>(count));
        if (content.size() > limit) {
            return Status::DescriptionTooLarge;
        }
    }
    return count == 0 ? Result<std::string>(std::move(content)) : Status::ZipMalformed;
}

} // namespace

Result<std::string> unpackDescription(std::span<const std::uint8_t> file)
{
    if (file.size() > kDescriptionSizeLimit) {
        return Status::DescriptionTooLarge;
    }
    // By its content: devices name zipped files ".xml", too.
    const bool isZip = file.size() >= kZipStart.size() &&
                       std::ranges::equal(file.first(kZipStart.size()), kZipStart);
    if (!isZip) {
        return std::string(file.begin(), file.end());
    }
    ZipArchive archive(file);
    if (const Status status = archive.selectDescription(); status != Status::Ok) {
        return status;
    }
    return archive.read(kDescriptionSizeLimit);
}

} // namespace gige::genapi
