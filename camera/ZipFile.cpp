#include "ZipFile.h"

#include <minizip/zip.h>

#include <algorithm>
#include <stdexcept>

namespace camera
{
namespace
{

/// A file that the archive is written to; its size is that of what was written.
struct MemoryFile {
    std::vector<std::uint8_t> bytes{};
    std::size_t position = 0;

    // The archive writer's file calls. The stream is this object; reading is never asked for.
    static void* open(void* opaque, const void* /*name*/, int /*mode*/) { return opaque; }

    static uLong write(void* /*opaque*/, void* stream, const void* buffer, uLong size)
    {
        auto& file = *static_cast<MemoryFile*>(stream);
        file.bytes.resize(std::max<std::size_t>(file.bytes.size(), file.position + size));
        std::copy_n(static_cast<const std::uint8_t*>(buffer), size, &file.bytes[file.position]);
        file.position += size;
        return size;
    }

    static ZPOS64_T tell(void* /*opaque*/, void* stream)
    {
        return static_cast<MemoryFile*>(stream)->position;
    }

    /// The writer goes back to an entry's header from the start only, and to the end.
    static long seek(void* /*opaque*/, void* stream, ZPOS64_T offset, int origin)
    {
        auto& file = *static_cast<MemoryFile*>(stream);
        const std::size_t base = origin == ZLIB_FILEFUNC_SEEK_END ? file.bytes.size() : 0;
        file.position = base + static_cast<std::size_t>(offset);
        return 0;
    }

    static int close(void* /*opaque*/, void* /*stream*/) { return 0; }
    static int error(void* /*opaque*/, void* /*stream*/) { return 0; }
};

void require(bool done)
{
    if (!done) {
        throw std::runtime_error("the description cannot be packed");
    }
}

} // namespace

std::vector<std::uint8_t> zipFile(const std::string& name, const std::string& content, bool deflate)
{
    MemoryFile file;
    zlib_filefunc64_def calls{.zopen64_file = MemoryFile::open,
                              .zread_file = nullptr,
                              .zwrite_file = MemoryFile::write,
                              .ztell64_file = MemoryFile::tell,
                              .zseek64_file = MemoryFile::seek,
                              .zclose_file = MemoryFile::close,
                              .zerror_file = MemoryFile::error,
                              .opaque = &file};
    ::zipFile const archive = zipOpen2_64("", APPEND_STATUS_CREATE, nullptr, &calls);
    require(archive != nullptr);
    require(zipOpenNewFileInZip(archive, name.c_str(), nullptr, nullptr, 0, nullptr, 0, nullptr,
                                deflate ? Z_DEFLATED : 0, Z_DEFAULT_COMPRESSION) == ZIP_OK);
    require(zipWriteInFileInZip(archive, content.data(), static_cast<unsigned>(content.size())) ==
            ZIP_OK);
    require(zipCloseFileInZip(archive) == ZIP_OK && zipClose(archive, nullptr) == ZIP_OK);
    return std::move(file.bytes);
}

} // namespace camera
