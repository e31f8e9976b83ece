#include "ZipFile.h"

#include <stdexcept>
#include <zlib.h>

namespace camera
{
namespace
{

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kLocalHeader = 0x04034B50;
constexpr std::uint32_t kDirectoryHeader = 0x02014B50;
constexpr std::uint32_t kEndRecord = 0x06054B50;
constexpr std::uint16_t kVersion = 20;
constexpr std::uint16_t kStored = 0;
constexpr std::uint16_t kDeflated = 8;

void put16(Bytes& bytes, std::uint32_t value)
{
    bytes.push_back(static_cast<std::uint8_t>(value));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}

void put32(Bytes& bytes, std::uint32_t value)
{
    put16(bytes, value & 0xFFFF);
    put16(bytes, value >> 16);
}

void putText(Bytes& bytes, std::string_view text)
{
    bytes.insert(bytes.end(), text.begin(), text.end());
}

Bytes deflated(const std::string& content)
{
    z_stream stream{};
    // Negative window bits: no zlib header, as ZIP wants it.
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::bad_alloc();
    }
    Bytes packed(deflateBound(&stream, static_cast<uLong>(content.size())));
    Bytes source(content.begin(), content.end()); // zlib's pointer is not const
    stream.next_in = source.data();
    stream.avail_in = static_cast<uInt>(source.size());
    stream.next_out = packed.data();
    stream.avail_out = static_cast<uInt>(packed.size());
    const int result = deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    if (result != Z_STREAM_END) {
        throw std::runtime_error("the description cannot be compressed");
    }
    return packed;
}

/** What local header and directory say of the entry, in the same order. */
struct Entry {
    std::uint16_t method;
    std::uint32_t checksum;
    std::uint32_t packedSize;
    std::uint32_t size;
    std::uint16_t nameLength;

    void put(Bytes& bytes) const
    {
        put16(bytes, kVersion);
        put16(bytes, 0); // flags
        put16(bytes, method);
        put32(bytes, 0); // time and date of the file
        put32(bytes, checksum);
        put32(bytes, packedSize);
        put32(bytes, size);
        put16(bytes, nameLength);
        put16(bytes, 0); // extra field
    }
};

void putDirectory(Bytes& zip, const Entry& entry, std::string_view name)
{
    const auto start = static_cast<std::uint32_t>(zip.size());
    put32(zip, kDirectoryHeader);
    put16(zip, kVersion);
    entry.put(zip);
    put16(zip, 0); // comment
    put16(zip, 0); // disk
    put16(zip, 0); // internal attributes
    put32(zip, 0); // external attributes
    put32(zip, 0); // offset of the local header
    putText(zip, name);
    const auto size = static_cast<std::uint32_t>(zip.size()) - start;
    put32(zip, kEndRecord);
    put32(zip, 0); // disks
    put16(zip, 1); // entries on this disk
    put16(zip, 1); // entries
    put32(zip, size);
    put32(zip, start);
    put16(zip, 0); // comment
}

} // namespace

std::vector<std::uint8_t> zipFile(std::string_view name, const std::string& content, bool deflate)
{
    const Bytes packed = deflate ? deflated(content) : Bytes(content.begin(), content.end());
    const Bytes plain(content.begin(), content.end());
    const uLong checksum = crc32(0, plain.data(), static_cast<uInt>(plain.size()));
    const Entry entry{.method = deflate ? kDeflated : kStored,
                      .checksum = static_cast<std::uint32_t>(checksum),
                      .packedSize = static_cast<std::uint32_t>(packed.size()),
                      .size = static_cast<std::uint32_t>(content.size()),
                      .nameLength = static_cast<std::uint16_t>(name.size())};
    Bytes zip;
    put32(zip, kLocalHeader);
    entry.put(zip);
    putText(zip, name);
    zip.insert(zip.end(), packed.begin(), packed.end());
    putDirectory(zip, entry, name);
    return zip;
}

} // namespace camera
